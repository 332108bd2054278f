// When frames come, and where fingers are in them.
#include "tests/input/Screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

using input::Feeding;
using tests::Infinite;
using tests::NotANumber;
using tests::Screen;
using tests::Texts;
using Columns = std::vector<int>;

struct ColumnsRow {
    const char* name;
    std::function<void(Screen&)> play;
    Columns columns;  // of the frames until the last event's own time
};

void Drag(Screen& s, const std::vector<std::pair<double, double>>& reports) {
    for (const auto& [time, x] : reports) {
        s.feeder.Move(1, x, 9, time);
    }
}

const ColumnsRow ColumnsRows[] = {
    {"reports between steps are interpolated",
     [](Screen& s) {
         Drag(s, {{16, 116}, {32, 132}, {48, 148}});
     },
     {100, 110, 120, 130, 140}},
    {"also when they come one by one",
     [](Screen& s) {
         for (int t = 8; t <= 40; t += 8) {
             s.feeder.Move(1, 100 + t, 9, t);
             s.Wait(1);
         }
     },
     {100, 110, 120, 130, 140}},
    {"a gap of the bridge is a movement",
     [](Screen& s) {
         Drag(s, {{100, 200}});
     },
     {100, 110, 120, 130, 140, 150, 160, 170, 180, 190, 200}},
    {"what is longer was a rest before",
     [](Screen& s) {
         Drag(s, {{120, 200}});
     },
     {100, 100, 100, 110, 120, 130, 140, 150, 160, 170, 180, 190, 200}},
    {"a place that was said again was a rest",
     [](Screen& s) {
         Drag(s, {{30, 100}, {40, 150}});
     },
     {100, 100, 100, 100, 150}},
    {"times that run back a little are now",
     [](Screen& s) {
         Drag(s, {{20, 120}, {10, 160}, {30, 170}});
     },
     {100, 110, 160, 170}},
    {"and a clock that is set back goes on from now",
     [](Screen& s) {
         Drag(s, {{20, 120}, {-5000, 160}, {-4990, 170}});
     },
     {100, 110, 160, 170}},
    {"a lift beyond the slack moves",
     [](Screen& s) { s.feeder.Up(1, 105, 9, 50); },
     {100, 101, 102, 103, 104, 105, 105}},
    {"one within it does not", [](Screen& s) { s.feeder.Up(1, 104, 9, 50); }, {100, 100, 100, 100, 100, 100}},
    {"a lift in motion comes with the next step",
     [](Screen& s) {
         Drag(s, {{20, 120}});
         s.feeder.Up(1, 120, 9, 45);
     },
     {100, 110, 120, 120}},
    {"a later one after a rest",
     [](Screen& s) {
         Drag(s, {{20, 120}});
         s.feeder.Up(1, 120, 9, 45.001);
     },
     {100, 110, 120, 120, 120, 120}},
    {"a pause counts a second", [](Screen& s) { s.feeder.Up(1, 100, 9, 1e7); }, Columns(101, 100)},
};

TEST(FeederClock, FingersAreSampledAtEvenSteps) {
    for (const ColumnsRow& row : ColumnsRows) {
        Screen s;
        s.feeder.Down(1, 100, 9, 0);
        row.play(s);
        s.Wait(100);
        EXPECT_EQ(s.Columns(), row.columns) << row.name;
    }
}

// Another finger's reports drive the clock; one that moves just now is waited for, one that rests is not.
TEST(FeederClock, AFingerThatMovesIsWaitedFor) {
    for (const auto& [latest, frames] : {std::pair{45.0, 3U}, {45.001, 5U}}) {
        Screen s;
        s.feeder.Down(1, 100, 9, 0);
        s.feeder.Down(2, 300, 9, 0);
        s.feeder.Move(1, 120, 9, 20);
        s.feeder.Move(2, 310, 9, latest);
        s.Wait(1);
        EXPECT_EQ(s.frames.size(), frames) << latest;
    }
}

TEST(FeederClock, AQuietTouchGoesOnAfterTheGrace) {
    for (const auto& [quietMs, ticks] : {std::pair{129.9, 1U}, {130.0, 2U}, {330.0, 22U}}) {
        Screen s;
        s.feeder.Down(1, 100, 9, 0);
        s.feeder.Advance(0);
        for (double ms = 0; ms < quietMs; ms += 50) {
            s.feeder.Advance(std::min(quietMs, ms + 50));
        }
        EXPECT_EQ(s.ticks.size(), ticks) << quietMs;
        EXPECT_EQ(s.frames.size(), ticks) << "a tick rides with every frame";
    }
}

struct LateRow {
    const char* name;
    double firstMs;  // of the reports that come when the clock is at 200 ms; a move of 10 px every 10 ms
    Columns columns;
};

TEST(FeederClock, LateReportsAreNoBigStep) {
    const LateRow rows[] = {
        {"a little late: at the clock", 175, {145}},
        {"later: all that follows moves",
         174.9,
         {101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 120, 130, 140, 150}},
    };
    for (const LateRow& row : rows) {
        Screen s;
        s.feeder.Down(1, 100, 9, 0);
        s.Wait(340);
        ASSERT_EQ(s.ticks.back(), 1200);
        s.frames.clear();
        for (int i = 0; i < 5; ++i) {
            s.feeder.Move(1, 110 + 10 * i, 9, row.firstMs + 10 * i);
        }
        s.Wait(1);
        EXPECT_EQ(s.Columns(), row.columns) << row.name;
    }
}

TEST(FeederClock, AFingerWhoseTimesAreAlwaysBehindMovesTheOthersByASecondAltogether) {
    Screen s;
    s.feeder.Down(1, 100, 9, 0);
    s.feeder.Down(2, 300, 9, 0);
    for (int t = 300; t < 2300; t += 10) {
        s.feeder.Move(1, 100 + t % 20, 9, t);
        s.Wait(5);
        s.feeder.Move(2, 300 + t % 20, 9, t - 200);
        s.Wait(5);
    }
    EXPECT_GT(s.ticks.back() - s.ticks.front(), 3000);
    EXPECT_LT(s.ticks.back() - s.ticks.front(), 3300);
}

// The program stood still, the finger did not: its reports come at once, after an Advance that had none.
TEST(FeederClock, AStallIsMadeUpForWithoutABigStep) {
    Columns columns[2];
    for (const bool stalls : {false, true}) {
        Screen s;
        s.feeder.Down(1, 100, 9, 0);
        for (int t = 8; t <= 400; t += 8) {
            if (stalls && t == 80) {
                s.now += 300;
                s.feeder.Advance(s.now);
            }
            s.feeder.Move(1, 100 + t, 9, t);
            if (!stalls || t < 80 || t > 380) {
                s.Wait(8);
            }
        }
        columns[stalls ? 1 : 0] = s.Columns();
    }
    EXPECT_EQ(columns[0], columns[1]);
    EXPECT_EQ(columns[0].size(), 41U);
}

// Without contacts ticks follow the host at once; no Advance brings more than the grace, no pause more than its steps.
TEST(FeederClock, TicksGoOnWithoutContactsAndAPauseIsCutOut) {
    Screen s;
    s.feeder.Advance(5000);
    EXPECT_THAT(s.log, testing::ElementsAre("tick 1000 10"));
    for (const double now : {5025.0, NotANumber, Infinite, 5030.0, 4000.0, 4010.0}) {
        s.feeder.Advance(now);
    }
    EXPECT_EQ(s.ticks.size(), 5U) << "40 ms, in three stretches";
    s.feeder.Advance(1e9);
    EXPECT_EQ(s.ticks.size(), 5U + 12U);
    s.ticks.clear();
    s.feeder.Down(1, 9, 9, 0);
    s.feeder.Move(1, 10, 9, 900);
    s.feeder.Move(1, 11, 9, 1800);
    s.feeder.Move(1, 12, 9, 2700);
    s.feeder.Advance(1e9);
    EXPECT_EQ(s.ticks.size(), static_cast<std::size_t>(input::MaxStepsPerAdvance));
    s.feeder.Advance(1e9);
    EXPECT_EQ(s.ticks.size(), 271U) << "what was left comes with the next one";
}

TEST(FeederClock, EveryReportIsAFrameAtItsOwnTimeAndTicksAreEven) {
    Screen s({.feeding = Feeding::EveryReport});
    s.feeder.Down(1, 100, 9, 0);
    s.feeder.Down(2, 300, 9, 0);
    s.feeder.Move(1, 107, 9, 7);
    s.feeder.Move(1, 112, 9, 12.5);
    s.feeder.Move(2, 300, 9, 14);  // nothing new
    s.feeder.Move(1, 113, 9, 30);
    s.feeder.Up(1, 114, 9, 41);
    s.feeder.Up(2, 300, 9, 41);
    s.Wait(1);
    EXPECT_THAT(s.log,
                testing::ElementsAre("tick 1000 10", "0v100,9 1v300,9 @1000", "0.107,9 1.300,9 @1007", "tick 1010 10",
                                     "0.112,9 1.300,9 @1012", "tick 1020 10", "tick 1030 10", "0.113,9 1.300,9 @1030",
                                     "tick 1040 10", "0.113,9 1.300,9 @1040", "0^114,9 1^300,9 @1041"));
}

// The sink is inside a component that may tell its host anything.
TEST(FeederClock, TheSinkMayCallTheFeeder) {
    class Caller : public input::FeederSink {
    public:
        void TakeFrame(const workflow::TouchFrame& /*frame*/) override {
            ++frames;
            feeder->Down(frames, 50, 50, 0);
            feeder->CancelAll();
            feeder->Advance(1e6);
            if (frames == 5) {
                feeder->ForgetAll();
            }
        }
        void TakeTick(std::int64_t /*now*/, std::int64_t /*interval*/) override { feeder->Advance(2e6); }
        void TakeMouse(const du::Symbol& /*type*/, std::int32_t /*x*/, std::int32_t /*y*/) override {}
        input::TouchFeeder* feeder = nullptr;
        int frames = 0;
    };
    Caller caller;
    input::TouchFeeder feeder(caller);
    caller.feeder = &feeder;
    feeder.Down(1, 9, 9, 0);
    for (int now = 0; now < 200; now += 10) {
        feeder.Advance(now);
    }
    EXPECT_GE(caller.frames, 5);
    EXPECT_EQ(feeder.GetContactCount(), 0U);
}

}  // namespace
