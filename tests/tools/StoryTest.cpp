// Stories and sheets of replays that are made up here: no component takes part.
#include "replay/Story.h"
#include "replay/StorySheet.h"

#include "host/dg/Matrix.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace replay {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double RadiansPerDegree = std::numbers::pi / 180;

viewer::ViewSnapshot MakeView(bool orthographic) {
    viewer::ViewSnapshot view;
    view.kind = "shapeview";
    view.width = 1280;
    view.height = 800;
    view.camera.SetProjection(-8, 8, -5, 5, 1, orthographic);
    view.camera.SetLocation(dg::Location({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 20}));
    return view;
}

viewer::ViewSnapshot MakePage() {
    viewer::ViewSnapshot view;
    view.kind = "drawingview";
    view.width = 1280;
    view.height = 800;
    view.orthoWidth = 16;
    return view;
}

// Plays the part of the viewer and the component.
class Script {
public:
    explicit Script(viewer::ViewSnapshot first = MakeView(true), const std::string& navMethod = "standard")
        : view(std::move(first)), m_story(SpecWith(navMethod), view) {
        Tick();
    }

    viewer::ViewSnapshot view;  // what the next event leaves behind
    bool navigate = true;

    Script& Tick(int milliseconds = 10, std::vector<viewer::Call> calls = {}) {
        m_now += milliseconds;
        return Observe(TimerEvent{m_now, milliseconds}, touch::GestureNone, touch::GestureIdle, std::move(calls));
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
        return Observe(event, gesture, touch::GestureRecognized, std::move(calls));
    }
    Script& Down(int fingers, touch::GestureType gesture) { return Frame(fingers, viewer::TouchDown, gesture); }
    Script& Move(int fingers, touch::GestureType gesture) { return Frame(fingers, viewer::TouchMove, gesture); }
    Script& Up(int fingers, touch::GestureType gesture, std::vector<viewer::Call> calls = {}) {
        return Frame(fingers, viewer::TouchUp, gesture, std::move(calls));
    }
    Script& Mouse(const char* type, bool swallowed) {
        m_handled = swallowed;
        return Observe(MouseEvent{type, 1, 2}, touch::GestureNone, touch::GestureIdle, {});
    }
    Script& Host(const Event& event) { return Observe(event, touch::GestureNone, touch::GestureIdle, {}); }

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
    static viewer::ViewSpec SpecWith(const std::string& navMethod) {
        viewer::ViewSpec spec;
        spec.navMethod = navMethod;
        return spec;
    }
    Script& Observe(const Event& event, touch::GestureType gesture, touch::GestureState state,
                    std::vector<viewer::Call> calls) {
        m_story.Observe({++m_number, m_handled, gesture, state, navigate, calls, event}, view);
        return *this;
    }

    Story m_story;
    std::int64_t m_now = 990;
    std::int32_t m_x = 200;
    std::size_t m_number = 0;
    std::optional<bool> m_handled;
};

struct TurnRow {
    const char* name;
    dg::DVec3 axis;
    double step;
    int steps;
    int stepsBack;
    const char* text;
};

TEST(Story, TellsTurnsAsTheyAreSeenOnTheScreen) {
    const TurnRow rows[] = {
        {"the eye goes left", dg::DVec3::Y, -37, 2, 0, "turned 74 degrees to the right"},
        {"the eye goes right", dg::DVec3::Y, 37, 2, 0, "turned 74 degrees to the left"},
        {"the eye goes up", dg::DVec3::X, -10, 3, 0, "turned 30 degrees down"},
        {"the eye goes down", dg::DVec3::X, 10, 3, 0, "turned 30 degrees up"},
        {"the eye rolls clockwise", dg::DVec3::Z, -20, 1, 0, "turned 20 degrees counter-clockwise"},
        {"aslant", {-1, -1, 0}, 10, 1, 0, "turned 10 degrees to the right and down"},
        {"there and back", dg::DVec3::Y, -30, 2, 2,
         "turned 120 degrees along the way, ends 0 degrees from where it began"},
        {"more than half a turn", dg::DVec3::Y, -30, 10, 0,
         "turned 300 degrees along the way, mostly to the right, ends 60 degrees from where it began"},
        {"half a turn at once", dg::DVec3::Z, 180, 1, 0, "turned 180 degrees"},
        {"next to nothing", dg::DVec3::Y, 0.01, 2, 0, "did not move the view"},
    };
    for (const TurnRow& row : rows) {
        SCOPED_TRACE(row.name);
        Script script;
        script.Down(1, touch::GestureSpin);
        for (int i = 0; i < row.steps + row.stepsBack; ++i) {
            script.Orbit(row.axis, i < row.steps ? row.step : -row.step).Move(1, touch::GestureSpin);
        }
        script.Up(1, touch::GestureSpin);
        EXPECT_THAT(script.Lines(), ElementsAre(HasSubstr("1 finger | Spin | " + std::string(row.text))));
    }
}

TEST(Story, TellsPanZoomAndTwistTogether) {
    Script script;
    script.Down(2, touch::GesturePanZoomRotate).MoveEye({-2, 1, 0}).Move(2, touch::GesturePanZoomRotate);
    script.view.camera.SetProjection(-4, 4, -2.5, 2.5, 1, true);
    script.Move(2, touch::GesturePanZoomRotate).Up(2, touch::GesturePanZoomRotate);
    EXPECT_THAT(script.Lines(), ElementsAre("2 fingers | Pan, zoom, twist | moved 2 right and 1 down, "
                                            "zoomed in: width from 16 to 8"));
}

TEST(Story, TellsPagesByTheirPosition) {
    Script script(MakePage());
    script.Down(2, touch::Gesture2DZoomPan);
    script.view.placement.SetPos({0, 3, 0});
    script.view.orthoWidth = 32;
    script.Move(2, touch::Gesture2DZoomPan).Up(2, touch::Gesture2DZoomPan);
    EXPECT_THAT(script.Lines(),
                ElementsAre("2 fingers | 2D zoom and pan | moved 3 down, zoomed out: width from 16 to 32"));
}

TEST(Story, TellsPerspectiveViewsByTheirEye) {
    Script flight(MakeView(false), "explore");
    flight.Down(2, touch::GesturePanZoomRotate).MoveEye({0, 0, -5}).Move(2, touch::GesturePanZoomRotate);
    flight.Up(2, touch::GesturePanZoomRotate);
    EXPECT_THAT(flight.Lines(), ElementsAre("2 fingers | Fly | the eye moved 5 forward"));

    struct Row {
        const char* name;
        dg::DVec3 axis;  // about which the eye turns, in place
        const char* text;
    };
    const Row rows[] = {{"about the upward axis", dg::DVec3::Y, "looked 12 degrees to the left"},
                        {"about the axis to the right", dg::DVec3::X, "looked 12 degrees up"},
                        {"about the axis towards the user", dg::DVec3::Z, "turned 12 degrees clockwise"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Script look(MakeView(false), "explore");
        look.Down(1, touch::GestureSpin);
        const dg::DPoint3D eye = look.view.camera.GetLocation().GetPos();
        look.Orbit(row.axis, 12);
        look.MoveEye(eye - look.view.camera.GetLocation().GetPos());
        look.Move(1, touch::GestureSpin).Up(1, touch::GestureSpin);
        EXPECT_THAT(look.Lines(), ElementsAre("1 finger | Look around | " + std::string(row.text)));
    }
}

TEST(Story, DividesATouchWhereFingersJoinAndLeave) {
    struct Row {
        const char* name;
        int landingMs;       // from the first finger to the second
        double landingTurn;  // of the view meanwhile, degrees
        std::vector<std::string> lines;
    };
    const Row rows[] = {
        {"a hand that lands one finger after the other", 40, 0, {"2 fingers | Pan, zoom, twist | moved 2 right"}},
        {"a first finger that did something",
         40,
         -5,
         {"1 finger | Spin | turned 5 degrees to the right", "2 fingers | Pan, zoom, twist | moved 2 right"}},
        {"a first finger that waited",
         200,
         0,
         {"1 finger | Spin | did not move the view", "2 fingers | Pan, zoom, twist | moved 2 right"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Script script;
        script.Down(1, touch::GestureSpin).Orbit(dg::DVec3::Y, row.landingTurn);
        script.Frame(1, viewer::TouchMove, touch::GestureSpin, {}, row.landingMs);
        const dg::FVec3 u = script.view.camera.GetLocation().GetU();
        script.Down(2, touch::GesturePanZoomRotate);
        script.MoveEye(dg::DVec3(u) * -2).Move(2, touch::GesturePanZoomRotate);
        script.Move(1, touch::GestureSpin).Up(1, touch::GestureSpin);  // the other finger stays 20 ms
        EXPECT_EQ(script.Lines(), row.lines);
    }
}

TEST(Story, KeepsTouchesApart) {
    Script taps;
    for (int i = 0; i < 3; ++i) {
        taps.Down(1, touch::GestureSpin);
        taps.view.selectedParts = {"cover"};
        taps.Up(1, touch::GestureTap, {viewer::SendMessageCall{"MsgClickLeft", 200, 300, false}});
    }
    const std::string tap = "1 finger | Tap | left click at (200, 300), picked cover";
    EXPECT_THAT(taps.Lines(), ElementsAre(tap, tap, tap));

    // Fingers whose lift never came: silence ends their touch.
    Script silent;
    silent.Down(2, touch::GesturePanZoomRotate).Tick(501).Down(2, touch::GesturePanZoomRotate);
    EXPECT_EQ(silent.Lines().size(), 2U);
}

TEST(Story, NamesWhatHoldsAndTwoFingerTapsTurnOutToBe) {
    Script hold;
    hold.Down(1, touch::GestureSpin);
    hold.view.contextMenu = "";
    hold.Tick(1005, {viewer::SendMessageCall{"MsgMouseRightDown", 5, 6, {}},
                     viewer::SendMessageCall{"MsgMouseRightUp", 5, 6, {}}});
    EXPECT_THAT(hold.Lines(),
                ElementsAre("1 finger | Press and hold | right click at (5, 6), context actions of the view"));

    Script tap;
    tap.Down(2, touch::GesturePanZoomRotate).Frame(2, viewer::TouchMove, touch::GesturePanZoomRotate, {}, 100);
    tap.navigate = false;
    tap.view.statusText = "Touch: select";
    tap.Frame(1, viewer::TouchUp, touch::GestureSpin, {}, 0);
    EXPECT_THAT(tap.Lines(), ElementsAre("2 fingers | Two-finger tap | switched to select mode",
                                         "status bar |  | \"Touch: select\""));
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
        {"played to its end", 2, false, "turned 20 degrees to the right"},
        {"stopped half way", 1, true, "turned 10 degrees to the right, of 20 degrees"},
        {"stopped at once", 0, true, "20 degrees, stopped before it moved"},
        {"never played", 0, false, "20 degrees, not played by the host"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Script script;
        script.Down(1, touch::GestureSpin).Up(1, touch::GestureSpin, {stop, queued}).Tick();
        for (int i = 0; i < row.playedSteps; ++i) {
            script.Orbit(dg::DVec3::Y, -10).Tick();
        }
        if (row.stopped) {
            script.Frame(1, viewer::TouchDown, touch::GestureSpin, {stop}).Up(1, touch::GestureSpin);
        }
        script.Tick(1200).Tick();
        EXPECT_THAT(script.Lines(), ::testing::Contains("after release | Coasting | " + std::string(row.text)));
    }
}

TEST(Story, CountsMouseMessagesBetweenTouches) {
    Script script;
    script.Mouse("MsgMouseMove", true).Mouse("MsgMouseMove", true).Mouse("MsgClickLeft", false);
    script.Tick(600).Mouse("MsgMouseMove", false);
    EXPECT_THAT(script.Lines(),
                ElementsAre("mouse |  | swallowed 2 messages (MouseMove 2), passed on 1 message (ClickLeft)",
                            "mouse |  | passed on 1 message (MouseMove)"));
}

TEST(Story, DoesNotTakeTheHostsCameraForTheFingersDoing) {
    Script script;
    script.Down(2, touch::GesturePanZoomRotate).MoveEye({100, 0, 0});
    viewer::ViewChange change;
    change.camera = viewer::CameraSpec();
    script.Host(ViewerEvent{change}).MoveEye({-1, 0, 0}).Move(2, touch::GesturePanZoomRotate);
    script.Up(2, touch::GesturePanZoomRotate);
    EXPECT_THAT(script.Lines(),
                ElementsAre("host |  | set the camera", "2 fingers | Pan, zoom, twist | moved 1 right"));
}

TEST(Story, WritesOneLineForEachItem) {
    Script script;
    script.Down(1, touch::GestureSpin).Orbit(dg::DVec3::Y, -1).Move(1, touch::GestureSpin).Up(1, touch::GestureSpin);
    std::ostringstream text;
    WriteStory(script.Finish(), "a.evemu", text);
    EXPECT_EQ(text.str(), "a.evemu: 7 events in 0.03 s, shapeview 1280 x 800, width 16\n"
                          "  0.01 s - 0.03 s   1 finger       Spin: turned 1 degree to the right\n");
}

// A session of many spins, each with steps of one degree.
Sheet SheetOf(int gestures, int steps) {
    Script script;
    for (int i = 0; i < gestures; ++i) {
        script.Down(1, touch::GestureSpin);
        for (int step = 0; step < steps; ++step) {
            script.Orbit(dg::DVec3::Y, -1).Move(1, touch::GestureSpin);
        }
        script.Up(1, touch::GestureSpin);
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
    const Row rows[] = {
        {"nothing at all", 0, 0, 2, "width 16"},
        {"one long gesture", 1, 1000, 2 + MostPanelsOfGesture, "width 16"},
        {"a gesture of one step", 1, 1, 4, "width 16"},
        {"a gesture that did nothing", 1, 0, 3, "width 16"},
        {"as many as there are panels for", 22, 5, MostPanels, "width 16"},
        {"more than there are panels for", 23, 5, MostPanels, "; the first 22 of 23 gestures are shown"},
        {"far more", 100, 5, MostPanels, "; the first 22 of 100 gestures are shown"},
    };
    for (const Row& row : rows) {
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
    std::vector<double> turns;
    for (const Panel& panel : sheet.panels) {
        turns.push_back(TurnDegrees(sheet.panels.front().view.camera.GetLocation(), panel.view.camera.GetLocation()));
    }
    // The first view, the gesture's eight moments about ten degrees apart, the last view.
    ASSERT_EQ(turns.size(), 10U);
    for (std::size_t i = 1; i + 1 < turns.size(); ++i) {
        EXPECT_NEAR(turns[i], 10 * (static_cast<double>(i) - 1), 5);
    }
    EXPECT_EQ(sheet.panels[8].caption, "turned 70 degrees to the right");
    EXPECT_NEAR(turns[9], 70, 0.01);
}

TEST(StorySheet, DrawsTheWayOfTheFingersUpToTheMoment) {
    const Sheet sheet = SheetOf(1, 4);
    const Panel& last = sheet.panels[sheet.panels.size() - 2];
    ASSERT_EQ(last.trails.size(), 1U);
    EXPECT_FALSE(last.trails[0].down);
    ASSERT_EQ(last.trails[0].points.size(), 5U);
    EXPECT_EQ(last.trails[0].points.front(), dg::DPoint2D(200, 300));
    EXPECT_EQ(last.trails[0].points.back(), dg::DPoint2D(220, 300));
    const Panel& first = sheet.panels[1];
    ASSERT_EQ(first.trails.size(), 1U);
    EXPECT_TRUE(first.trails[0].down);
    EXPECT_EQ(first.trails[0].points.size(), 1U);
    EXPECT_TRUE(sheet.panels.back().trails.empty());
}

}  // namespace
}  // namespace replay
