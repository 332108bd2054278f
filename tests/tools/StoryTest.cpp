// Stories and sheets of replays that are made up here: no component takes part.
#include "replay/Story.h"
#include "replay/StorySheet.h"

#include "host/dg/Matrix.h"
#include "tests/tools/PictureFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace replay {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double RadiansPerDegree = std::numbers::pi / 180;

viewer::ViewSnapshot MakeView(bool orthographic) {
    return pictures::MakeView(pictures::At(0, 0, 20), orthographic);
}

// Plays the part of the viewer and the component.
class Script {
public:
    explicit Script(viewer::ViewSnapshot first = MakeView(true), const viewer::ViewSpec& description = {})
        : view(std::move(first)), m_story(description, view) {
        Tick();
    }

    viewer::ViewSnapshot view;  // what the next event leaves behind
    bool navigate = true;

    Script& Tick(int milliseconds = 10, std::vector<viewer::Call> calls = {}) {
        m_now += milliseconds;
        return Observe(TimerEvent{m_now, milliseconds}, touch::GestureNone, std::move(calls));
    }
    // Fingers 1 to n with the same flags, on a row; a tick comes before, unless it takes no time.
    Script& Frame(int fingers, std::int32_t flags, touch::GestureType gesture, std::vector<viewer::Call> calls = {},
                  int milliseconds = 10) {
        if (milliseconds > 0) {
            Tick(milliseconds);
        }
        TouchEvent event;
        event.frame.count = fingers;
        m_x += flags == viewer::TouchMove ? 5 : 0;
        for (int i = 0; i < fingers; ++i) {
            event.frame.records.at(static_cast<std::size_t>(i)) = {i + 1, m_x + 100 * i, 300,
                                                                   static_cast<std::int32_t>(m_now), flags};
        }
        return Observe(event, gesture, std::move(calls));
    }
    // What the component makes of that many fingers when nothing else is said.
    static touch::GestureType Usual(int fingers) {
        return fingers == 1 ? touch::GestureSpin : touch::GesturePanZoomRotate;
    }
    Script& Down(int fingers) { return Frame(fingers, viewer::TouchDown, Usual(fingers)); }
    Script& Move(int fingers) { return Frame(fingers, viewer::TouchMove, Usual(fingers)); }
    Script& Up(int fingers, std::vector<viewer::Call> calls = {}) {
        return Frame(fingers, viewer::TouchUp, Usual(fingers), std::move(calls));
    }
    Script& Host(const Event& event, std::optional<bool> swallowed = std::nullopt) {
        m_handled = swallowed;
        return Observe(event, touch::GestureNone, {});
    }

    // Carries the camera about a world axis through the origin. A camera that goes right makes the model turn left.
    Script& Orbit(const dg::DVec3& axis, double degrees) {
        view.camera.SetLocation(view.camera.GetLocation() * dg::DMat44::Rotation(axis, degrees * RadiansPerDegree));
        return *this;
    }
    Script& MoveEye(const dg::DVec3& way) {
        dg::Location location = view.camera.GetLocation();
        location.SetPos(location.GetPos() + way);
        view.camera.SetLocation(location);
        return *this;
    }

    Story& Finish() {
        m_story.Finish();
        return m_story;
    }
    std::vector<std::string> Lines() {
        std::vector<std::string> lines;
        for (const StoryItem& item : Finish().GetItems()) {
            lines.push_back(item.who + " | " + item.what + " | " + item.text);
        }
        return lines;
    }

private:
    Script& Observe(const Event& event, touch::GestureType gesture, std::vector<viewer::Call> calls) {
        const auto state = gesture == touch::GestureNone ? touch::GestureIdle : touch::GestureRecognized;
        m_story.Observe({++m_number, m_handled, gesture, state, navigate, std::move(calls), event}, view);
        return *this;
    }

    Story m_story;
    std::int64_t m_now = 990;
    std::int32_t m_x = 200;
    std::size_t m_number = 0;
    std::optional<bool> m_handled;
};

TEST(Story, TellsTurnsAsTheyAreSeenOnTheScreen) {
    struct Row {
        const char* name;
        dg::DVec3 axis;
        double step;
        int steps;
        int stepsBack;
        const char* text;
    };
    const Row rows[] = {
        {"the eye goes down", dg::DVec3::X, 10, 3, 0, "turned 30 degrees up"},
        {"aslant", {-1, -1, 0}, 10, 1, 0, "turned 10 degrees to the right and down"},
        {"there and back", dg::DVec3::Y, -30, 2, 2,
         "turned 120 degrees along the way, ends 0 degrees from where it began"},
        {"more than half a turn", dg::DVec3::Y, -30, 10, 0,
         "turned 300 degrees along the way, mostly to the right, ends 60 degrees from where it began"},
        {"half a turn at once", dg::DVec3::Z, 180, 1, 0, "turned 180 degrees"},
        {"next to nothing", dg::DVec3::Y, 0.01, 2, 0, "did not move the view"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Script script;
        script.Down(1);
        for (int i = 0; i < row.steps + row.stepsBack; ++i) {
            script.Orbit(row.axis, i < row.steps ? row.step : -row.step).Move(1);
        }
        script.Up(1);
        EXPECT_THAT(script.Lines(), ElementsAre(HasSubstr("1 finger | Spin | " + std::string(row.text))));
    }
}

TEST(Story, TellsTurnsOfTheEyeTheOtherWayRound) {
    viewer::ViewSpec explore;
    explore.navMethod = "explore";
    const std::pair<dg::DVec3, const char*> turns[] = {{dg::DVec3::Y, "looked 12 degrees to the left"},
                                                       {dg::DVec3::X, "looked 12 degrees up"},
                                                       {dg::DVec3::Z, "turned 12 degrees clockwise"}};
    for (const auto& [axis, text] : turns) {
        Script look(MakeView(false), explore);
        const dg::DPoint3D eye = look.view.camera.GetLocation().GetPos();
        look.Down(1).Orbit(axis, 12);
        look.MoveEye(eye - look.view.camera.GetLocation().GetPos());
        look.Move(1).Up(1);
        EXPECT_THAT(look.Lines(), ElementsAre("1 finger | Look around | " + std::string(text)));
    }
}

TEST(Story, DividesATouchWhereFingersJoinAndLeave) {
    struct Row {
        int landingMs;       // from the first finger to the second
        double landingTurn;  // of the view meanwhile, degrees
        std::vector<std::string> lines;
    };
    const std::string spin = "1 finger | Spin | ";
    const std::string pan = "2 fingers | Pan, zoom, twist | moved 2 right";
    const Row rows[] = {
        {40, 0, {pan}},  // a hand that lands one finger after the other
        {40, -5, {spin + "turned 5 degrees to the right", pan}},
        {200, 0, {spin + "did not move the view", pan}},
    };
    for (const Row& row : rows) {
        Script script;
        script.Down(1).Orbit(dg::DVec3::Y, row.landingTurn);
        script.Frame(1, viewer::TouchMove, touch::GestureSpin, {}, row.landingMs);
        const dg::FVec3 u = script.view.camera.GetLocation().GetU();
        script.Down(2).MoveEye(dg::DVec3(u) * -2).Move(2);
        script.Move(1).Up(1);  // the other finger stays 20 ms
        EXPECT_EQ(script.Lines(), row.lines);
    }
}

TEST(Story, SilenceEndsATouchWhoseLiftNeverCame) {
    Script silent;
    silent.Down(2).Tick(501).Down(2);
    EXPECT_EQ(silent.Lines().size(), 2U);
}

TEST(Story, FollowsASpinAfterItsRelease) {
    dg::Location end = MakeView(true).camera.GetLocation();
    end = end * dg::DMat44::Rotation(dg::DVec3::Y, -20 * RadiansPerDegree);
    const viewer::Call queued =
        viewer::AddTransitionCall{MakeView(true).camera.GetLocation(), end, {}, {0, 100, 15, 0}, false};
    const viewer::Call stop = viewer::PlainCall{"StopTransition"};
    struct Row {
        const char* name;
        int playedSteps;  // of two
        bool stopped;     // by another touch
        const char* text;
    };
    const Row rows[] = {
        {"stopped half way", 1, true, "turned 10 degrees to the right, of 20 degrees"},
        {"stopped at once", 0, true, "20 degrees, stopped before it moved"},
        {"never played", 0, false, "20 degrees, not played by the host"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Script script;
        script.Down(1).Up(1, {stop, queued}).Tick();
        for (int i = 0; i < row.playedSteps; ++i) {
            script.Orbit(dg::DVec3::Y, -10).Tick();
        }
        if (row.stopped) {
            script.Frame(1, viewer::TouchDown, touch::GestureSpin, {stop}).Up(1);
        }
        script.Tick(1200).Tick();
        EXPECT_THAT(script.Lines(), ::testing::Contains("after release | Coasting | " + std::string(row.text)));
    }
}

TEST(Story, CountsMouseMessagesBetweenTouches) {
    const MouseEvent move{"MsgMouseMove", 1, 2};
    Script script;
    script.Host(move, true).Host(move, true).Host(MouseEvent{"MsgClickLeft", 1, 2}, false).Tick(600).Host(move, false);
    EXPECT_THAT(script.Lines(),
                ElementsAre("mouse |  | swallowed 2 messages (MouseMove 2), passed on 1 message (ClickLeft)",
                            "mouse |  | passed on 1 message (MouseMove)"));
}

TEST(Story, DoesNotTakeTheHostsCameraForTheFingersDoing) {
    Script script;
    script.Down(2).MoveEye({100, 0, 0});
    viewer::ViewChange change;
    change.camera = viewer::CameraSpec();
    script.Host(ViewerEvent{change}).MoveEye({-1, 0, 0}).Move(2).Up(2);
    EXPECT_THAT(script.Lines(),
                ElementsAre("host |  | set the camera", "2 fingers | Pan, zoom, twist | moved 1 right"));
}

// A session of many spins, each with steps of one degree.
Sheet SheetOf(int gestures, int steps) {
    Script script;
    for (int i = 0; i < gestures; ++i) {
        script.Down(1);
        for (int step = 0; step < steps; ++step) {
            script.Orbit(dg::DVec3::Y, -1).Move(1);
        }
        script.Up(1);
    }
    return MakeSheet(script.Finish(), "many", nullptr);
}

TEST(StorySheet, ShowsAFewMomentsOfEachGesture) {
    struct Row {
        const char* name;
        int gestures;
        int steps;
        std::size_t panels;
        const char* note;  // in the subtitle
    };
    for (const Row& row :
         {Row{"nothing at all", 0, 0, 2, ""}, Row{"one long gesture", 1, 200, 2 + MostPanelsOfGesture, ""},
          Row{"a gesture that did nothing", 1, 0, 3, ""},
          Row{"more than there are panels for", 23, 5, MostPanels, "; the first 22 of 23 gestures"}}) {
        SCOPED_TRACE(row.name);
        const Sheet sheet = SheetOf(row.gestures, row.steps);
        EXPECT_EQ(sheet.panels.size(), row.panels);
        EXPECT_THAT(sheet.subtitle, HasSubstr(row.note));
        EXPECT_EQ(sheet.panels.front().heading, "Start");
        EXPECT_EQ(sheet.panels.back().heading, "End");
    }
}

TEST(StorySheet, StepsByWhatIsDoneAndEndsWithTheWhole) {
    const Sheet sheet = SheetOf(1, 70);
    // The first view, the gesture's eight moments about ten degrees apart, the last view.
    ASSERT_EQ(sheet.panels.size(), 10U);
    for (std::size_t i = 1; i < 10; ++i) {
        const double turn =
            TurnDegrees(sheet.panels[0].view.camera.GetLocation(), sheet.panels[i].view.camera.GetLocation());
        EXPECT_NEAR(turn, std::min(10 * (static_cast<double>(i) - 1), 70.0), i < 9 ? 5 : 0.01);
    }
    EXPECT_EQ(sheet.panels[8].caption, "turned 70 degrees to the right");
}

TEST(StorySheet, DrawsTheWayOfTheFingersUpToTheMoment) {
    const Sheet sheet = SheetOf(1, 4);
    const auto& last = sheet.panels[sheet.panels.size() - 2].trails;
    ASSERT_TRUE(sheet.panels[1].trails.size() == 1 && last.size() == 1);
    EXPECT_TRUE(sheet.panels[1].trails[0].down);
    EXPECT_THAT(sheet.panels[1].trails[0].points, ElementsAre(dg::DPoint2D(200, 300)));
    EXPECT_FALSE(last[0].down);
    EXPECT_EQ(last[0].points.size(), 5U);
    EXPECT_TRUE(sheet.panels.back().trails.empty());
}

}  // namespace
}  // namespace replay
