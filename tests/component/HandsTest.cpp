// Fingers to hands, and hands to flight. 96 pixels are an inch.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tests {
namespace {

std::vector<int> IdsOf(const std::list<touch::TouchState>& hand) {
    std::vector<int> ids;
    for (const touch::TouchState& finger : hand) {
        ids.push_back(finger.id);
    }
    return ids;
}

TEST(Hands, DivideAtTheWidestGapOfMoreThanTwoInches) {
    using Ids = std::vector<int>;
    const struct {
        const char* name;
        std::vector<Place> fingers;
        Ids left, right;
        int ppiY;
    } rows[] = {
        {"one finger", {{1, 100, 100}}, {}, {1}, 96},
        {"two pairs", {{1, 100, 300}, {2, 150, 300}, {3, 600, 300}, {4, 650, 300}}, {1, 2}, {3, 4}, 96},
        {"gaps of 1.56 inches", {{1, 100, 300}, {2, 250, 300}, {3, 400, 300}}, {}, {1, 2, 3}, 96},
        {"gap of 2 inches", {{1, 100, 300}, {2, 292, 300}}, {}, {1, 2}, 96},
        {"gap beyond 2 inches", {{1, 100, 300}, {2, 293, 300}}, {1}, {2}, 96},
        {"equal gaps: the left one", {{1, 100, 300}, {2, 400, 300}, {3, 700, 300}}, {1}, {2, 3}, 96},
        {"wider gap on the right", {{1, 100, 300}, {2, 400, 300}, {3, 701, 300}}, {1, 2}, {3}, 96},
        {"came from right to left", {{1, 700, 300}, {2, 650, 300}, {3, 100, 300}}, {3}, {2, 1}, 96},
        {"one above the other", {{1, 300, 100}, {2, 300, 293}}, {1}, {2}, 96},
        {"one above the other, fine rows", {{1, 300, 100}, {2, 300, 293}}, {}, {1, 2}, 192},
        {"neighbours from left to right", {{1, 100, 100}, {2, 110, 400}, {3, 120, 100}}, {1}, {2, 3}, 96},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::HostSettings settings;
        settings.ppiY = row.ppiY;
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), settings);
        s.Down(row.fingers);
        EXPECT_EQ(IdsOf(s.Inspect().GetLeftHand()), row.left);
        EXPECT_EQ(IdsOf(s.Inspect().GetRightHand()), row.right);
    }
}

TEST(Hands, AreMeasuredLiveByTheBoxAroundTheirFingers) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 100, 300}, {2, 140, 330}, {3, 600, 300}});
    EXPECT_TRUE(AreNear(s.Inspect().GetLeftHandCenter(), dg::DPoint2D(120, 315), 0));
    EXPECT_TRUE(AreNear(s.Inspect().GetRightHandCenter(), dg::DPoint2D(600, 300), 0));
    EXPECT_EQ(s.Inspect().GetRightHandSize(), 0);
    s.Move({{1, 100, 300}, {2, 500, 330}, {3, 610, 310}});
    EXPECT_EQ(s.Inspect().GetLeftHand().size(), 2U) << "who belongs to a hand stays";
    EXPECT_TRUE(AreNear(s.Inspect().GetLeftHandCenter(), dg::DPoint2D(300, 315), 0));
    EXPECT_TRUE(AreNear(s.Inspect().GetRightHandCenter(), dg::DPoint2D(610, 310), 0));
}

// Two hands of one finger each, on a perspective view of 1000 x 600 pixels; the model is 22 deep, so one step is
// 0.0022. The ticks are 50 ms apart.
struct FlightRow {
    const char* name;
    Place left, right;  // where the hands go from (200, 300) and (800, 300)
    dg::DVec3 travel;   // world
    double yaw, pitch;  // radians by which the view turns to the right and upward
};

const FlightRow FlightRows[] = {
    {"left hand down, dead zone", {1, 200, 295}, {2, 800, 300}, {0, 0, 0}, 0, 0},
    {"left hand up, dead zone", {1, 200, 305}, {2, 800, 300}, {0, 0, 0}, 0, 0},
    {"left hand up, beyond it", {1, 200, 306}, {2, 800, 300}, {0, 0, -6 / 30.0 * 0.0022 * 3}, 0, 0},
    {"left hand down", {1, 200, 270}, {2, 800, 300}, {0, 0, 0.0022 * 3}, 0, 0},
    {"left hand right, in the band", {1, 250, 300}, {2, 800, 300}, {0, 0, 0}, 0, 0},
    {"left hand right, beyond the band", {1, 260, 300}, {2, 800, 300}, {10 / 50.0 * 0.0022, 0, 0}, 0, 0},
    {"left hand left, beyond the band", {1, 140, 300}, {2, 800, 300}, {-10 / 50.0 * 0.0022, 0, 0}, 0, 0},
    {"right hand right, dead zone", {1, 200, 300}, {2, 805, 300}, {0, 0, 0}, 0, 0},
    {"right hand right", {1, 200, 300}, {2, 900, 300}, {0, 0, 0}, 0.04 * 0.2 * 0.5, 0},
    {"right hand left", {1, 200, 300}, {2, 700, 300}, {0, 0, 0}, -0.04 * 0.2 * 0.5, 0},
    {"right hand up", {1, 200, 300}, {2, 800, 450}, {0, 0, 0}, 0, 0.25 * 0.2 * 0.6 * 0.5},
    {"right hand down", {1, 200, 300}, {2, 800, 150}, {0, 0, 0}, 0, -0.25 * 0.2 * 0.6 * 0.5},
};

TEST(Hands, SteerTheFlight) {
    for (const FlightRow& row : FlightRows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = ExploreView();
        view.navSpeed = 3;
        FingerScript s = FingerScript::OnShapeView(view, WithSwitch("HXAPP_TOUCH_TWO_HANDS_EXPLORE"));
        s.Down({{1, 200, 300}, {2, 800, 300}}).Tick(50);
        ASSERT_DOUBLE_EQ(s.Inspect().GetWorldDistance(), 22);
        s.Move({row.left, row.right});
        const dg::Location camera = s.CameraLocation();
        EXPECT_TRUE(AreNear(camera.GetPos(), dg::DPoint3D(0, 0, 20) + row.travel, 1e-9));
        const dg::FVec3 back = camera.GetW();
        EXPECT_NEAR(-back.x, std::sin(row.yaw), 1e-6);
        EXPECT_NEAR(-back.y, std::sin(row.pitch), 1e-6);
    }
}

TEST(Hands, WithoutTheSwitchTheWholeHandTurnsTheView) {
    FingerScript s = FingerScript::OnShapeView(ExploreView());
    s.Down({{1, 300, 300}, {2, 700, 300}}).Tick(50);
    s.Move({{1, 200, 300}, {2, 800, 300}});  // the pinch begins; the centre has not moved
    EXPECT_TRUE(AreNear(s.CameraLocation().GetW(), dg::FVec3{0, 0, 1}, 0));
    s.Move({{1, 300, 300}, {2, 900, 300}});
    EXPECT_NEAR(-s.CameraLocation().GetW().x, std::sin(0.04 * 0.2 * 0.5), 1e-6);
}

}  // namespace
}  // namespace tests
