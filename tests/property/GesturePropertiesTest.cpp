// Laws of whole gestures, tried on random paths: there and back again is where one was, a zoom knows only where the
// fingers are, and a mirrored touch moves a mirrored camera. The seeds are fixed and in the names of the tests.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"
#include "viewer/Picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace tests {
namespace {

constexpr int ViewWidth = 1000;  // of the views of FingerScript
constexpr double SinglePrecision = 2e-5;

// Two fingers, both on even pixels, so that the middle between them is a whole one.
using Pair = std::array<Place, 2>;

Pair About(int x, int y, int dx, int dy) {
    return {{{1, x - dx, y - dy}, {2, x + dx, y + dy}}};
}
Pair Mirrored(const Pair& pair) {
    Pair mirrored = pair;
    for (Place& place : mirrored) {
        place.x = ViewWidth - place.x;
    }
    return mirrored;
}

class GestureProperties : public testing::TestWithParam<unsigned> {
protected:
    // An even number of pixels.
    int Even(int low, int high) { return 2 * std::uniform_int_distribution<int>(low / 2, high / 2)(m_random); }

private:
    std::mt19937 m_random{GetParam()};
};

void Down(FingerScript& s, const Pair& pair) {
    s.Down({pair[0], pair[1]}).Tick();
}
void Move(FingerScript& s, const Pair& pair) {
    s.Move({pair[0], pair[1]}).Tick();
}

double WindowWidth(const FingerScript& s) {
    double left = 0;
    double right = 0;
    double ignored = 0;
    bool orthographic = false;
    s.Camera().GetProjection(left, right, ignored, ignored, ignored, orthographic);
    return right - left;
}

// The placement that a mirror in the plane x = 0 shows. A mirror turns a right-handed frame into a left-handed one, so
// U is also reversed.
dg::Location Mirrored(const dg::Location& location) {
    const dg::FVec3 u = location.GetU();
    const dg::FVec3 v = location.GetV();
    const dg::FVec3 w = location.GetW();
    const dg::DPoint3D& p = location.GetPos();
    return {{u.x, -u.y, -u.z}, {-v.x, v.y, v.z}, {-w.x, w.y, w.z}, {-p.x, p.y, p.z}};
}

// However the fingers go, what lay under their middle when they landed stays there.
TEST_P(GestureProperties, APanKeepsTheContentUnderTheMiddleOfTheFingers) {
    constexpr double TolerancePx = 0.1;
    for (const viewer::ViewSpec& view : {OrthographicView(), PerspectiveView()}) {
        FingerScript s = FingerScript::OnShapeView(view);
        Down(s, About(500, 300, 40, 10));
        const viewer::Ray ray = viewer::MakeRay(s.Camera(), 500, 300).value();
        const dg::DPoint3D content = ray.origin + ray.direction * 12;
        dg::DPoint2D middle(500, 300);
        for (int step = 0; step < 60; ++step) {
            middle = {middle.x + Even(-80, 80), middle.y + Even(-60, 60)};
            middle.x = std::clamp(middle.x, 100.0, 900.0);
            middle.y = std::clamp(middle.y, 100.0, 500.0);
            Move(s, About(static_cast<int>(middle.x), static_cast<int>(middle.y), 40, 10));
            const dg::DPoint2D seen = viewer::ProjectPoint(s.Camera(), content).value();
            ASSERT_LT(std::hypot(seen.x - middle.x, seen.y - middle.y), TolerancePx)
                << (view.camera.orthographic ? "orthographic" : "perspective") << ", step " << step;
        }
    }
}

// The same first frames, and so the same reference; then two ways to the same place.
TEST_P(GestureProperties, AZoomDependsOnWhereTheFingersAreAndNotOnHowTheyCameThere) {
    const Pair end = About(Even(400, 600), Even(250, 350), Even(120, 240), 0);
    for (const bool page : {false, true}) {
        std::vector<double> widths;
        for (const int detours : {0, 10}) {
            FingerScript s = page ? FingerScript::On2DView() : FingerScript::OnShapeView(OrthographicView());
            Down(s, About(500, 300, 160, 0));
            Move(s, About(500, 300, 196, 0));
            for (int step = 0; step < detours; ++step) {
                Move(s, About(Even(400, 600), Even(250, 350), Even(110, 250), 0));
            }
            Move(s, end);
            widths.push_back(page ? s.View().orthoWidth : WindowWidth(s));
        }
        EXPECT_EQ(widths[0], widths[1]) << (page ? "page" : "model");
    }
}

TEST_P(GestureProperties, ATwistThereAndBackReturnsTheCamera) {
    for (const viewer::ViewSpec& view : {OrthographicView(), PerspectiveView()}) {
        FingerScript s = FingerScript::OnShapeView(view);
        const int x = Even(400, 600);
        const int y = Even(250, 350);
        Down(s, About(x, y, 120, 0));
        Move(s, About(x, y, 116, 36));  // a third of a radian: the twist begins
        const dg::Location before = s.CameraLocation();
        for (int step = 0; step < 10; ++step) {
            const double angle = 0.3 + 0.05 * Even(0, 20);
            Move(s, About(x, y, static_cast<int>(120 * std::cos(angle)), static_cast<int>(120 * std::sin(angle))));
        }
        Move(s, About(x, y, 60, 104));
        EXPECT_FALSE(AreNear(s.CameraLocation(), before, 0.1));
        Move(s, About(x, y, 116, 36));
        EXPECT_TRUE(AreNear(s.CameraLocation(), before, SinglePrecision));
    }
}

TEST_P(GestureProperties, AMirroredTouchMovesAMirroredCamera) {
    for (const viewer::ViewSpec& view : {OrthographicView(), PerspectiveView(), ExploreView()}) {
        for (const int fingers : {1, 2}) {
            FingerScript plain = FingerScript::OnShapeView(view);
            FingerScript mirrored = FingerScript::OnShapeView(view);
            for (int step = 0; step < 12; ++step) {
                const Pair pair = About(Even(440, 560), Even(240, 360), Even(110, 200), Even(-60, 60));
                const Pair other = Mirrored(pair);
                if (fingers == 2) {
                    step == 0 ? Down(plain, pair) : Move(plain, pair);
                    step == 0 ? Down(mirrored, other) : Move(mirrored, other);
                } else {
                    step == 0 ? plain.Down({pair[0]}) : plain.Move({pair[0]});
                    step == 0 ? mirrored.Down({other[0]}) : mirrored.Move({other[0]});
                }
            }
            EXPECT_FALSE(AreNear(plain.CameraLocation(), dg::Location(view.camera.location), 0.001));
            EXPECT_TRUE(AreNear(mirrored.CameraLocation(), Mirrored(plain.CameraLocation()), 10 * SinglePrecision));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, GestureProperties, testing::Values(3U, 50U, 700U, 9000U),
                         [](const testing::TestParamInfo<unsigned>& seed) {
                             return "Seed" + std::to_string(seed.param);
                         });

}  // namespace
}  // namespace tests
