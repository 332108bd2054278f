// The axis cross: what it is made of, and when it is shown.
#include "touch/markup/SpinCenterMarkup.h"

#include "host/hxmu/MarkupData.h"
#include "host/hxmu/Model.h"
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"
#include "viewer/ViewerViews.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

const char RotationCenter[] = "Model Viewer/display_rotation_center";

viewer::ViewSpec ViewWithMarkup() {
    viewer::ViewSpec view = OrthographicView();
    view.spinCenter = {1, 2, 3};
    view.preferences = {{RotationCenter, true}};
    return view;
}

FingerScript& Spin(FingerScript& s) {
    return s.Down(1, 460, 300).Mark().Move(1, 500, 300);
}

TEST(SpinCenterMarkup, IsThreeColouredAxesWithBallsAtThePlaceOfTheCenter) {
    FingerScript s = FingerScript::OnShapeView(ViewWithMarkup());
    Spin(s);
    const auto& markups = dynamic_cast<viewer::ViewerShapeView&>(*s.Component().GetView()).GetMarkups();
    ASSERT_EQ(markups.size(), 1U);
    const hxk::Markup& markup = *markups[0];
    EXPECT_EQ(markup.GetType(), 4U);
    EXPECT_TRUE(markup.IsVisible());
    const auto* axes = dynamic_cast<const hxmu::ModelContainer*>(markup.GetContent()->GetModelBase().Get());
    ASSERT_NE(axes, nullptr);
    ASSERT_EQ(axes->GetModels().size(), 3U);

    const dg::DPoint3D ends[] = {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}};  // Z comes first
    const dg::Color colors[] = {{0.2F, 0.2F, 1, 1}, {0.2F, 1, 0.2F, 1}, {1, 0.2F, 0.2F, 1}};
    std::size_t i = 0;
    for (const du::SmartPtr<hxmu::ModelBase>& model : axes->GetModels()) {
        SCOPED_TRACE(i);
        const auto* line = dynamic_cast<const hxmu::ModelLeaderLine*>(model.Get());
        ASSERT_NE(line, nullptr);
        EXPECT_EQ(line->GetLocation().GetPos(), dg::DPoint3D(1, 2, 3));
        EXPECT_EQ(line->GetPoints(), (std::vector<dg::DPoint3D>{{0, 0, 0}, ends[i]}));
        EXPECT_EQ(line->GetStyle(), 5);
        EXPECT_EQ(line->GetSizes(), (std::array<float, 3>{0.07F, 0.07F, 0.07F}));
        EXPECT_EQ(line->GetRenderAttrsVector()->color, colors[i]);
        EXPECT_EQ(line->GetRenderAttrsVector()->kind, 1);
        const auto* ball = dynamic_cast<const hxmu::ModelSphere*>(line->GetArrowHeadRound().Get());
        ASSERT_NE(ball, nullptr);
        EXPECT_EQ(ball->GetSize(), 0.075F);
        EXPECT_EQ(ball->GetRenderAttrsVector()->color, colors[i]);
        EXPECT_EQ(ball->GetRenderAttrsVector()->kind, 2);
        EXPECT_EQ(ball->GetFillAttrs()->GetColor(), colors[i]);
        ++i;
    }
}

TEST(SpinCenterMarkup, ComesWithTheFirstSpinStepAndGoesWithTheLift) {
    FingerScript s = FingerScript::OnShapeView(ViewWithMarkup());
    Spin(s).ExpectActions({"SetCameraLocation", "NotifyContentChanged", "AddMarkup"});
    s.Move(1, 524, 300).Move(1, 550, 310).ExpectActions({"SetCameraLocation", "SetCameraLocation"});
    s.Tick(50).Up(1).ExpectActions({"RemoveMarkup"});
    EXPECT_TRUE(s.View().markups.empty());
}

TEST(SpinCenterMarkup, IsMovedToTheCenterOfEverySpin) {
    FingerScript s = FingerScript::OnShapeView(ViewWithMarkup());
    viewer::ViewChange change;
    change.spinCenter = dg::DPoint3D(-4, 0, 7);
    Spin(s).Tick(50).Up(1).Change(change);
    Spin(s);
    EXPECT_EQ(s.Calls<viewer::AddMarkupCall>().at(0).position, *change.spinCenter);
    change.spinCenter = dg::DPoint3D(5, 5, 5);
    s.Change(change).Mark().Move(1, 540, 300).ExpectActions({"SetCameraLocation"});
    EXPECT_EQ(s.View().markups.at(0).origin, dg::DPoint3D(-4, 0, 7)) << "it stays for the whole touch";
}

TEST(SpinCenterMarkup, IsNotShownByAnythingButASpin) {
    FingerScript tap = FingerScript::OnShapeView(ViewWithMarkup());
    tap.Down(1, 400, 300).Move(1, 420, 300).Tick(100).Mark().Up(1).ExpectActions({"MsgClickLeft 420 300 passed"});

    FingerScript pan = FingerScript::OnShapeView(ViewWithMarkup());
    pan.Down({{1, 300, 300}, {2, 400, 300}}).Mark().Move({{1, 350, 300}, {2, 450, 300}});
    pan.ExpectActions({"SetCameraLocation"});
}

TEST(SpinCenterMarkup, FollowsThePreferenceDuringASpin) {
    FingerScript s = FingerScript::OnShapeView();
    Spin(s).ExpectActions({"SetCameraLocation"});
    s.Preferences({{{RotationCenter, true}}});
    s.Move(1, 510, 300).ExpectActions({"SetCameraLocation", "NotifyContentChanged", "AddMarkup"});
    // What was withdrawn is no longer the component's to remove.
    s.Preferences({{{RotationCenter, false}}}).Move(1, 520, 300).Tick(50).Up(1).ExpectActions({"SetCameraLocation"});
    s.Preferences({{{RotationCenter, true}}});
    Spin(s).ExpectActions({"SetCameraLocation", "NotifyContentChanged", "AddMarkup"});
}

}  // namespace
}  // namespace tests
