#include "tests/viewer/ViewerFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace viewer {
namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Tolerance = 1e-6;  // axes are single precision

dg::Location LookDownZ() {
    dg::Location location;
    location.SetPos({0, 0, 20});
    return location;
}

dg::Location Turned(const dg::Location& location, const dg::DPoint3D& center, const dg::DVec3& axis, double angle) {
    const dg::DVec3 offset(center.x, center.y, center.z);
    const dg::DMat44 turn(dg::DMat44(dg::DMat44::Translation(-offset), dg::DMat44::Rotation(axis, angle)),
                          dg::DMat44::Translation(offset));
    dg::Location turned = location * turn;
    turned.Sanitize();
    return turned;
}

double Difference(const dg::Location& a, const dg::Location& b) {
    double largest = (a.GetPos() - b.GetPos()).Norm() / 20;  // of the distance to the centre
    for (int i = 0; i < 3; ++i) {
        largest = std::max(largest, (dg::DVec3(a.GetMat().Row(i)) - dg::DVec3(b.GetMat().Row(i))).Norm());
    }
    return largest;
}

class Coasting : public testing::Test {
protected:
    Coasting() { view->PlaceCamera(LookDownZ()); }

    SpinMotion MakeMotion(double angle, std::int64_t delay, std::int64_t duration) {
        return {view, LookDownZ(), Turned(LookDownZ(), {1, 2, 3}, {1, 1, 0}, angle), {1, 2, 3}, delay, duration};
    }
    const dg::Location& GetLocation() const { return view->GetCurrentCamera().GetLocation(); }

    Services services;
    TransitionPlayer& player = services.transitions;
    du::SmartPtr<ViewerShapeView> view = services.OpenShapeView({});
};

TEST_F(Coasting, StartsAtTheSpeedOfTheReleaseSlowsDownAndEndsAtRest) {
    struct Row {
        const char* name;
        std::int64_t delay;
        std::int64_t duration;
        std::int64_t elapsed;  // after the tick before it was queued
        double share;
        bool playing;
    };
    const Row rows[] = {
        {"at first as fast as an even motion of the duration", 0, 100, 2, 0.0199, true},
        {"half of the time", 0, 100, 100, 0.75, true},
        {"just before the end", 0, 100, 199, 0.999975, true},
        {"at the end", 0, 100, 200, 1, false},
        {"a tick before the first", 0, 100, -10, 0, true},
        {"in the delay", 40, 100, 39, 0, true},
        {"half of the time behind the delay", 40, 100, 140, 0.75, true},
        {"a delay that has long passed", -1000, 100, 0, 1, false},
    };
    const SpinMotion whole = MakeMotion(0.8, 0, 0);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        view->PlaceCamera(LookDownZ());
        player.Advance(5000);
        player.Play(MakeMotion(0.8, row.delay, row.duration));
        player.Advance(5000 + row.elapsed);
        EXPECT_EQ(player.IsPlaying(), row.playing);
        if (row.share == 1) {
            EXPECT_EQ(GetLocation(), whole.end) << "the end is set as it was given";
        } else {
            EXPECT_LT(Difference(GetLocation(), Turned(whole.start, whole.center, {1, 1, 0}, 0.8 * row.share)),
                      Tolerance);
        }
    }
    EXPECT_TRUE(services.recorder.GetCalls().empty()) << "the host moves the camera itself";
}

TEST_F(Coasting, FollowsTheShortestRotationAboutAnyAxis) {
    struct Row {
        dg::DVec3 axis;
        double angle;
    };
    // Close to a half turn the single-precision axes leave less of the angle; a half turn may go either way round.
    for (const Row& row : {Row{{0, 1, 0}, -2.5}, Row{{0, 0, 1}, 1e-3}, Row{{2, 1, -1}, Pi - 1e-3}, Row{{1, 1, 0}, Pi},
                           Row{{0, 0, 0}, 0}}) {
        for (const double share : {0.1, 0.5, 0.9}) {
            SpinMotion motion = MakeMotion(0, 0, 100);
            motion.start = Turned(LookDownZ(), {}, {3, 1, 2}, 0.7);
            motion.end = Turned(motion.start, motion.center, row.axis, row.angle);
            const dg::Location on = TurnAboutCenter(motion, share);
            const auto differenceFrom = [&](double angle) {
                return Difference(on, Turned(motion.start, motion.center, row.axis, angle * share));
            };
            EXPECT_LT(std::min(differenceFrom(row.angle), differenceFrom(row.angle == Pi ? -Pi : row.angle)), 1e-5)
                << row.angle << " at " << share;
        }
    }
}

TEST_F(Coasting, WhoeverSetsTheCameraEndsTheMotion) {
    dg::Location elsewhere;
    elsewhere.SetPos({5, 5, 5});
    ViewChange cameraChange;
    cameraChange.camera = CameraSpec{};
    cameraChange.camera->location = elsewhere;
    const du::SmartPtr<ViewerShapeView> other = services.OpenShapeView({});

    struct Row {
        const char* name;
        std::function<void()> action;
        bool playing;
    };
    const Row rows[] = {
        {"stopped", [&] { services.dispatch.StopTransition(); }, false},
        {"the host sets the camera", [&] { view->Change(cameraChange); }, false},
        {"the component sets the camera", [&] { view->SetCameraLocation(elsewhere); }, false},
        {"another view's camera is set", [&] { other->SetCameraLocation(elsewhere); }, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        view->PlaceCamera(LookDownZ());
        player.Advance(0);
        player.Play(MakeMotion(1, 0, 100));
        player.Advance(50);
        row.action();
        EXPECT_EQ(player.IsPlaying(), row.playing);
        const dg::Location before = GetLocation();
        player.Advance(60);
        EXPECT_EQ(GetLocation() == before, !row.playing) << "nothing may move the camera afterwards";
    }
}

TEST_F(Coasting, ANewMotionReplacesTheOneThatPlaysAndHasItsOwnClock) {
    player.Play(MakeMotion(1, 0, 100));
    player.Advance(1000);
    player.Advance(1090);
    const SpinMotion second = MakeMotion(-1, 0, 100);
    player.Play(second);
    player.Advance(1090);
    EXPECT_EQ(GetLocation(), second.start);
    EXPECT_TRUE(player.IsPlaying());
    Services still(BoundsAnswer::NextTick, false);
    still.transitions.Play(second);
    EXPECT_FALSE(still.transitions.IsPlaying()) << "playing is switched off";
}

TEST_F(Coasting, DoesNotFollowSoonAfterSeveralFingers) {
    struct Row {
        const char* name;
        int fingers;
        std::int64_t later;  // the latest tick after that of the frame
        bool playing;
    };
    for (const Row& row : {Row{"several fingers a moment ago", 2, 99, false}, Row{"long enough ago", 2, 100, true},
                           Row{"one finger", 1, 0, true}}) {
        Services fresh;
        fresh.transitions.Advance(700);
        fresh.transitions.NoteTouch(row.fingers);
        fresh.transitions.NoteTouch(1);
        fresh.transitions.Advance(700 + row.later);
        fresh.transitions.Play(MakeMotion(1, 0, 100));
        EXPECT_EQ(fresh.transitions.IsPlaying(), row.playing) << row.name;
    }
}

TEST_F(Coasting, TakesExtremeTimesAndBrokenLocations) {
    constexpr std::int64_t Max = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t Min = std::numeric_limits<std::int64_t>::min();
    for (const auto& [delay, duration] : {std::pair{Min, Min}, {Min, Max}, {Max, Min}, {Max, Max}}) {
        player.Play(MakeMotion(1, delay, duration));
        for (const std::int64_t now : {Max, Min, std::int64_t{0}, Max}) {
            player.Advance(now);
            EXPECT_TRUE(std::isfinite(GetLocation().GetPos().x));
        }
    }
    SpinMotion broken = MakeMotion(1, 0, 100);
    constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
    broken.end.SetMat({{NaN, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    player.Advance(100);
    player.Play(broken);
    player.Advance(300);
    EXPECT_FALSE(player.IsPlaying());
    EXPECT_EQ(GetLocation().GetPos(), broken.end.GetPos());
}

}  // namespace
}  // namespace viewer
