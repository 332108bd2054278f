#include "viewer/ReferenceViewer.h"

#include "host/du/Localizer.h"
#include "host/platform/Display.h"
#include "host/platform/Environment.h"
#include "tests/viewer/ViewerFixtures.h"
#include "viewer/ViewerWorkflows.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

namespace viewer {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

// Two squares left and right of the middle, 200 pixels wide each, about (320, 400) and (960, 400).
std::shared_ptr<const scene::Model> MakeModel() {
    scene::Model model;
    model.parts = {MakeSquare("left", -4, 0, 0), MakeSquare("right", 4, 0, 0)};
    return std::make_shared<scene::Model>(model);
}

ViewSpec MakeShapeSpec() {
    ViewSpec description;
    description.camera.location.SetPos({0, 0, 20});
    description.bounds = {{-5, -1, 0}, {5, 1, 0}};
    return description;
}

workflow::TouchFrame MakeFrame(std::initializer_list<workflow::TouchRecord> records) {
    workflow::TouchFrame frame;
    frame.count = static_cast<std::int32_t>(records.size());
    std::copy(records.begin(), records.end(), frame.records.begin());
    return frame;
}

class HeadlessViewer : public testing::Test {
protected:
    HeadlessViewer() {
        viewer.SetModel(MakeModel());
        viewer.SetView(MakeShapeSpec());
    }
    void Load() { viewer.LoadComponent(TOUCHNAV_PLUGIN, "shapeview"); }

    ReferenceViewer viewer{HostSettings{}};
};

TEST_F(HeadlessViewer, ARightClickOpensTheContextActionsUntilTheNextTouch) {
    viewer.Mouse("MsgMouseRightUp", 320, 400);
    EXPECT_EQ(viewer.TakeSnapshot().contextMenu, std::nullopt) << "the button never went down";
    for (const auto& [x, part] : {std::pair{320, "left"}, {640, ""}}) {
        viewer.Mouse("MsgMouseRightDown", x, 400);
        EXPECT_EQ(viewer.TakeSnapshot().contextMenu, std::nullopt) << "the button closes the open one as it goes down";
        viewer.Mouse("MsgMouseRightUp", x, 400);
        EXPECT_EQ(viewer.TakeSnapshot().contextMenu, part);
        EXPECT_EQ(viewer.TakeSnapshot().contextMenuAt, dg::DPoint2D(x, 400));
    }
    viewer.Touch(MakeFrame({{7, 10, 10, 1, workflow::TouchMove}}));
    EXPECT_NE(viewer.TakeSnapshot().contextMenu, std::nullopt) << "the finger that opened it still rests";
    viewer.Touch(MakeFrame({{8, 10, 10, 1, workflow::TouchDown}}));
    EXPECT_EQ(viewer.TakeSnapshot().contextMenu, std::nullopt);
}

TEST_F(HeadlessViewer, ASelectionDragEndsInEveryWayADragCanEnd) {
    struct Row {
        const char* name;
        std::function<void()> end;
        std::vector<std::string> selected;
        bool bandLeft;
    };
    const auto mouse = [this](const char* type, int x) { return [=, this] { viewer.Mouse(type, x, 400); }; };
    const workflow::TouchRecord lifted{1, 9, 9, 9, workflow::TouchUp};
    const auto lift = [this](std::initializer_list<workflow::TouchRecord> records) {
        return [frame = MakeFrame(records), this] { viewer.Touch(frame); };
    };
    const auto tick = [this](int now) { return [=, this] { viewer.Tick(now, 16); }; };
    const Row rows[] = {
        {"the button goes up", mouse("MsgMouseLeftUp", 0), {"left"}, false},
        {"the finger lifts", lift({lifted}), {"left"}, false},
        {"a finger stays", lift({lifted, {2, 9, 9, 9, workflow::TouchMove}}), {}, true},
        {"it was a click", mouse("MsgClickLeft", 960), {"right"}, false},
        {"half a second without a drag", tick(1500), {}, true},
        {"more than that", tick(1501), {"left"}, false},
        {"another view", [&] { viewer.SetView(MakeShapeSpec()); }, {}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        viewer.Mouse("MsgClickLeft", 0, 0);
        viewer.Tick(1000, 16);
        viewer.Mouse("MsgMouseLeftDown", 20, 20);
        viewer.Mouse("MsgMouseLeftDrag", 23, 17);
        EXPECT_EQ(viewer.TakeSnapshot().rubberBand, std::nullopt) << "a finger never rests quite still";
        viewer.Mouse("MsgMouseLeftDrag", 640, 780);
        ASSERT_TRUE(viewer.TakeSnapshot().rubberBand);
        EXPECT_EQ(viewer.TakeSnapshot().rubberBand->y1, 780);
        row.end();
        EXPECT_EQ(viewer.TakeSnapshot().selectedParts, row.selected);
        EXPECT_EQ(viewer.TakeSnapshot().rubberBand.has_value(), row.bandLeft);
    }
}

TEST_F(HeadlessViewer, AMoveHighlightsThePartUnderItUnlessThatIsSwitchedOff) {
    Services services;
    const dg::Camera3D camera = viewer.TakeSnapshot().camera;
    PickScene scene;
    scene.camera = &camera;
    scene.model = MakeModel();
    const du::SmartPtr<PickerWorkflow> picker(new PickerWorkflow(scene));
    services.dispatch.Add(picker);
    struct Row {
        const char* workflow;
        const char* mode;
        int value;
        bool highlights;
    };
    for (const Row& row : {Row{"picker", "enable_preselect", 1, true}, Row{"picker", "enable_preselect", 0, false},
                           Row{"touch", "enable_preselect", 1, false}, Row{"picker", "enable_geom_preselect", 1, false},
                           Row{"picker", "enable_preselect", 1, true}}) {
        services.dispatch.SendModeMessage(du::Symbol(row.workflow), du::Symbol(row.mode), row.value, nullptr);
        EXPECT_TRUE(row.highlights || !picker->GetPreselected()) << "what was highlighted goes at once";
        services.dispatch.Deliver(workflow::MouseMsg(workflow::ConstStrings::MsgMouseMove, 960, 400, 0));
        EXPECT_EQ(picker->GetPreselected(), row.highlights ? std::optional(1U) : std::nullopt) << row.mode;
    }
}

TEST(ViewerPlatform, TheLatestViewerAnswersUntilItGoes) {
    const auto describe = [] {
        const platform::DeviceContext dc = platform::GetDC(nullptr);
        return std::to_string(platform::GetDeviceCaps(dc, platform::LogPixelsX)) +
               (platform::IsEnvironmentVariablePresent("HXAPP_DONTZOOM") ? " switch " : " no switch ") +
               du::Localizer("hxbase:hxmodulesStrings")
                   .LocalizeMessage("TouchMultiSelectMode", du::Localizer::ReturnKey);
    };
    HostSettings second;
    second.environment = {"HXAPP_DONTPAN", "HXAPP_DONTZOOM"};
    auto older = std::make_unique<ReferenceViewer>(HostSettings{120, 0, {}, false, BoundsAnswer::NextTick, true});
    auto newer = std::make_unique<ReferenceViewer>(second);
    EXPECT_EQ(describe(), "96 switch Touch: select");
    newer.reset();
    EXPECT_EQ(describe(), "120 no switch Touch: select");
    newer = std::make_unique<ReferenceViewer>(second);
    older.reset();
    EXPECT_EQ(describe(), "96 switch Touch: select") << "the older one may go first";
    newer.reset();
    EXPECT_EQ(describe(), "96 no switch TouchMultiSelectMode");
}

// A library that the system has in its own folders, and why there is none in the current directory.
constexpr struct {
    const char* name;
    const char* cause;
#if defined(_WIN32)
} SystemLibrary = {"gdi32.dll", "cannot load the plug-in gdi32.dll: Module not found"};
#else
} SystemLibrary = {"libm.so.6", "cannot load the plug-in libm.so.6: cannot open shared object file"};
#endif

TEST_F(HeadlessViewer, SaysWhichPluginItCannotLoadAndWhy) {
    struct Row {
        std::string path;
        const char* viewType;
        const char* cause;
    };
    const Row rows[] = {
        {SystemLibrary.name, "shapeview", SystemLibrary.cause},
        {HOST_LIBRARY, "shapeview", "it has no entry point HXDllTerminate"},
        {TOUCHNAV_PLUGIN, "Shapeview", "for the view type \"Shapeview\""},
    };
    for (const Row& row : rows) {
        Load();
        try {
            viewer.LoadComponent(row.path, row.viewType);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const PluginError& error) {
            EXPECT_THAT(error.what(), AllOf(HasSubstr(row.path), HasSubstr(row.cause)));
        }
        EXPECT_EQ(viewer.GetComponent(), nullptr);
        EXPECT_EQ(viewer.Mouse("MsgMouseMove", 1, 1), std::nullopt);
    }
}

TEST_F(HeadlessViewer, HoldsTheOnlyReferenceToTheComponentItInstalls) {
    Load();
    workflow::SimpleWorkflow* component = viewer.GetComponent();
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(component->GetReferenceCount(), 1);
    EXPECT_NE(component->GetManagerCore(), nullptr);
    EXPECT_NE(component->GetView(), nullptr) << "the view that was attached before";
    EXPECT_EQ(viewer.Mouse("MsgMouseMove", 1, 1), true) << "before the first tick every move counts as a touch's echo";
    EXPECT_EQ(viewer.Mouse("MsgMouseRightUp", 1, 1), std::nullopt) << "a type that it has not registered";
    viewer.SetView(std::nullopt);
    EXPECT_EQ(component->GetView(), nullptr);
    viewer.UnloadComponent();
    EXPECT_EQ(viewer.GetComponent(), nullptr);
    EXPECT_EQ(viewer.UpdateStatusBar(), std::nullopt);
}

TEST_F(HeadlessViewer, OpensEveryKindOfView) {
    struct Row {
        const char* kind;
        unsigned int id;
        bool is2D;
    };
    const Row rows[] = {
        {"shapeview", hxk::ShapeView::CLASS_TYPE.id, false},
        {"drawingview", hxk::DrawingView::CLASS_TYPE.id, true},
        {"imageview", hxk::ImageView::CLASS_TYPE.id, true},
        {"illustration2dview", hxk::DocumentView::CLASS_TYPE.id, true},
        {"ecadschematicview", 75, true},
        {"ecadpcbview", 78, true},
        {"schematicfigureview", 127, true},
        {"other", 1000, false},
    };
    Load();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.kind);
        ViewSpec description = MakeShapeSpec();
        description.kind = row.kind;
        description.orthoWidth = 42;
        viewer.SetView(description);
        const hxk::View& view = *viewer.GetComponent()->GetView();
        for (const Row& other : rows) {
            EXPECT_EQ(view.IsATypeOfId(other.id), other.id == row.id) << other.kind;
        }
        EXPECT_EQ(dynamic_cast<const hxk::View2D*>(&view) != nullptr, row.is2D);
        EXPECT_EQ(viewer.TakeSnapshot().kind, row.kind);
        EXPECT_EQ(viewer.TakeSnapshot().orthoWidth, row.is2D ? 42 : 0);
    }
    ViewSpec unknown;
    unknown.kind = "Shapeview";
    EXPECT_THROW(viewer.SetView(unknown), std::invalid_argument);
    EXPECT_EQ(viewer.TakeSnapshot().kind, "other") << "the attached view stays";
}

TEST(ViewerShutdown, LeavesNothingBehindInTheMiddleOfATouch) {
    HostSettings settings;
    settings.boundsAnswer = BoundsAnswer::Never;
    ReferenceViewer viewer(settings);
    ViewSpec description = MakeShapeSpec();
    description.preferences = PreferenceValues{{"Model Viewer/display_rotation_center", true}};
    viewer.SetView(description);
    viewer.LoadComponent(TOUCHNAV_PLUGIN, "shapeview");
    viewer.Tick(1000, 16);
    // A spin leaves the markup on the view; a pinch then leaves a request waiting.
    viewer.Touch(MakeFrame({{1, 500, 400, 100, workflow::TouchDown}}));
    viewer.Touch(MakeFrame({{1, 600, 400, 120, workflow::TouchMove}}));
    EXPECT_EQ(viewer.TakeSnapshot().markups.size(), 3U);
    viewer.Touch(MakeFrame({{1, 600, 400, 140, workflow::TouchMove}, {2, 700, 500, 140, workflow::TouchDown}}));
    viewer.Touch(MakeFrame({{1, 500, 300, 160, workflow::TouchMove}, {2, 900, 700, 160, workflow::TouchMove}}));
    viewer.Touch(MakeFrame({{1, 300, 100, 180, workflow::TouchMove}, {2, 1100, 790, 180, workflow::TouchMove}}));
    EXPECT_TRUE(std::ranges::any_of(viewer.GetRecorder().GetCalls(),
                                    [](const Call& call) { return std::holds_alternative<ManageObjectCall>(call); }));
    // Unloading twice, once by hand, once by the destructor; a leak is for the leak checker to find.
    viewer.UnloadComponent();
    EXPECT_THAT(viewer.TakeSnapshot().markups, IsEmpty());
}

}  // namespace
}  // namespace viewer
