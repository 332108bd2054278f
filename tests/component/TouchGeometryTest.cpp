// Distances and directions of fingers, and the model's size as the camera sees it.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace tests {
namespace {

constexpr int Lowest = std::numeric_limits<int>::min();
constexpr int Highest = std::numeric_limits<int>::max();

// Opens the measures that the component offers to those who derive from it.
class Measures : public touch::TouchWorkflow {
public:
    Measures() : TouchWorkflow(du::Symbol("measures")) {}
    using TouchWorkflow::DistanceBetweenPoints;
    using TouchWorkflow::GetFixedDigitNumber;
    using TouchWorkflow::GetRotationAngle;
};

class TouchGeometry : public testing::Test {
protected:
    const du::SmartPtr<Measures> m_measures{new Measures};
};

TEST_F(TouchGeometry, PixelDistanceTakesBothXFirstAndWrapsAround) {
    const struct {
        const char* name;
        int x1, x2, y1, y2;
        double distance;
    } rows[] = {{"3, 4, 5", 10, 13, 20, 24, 5},
                {"four different values", 7, 1, 9, 1, 10},
                {"one place", 5, 5, 6, 6, 0},
                {"square that wraps to 0", 65536, 0, 0, 0, 0},
                {"sum that wraps to 1", 65536, 0, 1, 0, 1},
                {"difference that wraps to 1", Lowest, Highest, 0, 0, 1}};
    for (const auto& row : rows) {
        EXPECT_EQ(m_measures->DistanceBetweenPoints(row.x1, row.x2, row.y1, row.y2), row.distance) << row.name;
    }
    EXPECT_TRUE(std::isnan(m_measures->DistanceBetweenPoints(46341, 0, 0, 0))) << "a square that wraps below 0";
}

TEST_F(TouchGeometry, PointsAreTruncatedToWholePixelsFirst) {
    struct Row {
        const char* name;
        dg::DPoint2D p1, p2;
        double distance, direction;
    };
    constexpr double Pi = std::numbers::pi;
    const Row rows[] = {{"3, 4, 5", {10, 20}, {13, 24}, 5, std::atan2(4, 3)},
                        {"back", {13, 24}, {10, 20}, 5, std::atan2(-4, -3)},
                        {"to the left", {10, 0}, {0, 0}, 10, Pi},
                        {"down", {0, 10}, {0, 0}, 10, -Pi / 2},
                        {"fraction", {0.9, 0}, {0, 0}, 0, 0},
                        {"fractions below zero", {-0.9, -0.9}, {0.9, 0.9}, 0, 0},
                        {"no value and infinity", {std::nan(""), 0}, {-INFINITY, 0}, 0, Pi}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(m_measures->DistanceBetweenPoints(row.p1, row.p2), row.distance);
        EXPECT_DOUBLE_EQ(m_measures->GetRotationAngle(row.p1, row.p2), row.direction);
    }
}

TEST_F(TouchGeometry, DirectionOfCoordinatesGoesFromTheSecondPointToTheFirst) {
    EXPECT_DOUBLE_EQ(m_measures->GetRotationAngle(0, 10, 0, 0), std::numbers::pi);
    EXPECT_DOUBLE_EQ(m_measures->GetRotationAngle(10, 0, 0, 0), 0);
    EXPECT_DOUBLE_EQ(m_measures->GetRotationAngle(7, 4, 1, 5), std::atan2(-4, 3));
    EXPECT_DOUBLE_EQ(m_measures->GetRotationAngle(Lowest, Highest, 0, 0), 0) << "the difference wraps to 1";
}

TEST_F(TouchGeometry, RoundingAddsHalfAUnitAndTruncates) {
    const struct {
        double value;
        int digits;
        double expected;
    } rows[] = {{2.344, 2, 2.34}, {2.346, 2, 2.35},        {-2.346, 2, -2.34},       {7.0, 0, 7.0},
                {0.125, 2, 0.13}, {1.5, 0, 2.0},           {-1.5, 0, -1.0},          {-0.125, 2, -0.12},
                {1234, -2, 1200}, {1e300, 2, 21474836.47}, {-1e300, 2, -21474836.48}};
    for (const auto& row : rows) {
        EXPECT_DOUBLE_EQ(m_measures->GetFixedDigitNumber(row.value, row.digits), row.expected)
            << row.value << " with " << row.digits << " digits";
    }
    EXPECT_EQ(m_measures->GetFixedDigitNumber(std::nan(""), 2), 0);
}

TEST_F(TouchGeometry, AFingerIsWhereItIsNowOrElseWhereItWentDown) {
    for (const Place& now : {Place{1, 120, 140}, Place{1, 0, 140}, Place{1, 120, 0}}) {
        FingerScript s = FingerScript::OnShapeView();
        s.Down({{1, 100, 100}, {2, 300, 100}}).Move({now});
        const bool known = now.x != 0 && now.y != 0;
        EXPECT_EQ(s.Inspect().GetGestureCenter(), known ? dg::DPoint2D(210, 120) : dg::DPoint2D(200, 100));
    }
}

// The camera looks along -X: the eye sees X as depth, so a box of depth 2 ends 2 further on.
TEST_F(TouchGeometry, WorldDistanceIsTheLargerOfDepthAndMeanSize) {
    const dg::FVec3 x{1, 0, 0};
    const dg::FVec3 y{0, 1, 0};
    const dg::FVec3 z{0, 0, 1};
    const dg::DBox box({0, 0, 0}, {2, 4, 6});
    const struct {
        const char* name;
        double cameraX;
        dg::DBox bounds;
        double expected;
    } rows[] = {{"mean beyond depth 3", 3, box, 4},
                {"depth 22", 22, box, 22},
                {"behind the camera", -20, box, 22},
                {"empty", 22, dg::DBox::EMPTY, 7},
                {"a point in the eye", 22, dg::DBox({22, 0, 0}, {22, 0, 0}), 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = OrthographicView();
        view.camera.location = dg::Location(y, z, x, {row.cameraX, 0, 0});
        FingerScript s = FingerScript::OnShapeView(view);
        s.Down(1, 400, 300);
        s.Component().ReceiveBounds(dg::DBox({row.cameraX - 7, 0, 0}, {row.cameraX - 7, 0, 0}));
        ASSERT_DOUBLE_EQ(s.Inspect().GetWorldDistance(), 7);
        s.Component().ReceiveBounds(row.bounds);
        EXPECT_DOUBLE_EQ(s.Inspect().GetWorldDistance(), row.expected);
        EXPECT_EQ(s.Inspect().GetModelBounds(), row.bounds);
    }
}

TEST_F(TouchGeometry, BoundsWithoutAViewAreKeptButGiveNoDistance) {
    m_measures->ReceiveBounds(dg::DBox({0, 0, 0}, {1, 1, 1}));
    const touch::WorkflowInspector state(*m_measures);
    EXPECT_EQ(state.GetWorldDistance(), 0);
    EXPECT_EQ(state.GetModelBounds(), dg::DBox({0, 0, 0}, {1, 1, 1}));
}

}  // namespace
}  // namespace tests
