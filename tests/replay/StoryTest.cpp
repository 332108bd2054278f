// Stories and sheets of replays that are made up here: no component takes part.
#include "replay/story/Story.h"
#include "replay/picture/StorySheet.h"

#include "host/dg/Matrix.h"
#include "tests/replay/PictureFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
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
    explicit Script(viewer::ViewSnapshot first = MakeView(true), const viewer::ViewSpec& description = {},
                    const TimeWindow& window = {})
        : view(std::move(first)), m_story(description, view, window) {
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
        m_x += flags == workflow::TouchMove ? 5 : 0;
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
    Script& Down(int fingers) { return Frame(fingers, workflow::TouchDown, Usual(fingers)); }
    Script& Move(int fingers) { return Frame(fingers, workflow::TouchMove, Usual(fingers)); }
    Script& Up(int fingers, std::vector<viewer::Call> calls = {}) {
        return Frame(fingers, workflow::TouchUp, Usual(fingers), std::move(calls));
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

    // Zooms and turns the picture about a view pixel, and shifts it to the right by pixels of a size in units.
    Script& Manipulate(const dg::DPoint2D& pixel, double zoom, double degrees, double shift, double unit) {
        const double x = (pixel.x - 80) * unit;
        const double y = (pixel.y - 50) * unit;
        const double angle = -degrees * RadiansPerDegree;
        // What was seen at (x, y) is seen there again.
        const dg::DVec3 turned{zoom * (x * std::cos(angle) - y * std::sin(angle)),
                               zoom * (x * std::sin(angle) + y * std::cos(angle)), 0};
        Orbit(dg::DVec3::Z, -degrees);
        if (zoom != 1) {
            view.camera.SetProjection(-8 * zoom, 8 * zoom, -5 * zoom, 5 * zoom, 1, true);
        }
        const dg::FVec3 u = view.camera.GetLocation().GetU();
        return MoveEye(dg::DVec3{x, y, 0} + -turned + dg::DVec3(u) * (-shift * unit));
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
        {"there and back", dg::DVec3::Y, -30, 2, 2, "turned 120 degrees along the way, ends where it began"},
        {"more than half a turn", dg::DVec3::Y, -30, 10, 0,
         "turned 300 degrees along the way, mostly to the right, ends 60 degrees from where it began"},
        {"half a turn at once", dg::DVec3::Z, 180, 1, 0, "turned 180 degrees"},
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

// The middle of two fingers lands on (250, 300) px.
TEST(Story, NamesWhatSeveralFingersDid) {
    struct Row {
        const char* name;
        double shift;    // to the right, pixels
        double zoom;     // of the visible width, about the fingers
        double degrees;  // counter-clockwise, about the fingers
        bool back;       // half of the way, and back
        const char* line;
    };
    const Row rows[] = {
        {"less than half a pixel", 0.4, 1, 0, false, " | no gesture"},
        {"each less than half a pixel", 0.4, 1.005, 0.3, false, " | no gesture"},
        {"a pixel", 1, 1, 0, false, "Pan | moved 1 px right"},
        {"zoom about the fingers", 0, 0.5, 0, false, "Zoom | zoomed in 2 times (width 16 to 8 units)"},
        {"zoom out", 0, 1.25, 0, false, "Zoom | zoomed out 1.25 times (width 16 to 20 units)"},
        {"twist about the fingers", 0, 1, 30, false, "Twist | turned 30 degrees counter-clockwise"},
        {"a pixel of pan beside a twist", 1, 1, 30, false, "Twist | turned 30 degrees counter-clockwise"},
        {"all", 20, 0.8, -30, false,
         "Pan, zoom and twist | moved 25 px right, zoomed in 1.25 times (width 16 to 12.8 units), turned 30 degrees "
         "clockwise"},
        {"there and back", 20, 1, 0, true, "Pan | moved 40 px there and back"},
    };
    for (const bool orthographic : {true, false}) {
        for (const Row& row : rows) {
            if (!orthographic && row.zoom != 1) {
                continue;  // a perspective view zooms by travelling
            }
            SCOPED_TRACE(std::string(row.name) + (orthographic ? "" : ", perspective"));
            Script script(MakeView(orthographic));
            const dg::Camera3D before = script.view.camera;
            script.Down(2).Manipulate({250, 300}, row.zoom, row.degrees, row.shift, orthographic ? 0.1 : 0.2).Move(2);
            if (row.back) {
                script.view.camera = before;
                script.Move(2);
            }
            script.Up(2);
            EXPECT_THAT(script.Lines(), ElementsAre("2 fingers | " + std::string(row.line)));
        }
    }
}

TEST(Story, DividesATouchWhereFingersJoinAndLeave) {
    struct Row {
        int landingMs;       // from the first finger to the second
        double landingTurn;  // of the view meanwhile, degrees
        std::vector<std::string> lines;
    };
    const std::string spin = "1 finger | Spin | ";
    const std::string pan = "2 fingers | Pan | moved 20 px right";
    const Row rows[] = {
        {40, 0, {pan}},  // a hand that lands one finger after the other
        {40, -5, {spin + "turned 5 degrees to the right", pan}},
        {200, 0, {"1 finger |  | no gesture", pan}},
    };
    for (const Row& row : rows) {
        Script script;
        script.Down(1).Orbit(dg::DVec3::Y, row.landingTurn);
        script.Frame(1, workflow::TouchMove, touch::GestureSpin, {}, row.landingMs);
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
            script.Frame(1, workflow::TouchDown, touch::GestureSpin, {stop}).Up(1);
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
    EXPECT_THAT(script.Lines(), ElementsAre("host |  | set the camera", "2 fingers | Pan | moved 10 px right"));
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
          Row{"a gesture that turned by five degrees", 1, 5, 4, ""}, Row{"a gesture that did nothing", 1, 0, 3, ""},
          Row{"more than there are panels for", 23, 5, MostPanels,
              "; of 23 gestures the 22 that did most are shown"}}) {
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
    // The first view, the gesture's six moments about fourteen degrees apart, the last view.
    ASSERT_EQ(sheet.panels.size(), 8U);
    for (std::size_t i = 1; i < 8; ++i) {
        const double turn =
            TurnDegrees(sheet.panels[0].view.camera.GetLocation(), sheet.panels[i].view.camera.GetLocation());
        EXPECT_NEAR(turn, std::min(14 * (static_cast<double>(i) - 1), 70.0), i < 6 ? 5 : 0.01);
    }
    EXPECT_EQ(sheet.panels[6].caption, "turned 70 degrees to the right");
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

TEST(StorySheet, ACardStandsAtTheMomentOfItsEffect) {
    const viewer::Call rightClick = viewer::SendMessageCall{"MsgMouseRightUp", 3, 4, false};
    const auto opensMenu = [](Script& script, const std::optional<std::string>& part) {
        script.view.contextMenu = part;
    };
    const auto switches = [](Script& script) { script.navigate = false; };
    const auto showsStatus = [](Script& script) { script.view.statusText = "Touch: select"; };

    Script hold;
    hold.Down(1).Tick(400);
    opensMenu(hold, "cover");
    hold.Tick(10, {rightClick}).Move(1).Up(1);
    Script nowhere;
    nowhere.Down(1).Tick(10, {rightClick}).Up(1);
    Script threeFingers;
    threeFingers.Down(3).Tick(400);
    switches(threeFingers);
    threeFingers.Tick();
    showsStatus(threeFingers);
    threeFingers.Move(3).Tick(400).Up(3);
    Script tap;
    tap.Down(2).Tick();
    switches(tap);
    tap.Frame(2, workflow::TouchUp, touch::GesturePanZoomRotate, {}, 0);
    showsStatus(tap);
    tap.Tick();

    struct Row {
        Script& script;
        const char* heading;
        const char* caption;
        const char* time;
        const char* status;
        bool fingerIsDown;
    };
    for (const Row& row :
         {Row{hold, "Press and hold", "right click at (3, 4) px, context actions of cover", "0.42 s", "", true},
          Row{nowhere, "Press and hold", "right click at (3, 4) px, no context actions", "0.02 s", "", true},
          Row{threeFingers, "Three-finger hold", "switched to select mode", "0.43 s", "Touch: select", true},
          Row{tap, "Two-finger tap", "switched to select mode", "0.03 s", "Touch: select", false}}) {
        SCOPED_TRACE(row.heading);
        const Sheet sheet = MakeSheet(row.script.Finish(), "", nullptr);
        ASSERT_EQ(sheet.panels.size(), 3U);
        const Panel& panel = sheet.panels[1];
        EXPECT_EQ(panel.heading, row.heading);
        EXPECT_EQ(panel.caption, row.caption);
        EXPECT_EQ(panel.time, row.time);
        EXPECT_EQ(panel.view.statusText, row.status);
        EXPECT_EQ(panel.trails.at(0).down, row.fingerIsDown);
    }
}

// More touches than a sheet or a story keeps pictures of.
TEST(StorySheet, ShowsWhatMatteredOfALongRecording) {
    Script script;
    const auto rests = [&](int fingers, int times) {
        for (int i = 0; i < times; ++i) {
            script.Down(fingers).Tick(100).Up(fingers);
        }
    };
    rests(1, 100);
    script.Down(1).Orbit(dg::DVec3::Y, -30).Move(1).Up(1);
    rests(5, 1);
    rests(1, 100);
    script.Down(2).MoveEye({0, -1, 0}).Move(2).Up(2);
    std::vector<std::string> captions;
    for (const Panel& panel : MakeSheet(script.Finish(), "", nullptr).panels) {
        captions.push_back(panel.heading + ": " + panel.caption);
    }
    EXPECT_LE(std::ranges::count(captions, "1 finger: no gesture"), 2);
    EXPECT_THAT(captions, ::testing::IsSupersetOf({"Spin: turned 30 degrees to the right", "5 fingers: no gesture",
                                                   "Pan: moved 10 px up"}));
}

// A spin of one degree every 20 ms from 0.01 s on, lifted at 0.22 s; another one from 1.23 s on.
TEST(StorySheet, AWindowShowsWhatHappensInIt) {
    struct Row {
        TimeWindow window;
        std::size_t lines;
        double firstTurn;  // degrees, of the first picture and of the last
        double lastTurn;
        const char* caption;  // of the last card but one
    };
    constexpr double endless = std::numeric_limits<double>::infinity();
    const Row rows[] = {
        {{-endless, endless}, 2, 0, 20, "turned 10 degrees to the right"},
        {{0.8, endless}, 1, 10, 20, "turned 10 degrees to the right"},
        {{0, 0.12}, 1, 0, 5, "turned 5 degrees to the right"},
        {{0.12, 1.3}, 2, 5, 13, "turned 3 degrees to the right"},
        {{0.5, 0.6}, 0, 10, 10, ""},
        {{5, 6}, 0, 20, 20, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.window.from);
        Script script(MakeView(true), {}, row.window);
        for (int spin = 0; spin < 2; ++spin) {
            script.Down(1);
            for (int step = 0; step < 10; ++step) {
                script.Tick().Orbit(dg::DVec3::Y, -1).Move(1);
            }
            script.Up(1).Tick(1000);
        }
        const Story& story = script.Finish();
        const Sheet sheet = MakeSheet(story, "", nullptr);
        const auto turnOf = [&](const Panel& panel) {
            return TurnDegrees(MakeView(true).camera.GetLocation(), panel.view.camera.GetLocation());
        };
        EXPECT_EQ(story.GetItems().size(), row.lines);
        EXPECT_NEAR(turnOf(sheet.panels.front()), row.firstTurn, 0.01);
        EXPECT_NEAR(turnOf(sheet.panels.back()), row.lastTurn, 0.01);
        EXPECT_EQ(sheet.panels[sheet.panels.size() - 2].caption, row.caption);
    }
}

}  // namespace
}  // namespace replay
