// A plug-in that tells what its workflow does, and that a host closes while it still holds something of it.
#include "viewer/PluginLibrary.h"

#include "host/dp/HXTracer.h"
#include "tests/viewer/ViewerFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace viewer {
namespace {

using workflow::ConstStrings;

class KeptTrace final : public dp::TraceSink {
public:
    bool IsEnabled(const char* /*module*/, const char* /*className*/) const override { return true; }
    void Write(const char* /*module*/, const char* /*className*/, dp::TraceType /*type*/,
               const std::string& text) override {
        all += text;
    }
    std::string all;
};

void Touch(workflow::SimpleWorkflow& component, const std::vector<workflow::TouchRecord>& records) {
    workflow::TouchFrame frame{static_cast<int>(records.size()), {}};
    std::copy(records.begin(), records.end(), frame.records.begin());
    component.HandleMsg(workflow::TouchMsg(ConstStrings::MsgTouch, frame));
}

// One finger spins, which shows the cross; with a second one it pinches, which asks for the model's box.
void SpinAndPinch(workflow::SimpleWorkflow& component) {
    using workflow::TouchDown;
    using workflow::TouchMove;
    Touch(component, {{1, 400, 300, 1000, TouchDown}});
    Touch(component, {{1, 440, 300, 1010, TouchMove}});
    Touch(component, {{1, 480, 300, 1020, TouchMove}});
    Touch(component, {{1, 480, 300, 1030, TouchMove}, {2, 780, 300, 1030, TouchDown}});
    Touch(component, {{1, 430, 300, 1040, TouchMove}, {2, 830, 300, 1040, TouchMove}});
}

// Ends the process with 0 when all went well: a library that was kept stays until then.
[[noreturn]] void CloseThePluginTooEarly() {
    KeptTrace trace;
    dp::HXTracer::SetSink(&trace);
    bool tells = false;
    {
        Services services(BoundsAnswer::Never);
        ViewSpec description;
        description.camera.location.SetPos({0, 0, 20});
        description.preferences = {{"Model Viewer/display_rotation_center", true}};
        const du::SmartPtr<ViewerShapeView> view = services.OpenShapeView(description);
        {
            const PluginLibrary plugin(TOUCHNAV_PLUGIN);
            const du::SmartPtr<workflow::Workflow> made = plugin.CreateWorkflow("shapeview");
            auto& component = dynamic_cast<workflow::SimpleWorkflow&>(*made);
            component.SetManager(&services.dispatch);
            component.SetView(view);
            SpinAndPinch(component);
            const std::optional<HXDllTouchState> state = plugin.GetState(component);
            std::vector<std::string> heard;
            const du::SmartPtr<StandInWorkflow> stranger(new StandInWorkflow("touch", 0, heard));
            tells = state && std::string("GesturePanZoomRotate GestureRecognized navigate") ==
                                 std::string(state->gesture) + " " + state->state + " " + state->mode;
            tells = tells && !plugin.GetState(*stranger);
        }
        services.bounds.FailAll();
        view->RemoveMarkups();
    }
    const bool stays = platform::DynamicLibrary::IsLoaded(TOUCHNAV_PLUGIN);
    const bool says = trace.all == "HXDllTerminate(): stays loaded for 1 workflow(s), 1 bounds request(s), "
                                   "1 spin-centre markup(s).\n";
    std::fputs(trace.all.c_str(), stderr);
    std::_Exit((tells ? 0 : 1) + (stays ? 0 : 2) + (says ? 0 : 4));
}

TEST(PluginLibraryDeathTest, StaysLoadedForWhatAHostStillHolds) {
    EXPECT_EXIT(CloseThePluginTooEarly(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace viewer
