// Which frames contacts become: fingers, their numbers, times and places.
#include "tests/input/Screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

using input::Geometry;
using input::PixelOf;
using input::PlaceOf;
using input::Turn;
using tests::Infinite;
using tests::NotANumber;
using tests::Screen;
using tests::Texts;

struct FramesRow {
    const char* name;
    std::function<void(Screen&)> play;
    Texts landmarks;
};

void LandTen(Screen& s) {
    for (int id = 0; id < 10; ++id) {
        s.feeder.Down(id, 100 + id, 50, 5000);
    }
    s.Wait(200);
    s.frames.clear();
}

const FramesRow FramesRows[] = {
    {"a tap between two steps",
     [](Screen& s) {
         s.feeder.Down(7, 100, 200, 5000.3);
         s.feeder.Up(7, 100, 200, 5149.6);
     },
     {"0v100,200 @1000", "0^100,200 @1149"}},
    {"a tap within a step",
     [](Screen& s) {
         s.feeder.Down(7, 100, 200, 5000);
         s.feeder.Up(7, 100, 200, 5004);
     },
     {"0v100,200 @1000", "0^100,200 @1004"}},
    {"after 100 days of uptime",
     [](Screen& s) {
         s.feeder.Down(7, 100, 200, 8.64e9);
         s.feeder.Up(7, 100, 200, 8.64e9 + 50);
     },
     {"0v100,200 @1000", "0^100,200 @1050"}},
    {"two fingers in one report",
     [](Screen& s) {
         s.feeder.Down(7, 100, 200, 0);
         s.feeder.Down(8, 300, 200, 0);
     },
     {"0v100,200 @1000", "0.100,200 1v300,200 @1000"}},
    {"a landing and a lift in one step",
     [](Screen& s) {
         s.feeder.Down(7, 100, 200, 0);
         s.feeder.Down(8, 300, 200, 72);
         s.feeder.Up(7, 100, 200, 74);
         s.Wait(30);
     },
     {"0v100,200 @1000", "0.100,200 1v300,200 @1072", "0^100,200 1.300,200 @1074"}},
    {"a lost lift",
     [](Screen& s) {
         s.feeder.Down(7, 100, 200, 0);
         s.feeder.Down(7, 300, 200, 90);
     },
     {"0v100,200 @1000", "0^100,200 @1090", "0v300,200 @1090"}},
    {"a lift that the toolkit did not see",
     [](Screen& s) {
         s.feeder.Down(7, 100, 200, 0);
         s.feeder.Lost(7, 90);
     },
     {"0v100,200 @1000", "0^100,200 @1090"}},
    {"what did not land",
     [](Screen& s) {
         s.feeder.Move(7, 1, 1, 0);
         s.feeder.Up(7, 1, 1, 0);
         s.feeder.Cancel(7, 0);
     },
     {}},
    {"no numbers for places",
     [](Screen& s) {
         s.feeder.Down(7, NotANumber, 200, 0);
         s.feeder.Up(7, -Infinite, Infinite, 90);
     },
     {"0v1,200 @1000", "0^1,599 @1090"}},
    {"no numbers for times",
     [](Screen& s) {
         s.feeder.Down(7, 9, 9, NotANumber);
         s.feeder.Up(7, 9, 9, Infinite);
     },
     {"0v9,9 @1000", "0^9,9 @1000"}},
    {"a cancelled touch is too long for a tap",
     [](Screen& s) {
         s.feeder.Down(7, 9, 9, 0);
         s.feeder.Cancel(7, 40);
     },
     {"0v9,9 @1000", "0^9,9 @1300"}},
    {"and no longer than it was otherwise",
     [](Screen& s) {
         s.feeder.Down(7, 9, 9, 0);
         s.Wait(500);
         s.feeder.CancelAll();
     },
     {"0v9,9 @1000", "0^9,9 @1380"}},
    {"a touch after a cancelled one",
     [](Screen& s) {
         s.feeder.Down(7, 9, 9, 0);
         s.feeder.Cancel(7, 0);
         s.feeder.Down(7, 9, 9, 50);
         s.feeder.Up(7, 9, 9, 90);
     },
     {"0v9,9 @1000", "0^9,9 @1300", "0v9,9 @1330", "0^9,9 @1370"}},
    {"a screen that goes",
     [](Screen& s) {
         s.feeder.Down(7, 9, 9, 0);
         s.Wait(50);
         s.feeder.ForgetAll();
         s.Wait(900);
     },
     {"0v9,9 @1000"}},
    {"an eleventh finger, also after one has lifted",
     [](Screen& s) {
         LandTen(s);
         s.feeder.Down(10, 9, 9, 5200);
         s.feeder.Up(0, 100, 50, 5300);
         s.feeder.Move(10, 8, 8, 5400);
         s.feeder.Up(10, 8, 8, 5400);
     },
     {"0^100,50 1.101,50 2.102,50 3.103,50 4.104,50 5.105,50 6.106,50 7.107,50 8.108,50 9.109,50 @1300"}},
    {"more events than there is room for",
     [](Screen& s) {
         s.feeder.Down(7, 9, 9, 0);
         s.Wait(50);
         for (std::size_t i = 0; i <= input::MaxWaitingEvents; ++i) {
             s.feeder.Move(7, 10 + static_cast<double>(i % 2), 9, 60);
         }
     },
     {"0v9,9 @1000", "0^9,9 @1300"}},
};

TEST(FeederFrames, ContactsBecomeFingersThatLandAndLift) {
    for (const FramesRow& row : FramesRows) {
        Screen s;
        row.play(s);
        s.Wait(400);
        EXPECT_EQ(s.Landmarks(), row.landmarks) << row.name;
    }
}

TEST(FeederFrames, ExactlyAsManyEventsAsThereIsRoomForAreTaken) {
    Screen s;
    s.feeder.Down(7, 9, 9, 0);
    for (std::size_t i = 1; i < input::MaxWaitingEvents; ++i) {
        s.feeder.Move(7, 10 + static_cast<double>(i % 2), 9, 5);
    }
    s.Wait(400);
    EXPECT_THAT(s.Landmarks(), testing::ElementsAre("0v9,9 @1000"));
}

// A number that comes again within a touch is the oldest one; a new touch begins with 0.
TEST(FeederFrames, NumbersCountOnDuringATouch) {
    Screen s;
    s.feeder.Down(0, 9, 9, 0);
    for (int i = 1; i <= 10; ++i) {
        s.feeder.Down(i, 50, 9, i * 100);
        s.feeder.Up(i, 50, 9, i * 100 + 50);
    }
    s.feeder.Up(0, 9, 9, 2000);
    s.feeder.Down(0, 9, 9, 2100);
    s.Wait(3000);
    std::vector<int> landed;
    for (const workflow::TouchFrame& frame : s.frames) {
        for (const workflow::TouchRecord& record : frame.records) {
            if (record.flags == workflow::TouchDown) {
                landed.push_back(record.id);
            }
        }
    }
    EXPECT_THAT(landed, testing::ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 0));
}

TEST(FeederFrames, OwnIdsAreTheToolkits) {
    Screen s({.ids = input::RecordIds::Own});
    s.feeder.Down((std::int64_t{1} << 40) + 5, 9, 9, 0);
    s.feeder.Down(5, 20, 9, 50);  // the same 31 bits
    s.Wait(400);
    EXPECT_THAT(s.Landmarks(), testing::ElementsAre("5v9,9 @1000"));
}

TEST(FeederFrames, RecordTimesBeginAnewBeforeTheyRunOut) {
    constexpr auto last = static_cast<std::int32_t>(input::LastTouchStartMs);
    for (const auto& [start, times] : {std::pair{last, std::pair{last, last + 50}}, {last + 1, {1000, 1050}}}) {
        Screen s({.touchClockStartMs = start});
        s.feeder.Down(7, 9, 9, 0);
        s.feeder.Up(7, 9, 9, 50);
        s.Wait(400);
        EXPECT_THAT(s.Landmarks(), testing::ElementsAre("0v9,9 @" + std::to_string(times.first),
                                                        "0^9,9 @" + std::to_string(times.second)));
    }
}

struct PixelRow {
    const char* name;
    Geometry geometry;
    double x;
    double y;
    input::Pixel pixel;
};

// Four different numbers in every row: a view of 100 x 60.
const PixelRow PixelRows[] = {
    {"rows down", {100, 60}, 10, 20, {10, 39}},
    {"rows up", {100, 60, false}, 10, 20, {10, 20}},
    {"scale", {100, 60, true, 2}, 10, 20, {20, 19}},
    {"no scale", {100, 60, true, -1}, 10, 20, {10, 39}},
    {"a quarter: the top is at the right", {100, 60, true, 1, Turn::Quarter}, 10, 20, {79, 49}},
    {"a quarter, rows up", {100, 60, false, 1, Turn::Quarter}, 10, 20, {20, 49}},
    {"half", {100, 60, true, 1, Turn::Half}, 10, 20, {89, 20}},
    {"three quarters", {100, 60, true, 1, Turn::ThreeQuarters}, 10, 20, {20, 10}},
    {"the first column and row have no value", {100, 60, false}, 0, -5, {1, 1}},
    {"beyond the last", {100, 60, false}, 99.6, 1e300, {99, 59}},
    {"rounded", {100, 60, false}, 10.5, 20.49, {11, 20}},
    {"a view without size", {0, 0}, 10, 20, {1, 1}},
};

TEST(FeederFrames, PlacesBecomePixelsOfTheView) {
    for (const PixelRow& row : PixelRows) {
        EXPECT_EQ(PixelOf(row.geometry, PlaceOf(row.geometry, row.x, row.y)), row.pixel) << row.name;
    }
}

}  // namespace
