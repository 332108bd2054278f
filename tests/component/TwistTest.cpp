// Turning fingers turn the view about the viewing direction. Finger 1 rests at (300, 300); finger 2 comes from its
// right.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tests {
namespace {

// The direction of the camera's U axis in the plane of the screen, in radians.
double RollOf(const dg::Location& camera) {
    return std::atan2(static_cast<double>(camera.GetU().y), static_cast<double>(camera.GetU().x));
}

FingerScript& Begin(FingerScript& s) {
    return s.Down({{1, 300, 300}, {2, 600, 300}}).Move({{1, 300, 300}, {2, 600, 400}});
}

TEST(Twist, TurnsTheCameraAgainstTheFingersFromTheOnsetOn) {
    const struct {
        const char* name;
        bool orthographic;
        const char* method;
        bool turns;
    } rows[] = {{"orthographic", true, "standard", true},
                {"perspective", false, "standard", true},
                {"orthographic explore", true, "explore", true},
                {"perspective explore", false, "explore", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = row.orthographic ? OrthographicView() : PerspectiveView();
        view.navMethod = row.method;
        FingerScript s = FingerScript::OnShapeView(view, WithSwitch("HXAPP_DONTPAN"));
        Begin(s).Mark();
        EXPECT_EQ(s.Inspect().IsRotationStarted(), true);
        EXPECT_EQ(s.Answer(), row.turns);
        EXPECT_TRUE(AreNear(s.CameraLocation(), view.camera.location, 0)) << "the onset itself does not turn";
        EXPECT_EQ(s.Move({{1, 300, 300}, {2, 600, 450}}).Answer(), row.turns);
        const double turned = std::atan2(150, 300) - std::atan2(100, 300);
        EXPECT_NEAR(RollOf(s.CameraLocation()), row.turns ? -turned : 0, 1e-6);
        EXPECT_TRUE(AreNear(s.CameraLocation().GetW(), dg::FVec3{0, 0, 1}, 1e-6));

        s.Mark();
        EXPECT_EQ(s.Rest().Answer(), row.turns) << "an unchanged direction is used up";
        s.ExpectNoActions();
    }
}

TEST(Twist, AFingerThatJoinsDoesNotTurnTheCamera) {
    FingerScript s = FingerScript::OnShapeView();
    Begin(s).Move({{1, 300, 300}, {2, 600, 450}});
    const dg::Location before = s.CameraLocation();
    EXPECT_EQ(s.Down(3, 900, 100).Answer(), false);
    s.Rest();
    EXPECT_TRUE(AreNear(s.CameraLocation(), before, 1e-6));
}

TEST(Twist, TheModelStaysUnderTheFingers) {
    viewer::ViewSpec view = OrthographicView();
    view.camera.right = 30;
    view.camera.location = dg::Location({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {20, 3, 4});
    FingerScript s = FingerScript::OnShapeView(view);
    Begin(s);
    // The point under the middle of the fingers, (450, 350).
    dg::DPoint3D point(450 / 1000.0 * 40 - 10, 350 / 600.0 * 12 - 6, -5);
    point *= s.CameraLocation();
    ASSERT_TRUE(AreNear(s.PixelOf(point), dg::DPoint2D(450, 350), 1e-9));
    s.Move({{1, 300, 300}, {2, 560, 500}});
    EXPECT_TRUE(AreNear(s.PixelOf(point), dg::DPoint2D(430, 400), 1e-3));
}

TEST(Twist, AcrossAFullTurnTheCameraTurnsOn) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 500, 300}, {2, 800, 300}}).Move({{1, 500, 300}, {2, 500, 600}}).Move({{1, 500, 300}, {2, 210, 340}});
    const double before = RollOf(s.CameraLocation());
    ASSERT_GT(s.Inspect().GetGestureAngle(), 6);
    s.Move({{1, 500, 300}, {2, 210, 260}});
    ASSERT_LT(s.Inspect().GetGestureAngle(), 1);
    const double turned = std::remainder(before - RollOf(s.CameraLocation()), 2 * std::numbers::pi);
    EXPECT_NEAR(turned, 2 * std::atan2(40, 290), 1e-5);
}

}  // namespace
}  // namespace tests
