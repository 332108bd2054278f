// What a component makes of a feeder's frames, in the reference viewer.
#include "tests/input/Screen.h"
#include "viewer/ReferenceViewer.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using input::Feeding;

// What the component sent or queued: "MsgClickLeft", "coast".
class Viewer : public input::FeederSink {
public:
    explicit Viewer(input::Feeding feeding) : feeder(*this, {.feeding = feeding}) {
        viewer::ViewSpec view;
        view.width = 1000;
        view.height = 600;
        view.camera.location.SetPos({0, 0, 20});
        m_viewer.LoadComponent(TOUCHNAV_PLUGIN, view.kind);
        m_viewer.SetView(view);
        feeder.SetGeometry({.width = 1000, .height = 600});
    }
    void TakeFrame(const workflow::TouchFrame& frame) override { m_viewer.Touch(frame); }
    void TakeTick(std::int64_t now, std::int64_t interval) override { m_viewer.Tick(now, interval); }
    void TakeMouse(const du::Symbol& type, std::int32_t x, std::int32_t y) override {
        m_viewer.Mouse(type.GetString(), x, y);
    }

    // A finger that goes so far to the right, and rests, with a report every 8 ms; the last one at the end.
    void Slide(std::int64_t contact, double pixels, double milliseconds, double restMs = 0) {
        feeder.Down(contact, 400, 300, m_time);
        for (double t = 8; t <= milliseconds + restMs; t += 8) {
            feeder.Move(contact, 400 + pixels * std::min(1.0, t / milliseconds), 300, m_time + t);
            feeder.Advance(m_time + t);
        }
        m_time += milliseconds + restMs;
    }
    void Wait(double ms) {
        for (const double end = m_time + ms; m_time < end; m_time += 10) {
            feeder.Advance(m_time);
        }
    }
    [[nodiscard]] double Time() const { return m_time; }

    [[nodiscard]] tests::Texts Results() {
        tests::Texts results;
        for (const viewer::Call& call : m_viewer.GetRecorder().GetCalls()) {
            if (const auto* sent = std::get_if<viewer::SendMessageCall>(&call)) {
                results.push_back(sent->type);
            } else if (std::holds_alternative<viewer::AddTransitionCall>(call)) {
                results.emplace_back("coast");
            }
        }
        return results;
    }

    input::TouchFeeder feeder;

private:
    viewer::ReferenceViewer m_viewer{{}};
    double m_time = 1e9;
};

struct ResultRow {
    const char* name;
    std::function<void(Viewer&)> play;
    tests::Texts results;
    bool alsoReports = true;  // whether every report comes to the same: a lift in motion is known by steps alone
};

const ResultRow ResultRows[] = {
    {"a tap",
     [](Viewer& v) {
         v.Slide(1, 0, 80);
         v.feeder.Up(1, 400, 300, v.Time());
     },
     {"MsgClickLeft"}},
    {"as long as a tap may last",
     [](Viewer& v) {
         v.feeder.Down(1, 9, 9, 0);
         v.feeder.Up(1, 9, 9, 149.9);
     },
     {"MsgClickLeft"}},
    {"longer",
     [](Viewer& v) {
         v.feeder.Down(1, 9, 9, 0);
         v.feeder.Up(1, 9, 9, 150);
     },
     {}},
    {"a cancelled tap",
     [](Viewer& v) {
         v.Slide(1, 0, 80);
         v.feeder.Cancel(1, v.Time());
     },
     {}},
    {"a tap after a cancelled one",
     [](Viewer& v) {
         v.Slide(1, 0, 80);
         v.feeder.CancelAll();
         v.Slide(1, 0, 80);
         v.feeder.Up(1, 400, 300, v.Time());
     },
     {"MsgClickLeft"}},
    {"two quick taps",
     [](Viewer& v) {
         for (int i = 0; i < 2; ++i) {
             v.Slide(1, 0, 48);
             v.feeder.Up(1, 400, 300, v.Time());
             v.Wait(60);
         }
     },
     {"MsgClickLeft", "MsgClickLeft"}},
    {"a flick, lifted a scan later",
     [](Viewer& v) {
         v.Slide(1, 200, 96);
         v.feeder.Up(1, 600, 300, v.Time() + 16);
     },
     {"coast"},
     false},
    {"a finger that stopped",
     [](Viewer& v) {
         v.Slide(1, 200, 96, 32);
         v.feeder.Up(1, 600, 300, v.Time());
     },
     {}},
    {"a cancelled flick",
     [](Viewer& v) {
         v.Slide(1, 200, 96);
         v.feeder.Cancel(1, v.Time());
     },
     {}},
    {"one of two fingers cancelled",
     [](Viewer& v) {
         v.Slide(1, 200, 96);
         v.Slide(2, 0, 16);
         v.feeder.Cancel(1, v.Time());
         v.feeder.Up(2, 400, 300, v.Time() + 8);
     },
     {}},
    {"a hold",
     [](Viewer& v) {
         v.Slide(1, 0, 8);
         v.Wait(1300);
     },
     {"MsgMouseRightDown", "MsgMouseRightUp"}},
    {"a hold that is cancelled before",
     [](Viewer& v) {
         v.Slide(1, 0, 8);
         v.Wait(1080);
         v.feeder.CancelAll();
     },
     {}},
    {"a hold that one more frame would reach",
     [](Viewer& v) {
         v.Slide(1, 0, 1000);
         v.feeder.Cancel(1, v.Time());
     },
     {}},
    {"a hold that would be reached by the lift's own time",
     [](Viewer& v) {
         v.Slide(1, 0, 800);
         v.feeder.CancelAll();
     },
     {}},
};

TEST(FeederComponent, ATouchComesToWhatItIsAndACancelledOneToNothing) {
    for (const ResultRow& row : ResultRows) {
        for (const Feeding feeding : {Feeding::FixedStep, Feeding::EveryReport}) {
            const bool isEveryReport = feeding == Feeding::EveryReport;
            if (isEveryReport && !row.alsoReports) {
                continue;
            }
            Viewer v(feeding);
            row.play(v);
            v.Wait(1000);
            EXPECT_EQ(v.Results(), row.results) << row.name << (isEveryReport ? ", every report" : "");
        }
    }
}

}  // namespace
