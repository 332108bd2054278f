// The helpers' own test: a check that should fail does. That a story sends what it says, every component test shows.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cmath>

namespace tests {
namespace {

TEST(Matchers, AcceptUpToTheToleranceAndNameTheNumbersBeyondIt) {
    EXPECT_TRUE(AreNear(dg::DVec3(1, 2, 3), dg::DVec3(1, 2.5, 3), 0.5));
    const testing::AssertionResult beyond = AreNear(dg::DVec3(1, 2, 3), dg::DVec3(1, 2.75, 3), 0.5);
    EXPECT_FALSE(beyond);
    EXPECT_STREQ(beyond.message(), "\n  number 1: 2, expected 2.75, difference -0.75");
    EXPECT_FALSE(AreNear(dg::DVec2{std::nan(""), 0}, dg::DVec2{0, 0}, 1));
    EXPECT_FALSE(AreNear(dg::DVec2{std::nan(""), 0}, dg::DVec2{std::nan(""), 0}, 1));
    EXPECT_FALSE(AreNear(dg::DVec2{0, 0}, dg::DVec3(0, 0, 0), 1));

    dg::Location moved;
    moved.SetPos({0, 0, 0.25});
    EXPECT_FALSE(AreNear(moved, dg::Location(), 0.125));
    dg::Location turned;
    turned.SetMat(dg::FMat33({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}));
    EXPECT_FALSE(AreNear(turned, dg::Location(), 0.125));
}

TEST(FingerScript, TellsCallsOnceAndLeavesTheStatusBarOut) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300);
    EXPECT_EQ(s.StatusCalls(),
              (Texts{"SetStatusMessage 1 Touch: navigate", "UpdateStatusMessage", "UpdateStatusMessage"}));
    s.ExpectActions({"StopTransition"}).ExpectNoActions();
    EXPECT_NONFATAL_FAILURE(s.ExpectActions({"StopTransition"}), "actions since the latest mark");
    s.Tick(100).Up(1);
    EXPECT_NONFATAL_FAILURE(s.ExpectNoActions(), "MsgClickLeft 400 300 passed");
}

TEST(FingerScript, FailsOnATraceThatWasNotAnnounced) {
    viewer::HostSettings refusing;
    refusing.boundsAnswer = viewer::BoundsAnswer::Refused;
    const auto pinch = [&](const char* announced) {
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), refusing);
        if (announced != nullptr) {
            s.AnnounceTrace(announced);
        }
        s.Down({{1, 400, 300}, {2, 600, 300}}).Tick().Move({{1, 300, 300}, {2, 700, 300}});
    };
    pinch("RequestBounds(): GetBoundingBox() failed.");
    EXPECT_NONFATAL_FAILURE(pinch(nullptr), "texts on the trace channel");
    EXPECT_NONFATAL_FAILURE(pinch("something else"), "texts on the trace channel");
}

// Whatever changes behind the story's back is a fault; what the story announces is not.
TEST(Invariants, NoticeReferencesThatATouchLeavesBehind) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 300, 300).Move(1, 400, 300);
    du::SmartPtr<hxk::View> kept = s.Component().GetView();
    EXPECT_NONFATAL_FAILURE(s.Up(1).Tick(600), "view 1 to 2");
    kept = nullptr;
    s.Tick();
    const du::SmartPtr<hxk::View> announced = s.Component().GetView();
    s.ForgetReferences().Down(1, 300, 300).Up(1).Tick(600);
}

TEST(Invariants, NoticeASkewedCameraExceptAfterInputThatMaySkewIt) {
    FingerScript s = FingerScript::OnShapeView();
    viewer::ViewChange skewed;
    skewed.camera = OrthographicView().camera;
    skewed.camera->location.SetMat(dg::FMat33({1, 0, 0}, {0.01F, 1, 0}, {0, 0, 1}));
    viewer::ViewChange sound;
    sound.camera = OrthographicView().camera;

    s.Viewer().ChangeView(skewed);
    EXPECT_NONFATAL_FAILURE(s.Tick(), "not orthonormal");
    s.Change(skewed).Tick();
    s.Change(sound).Frame({{1, 2'000'000'000, 1, 1, workflow::TouchDown}}, 1);
    s.Viewer().ChangeView(skewed);
    s.Tick();

    s.Change(sound).Tick(600).Change(sound);
    s.Viewer().ChangeView(skewed);
    EXPECT_NONFATAL_FAILURE(s.Tick(), "not orthonormal");
}

}  // namespace
}  // namespace tests
