// The mouse echo, and the gate for a toolkit's own mouse events.
#include "host/workflow/ConstStrings.h"
#include "tests/input/Screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

using tests::Screen;
using tests::Texts;
using workflow::ConstStrings;

struct EchoRow {
    const char* name;
    std::function<void(Screen&)> play;
    Texts mouse;
};

const EchoRow EchoRows[] = {
    {"a tap",
     [](Screen& s) { s.feeder.Up(1, 100, 9, 50); },
     {"MsgMouseMove 100,9", "MsgMouseLeftDown 100,9", "MsgMouseLeftUp 100,9", "MsgClickLeft 100,9"}},
    {"a cancelled touch clicks nowhere",
     [](Screen& s) { s.feeder.Cancel(1, 50); },
     {"MsgMouseMove 100,9", "MsgMouseLeftDown 100,9", "MsgMouseLeftUp 100,9"}},
    {"as far as a click may go",
     [](Screen& s) {
         s.feeder.Move(1, 104, 9, 10);
         s.feeder.Up(1, 104, 9, 50);
     },
     {"MsgMouseMove 100,9", "MsgMouseLeftDown 100,9", "MsgMouseLeftUp 104,9", "MsgClickLeft 104,9"}},
    {"a drag",
     [](Screen& s) {
         s.feeder.Move(1, 105, 9, 10);
         s.feeder.Up(1, 105, 9, 15);
     },
     {"MsgMouseMove 100,9", "MsgMouseLeftDown 100,9", "MsgMouseInitLeftDrag 105,9", "MsgMouseLeftDrag 105,9",
      "MsgMouseLeftUp 105,9"}},
    {"a finger that joins is no mouse, and there is no click",
     [](Screen& s) {
         s.feeder.Down(2, 300, 9, 20);
         s.feeder.Up(1, 100, 9, 60);
         s.feeder.Up(2, 300, 9, 120);
     },
     {"MsgMouseMove 100,9", "MsgMouseLeftDown 100,9", "MsgMouseLeftUp 100,9"}},
};

TEST(FeederMouse, TheFirstFingerIsEchoedOneMessageLate) {
    for (const EchoRow& row : EchoRows) {
        for (const bool isOn : {true, false}) {
            Screen s({.mouseEcho = isOn});
            s.feeder.Down(1, 100, 9, 0);
            row.play(s);
            s.Wait(200);
            EXPECT_EQ(s.mouse, isOn ? row.mouse : Texts()) << row.name;
            const Texts start{"tick 1000 10", "0v100,9 @1000", "tick 1010 10", "MsgMouseMove 100,9"};
            EXPECT_EQ(!isOn || Texts(s.log.begin(), s.log.begin() + 4) == start, true) << row.name;
        }
    }
}

TEST(MouseEcho, HasRoomForWhateverStandsInAFrame) {
    workflow::TouchFrame frame;
    for (std::size_t i = 0; i < frame.records.size(); ++i) {
        frame.records.at(i) = {1, 100, 9, 0, i % 2 == 0 ? workflow::TouchDown : workflow::TouchUp};
    }
    EXPECT_EQ(input::MouseEcho().Follow(frame, false).count, 20U);
}

struct GateRow {
    const char* name;
    std::function<void(Screen&)> before;
    std::vector<const du::Symbol*> events;
    std::vector<bool> pass;  // with the feeder's echo; without it everything does
};

void Touch(Screen& s) {
    s.feeder.Down(1, 100, 9, 0);
    s.Wait(20);
}

void TouchAndWait(Screen& s, double ms) {
    Touch(s);
    s.feeder.Up(1, 100, 9, 100);
    s.Wait(20);
    const double lifted = static_cast<double>(s.frames.back().records[0].time);
    s.Wait(ms - (static_cast<double>(s.ticks.back()) - lifted));
}

const GateRow GateRows[] = {
    {"a mouse without a touch",
     [](Screen&) {},
     {&ConstStrings::MsgMouseMove, &ConstStrings::MsgMouseLeftDown, &ConstStrings::MsgMouseLeftUp,
      &ConstStrings::MsgClickLeft},
     {true, true, true, true}},
    {"an echo",
     Touch,
     {&ConstStrings::MsgMouseMove, &ConstStrings::MsgMouseLeftDown, &ConstStrings::MsgMouseLeftDrag,
      &ConstStrings::MsgMouseLeftUp, &ConstStrings::MsgClickLeft, &ConstStrings::MsgMouseInitMiddleDrag,
      &ConstStrings::MsgMouseRightDown, &ConstStrings::MsgMouseRightUp},
     std::vector<bool>(8, false)},
    {"its tail", [](Screen& s) { TouchAndWait(s, 490); }, {&ConstStrings::MsgClickLeft}, {false}},
    {"after it",
     [](Screen& s) { TouchAndWait(s, 500); },
     {&ConstStrings::MsgMouseLeftDown, &ConstStrings::MsgClickLeft},
     {true, true}},
    {"a button that is down when the touch begins comes up",
     [](Screen& s) {
         (void)s.feeder.Mouse(ConstStrings::MsgMouseRightDown, 1, 1, 0);
         Touch(s);
     },
     {&ConstStrings::MsgMouseRightDrag, &ConstStrings::MsgMouseRightUp, &ConstStrings::MsgMouseRightUp},
     {true, true, false}},
    {"one that went down in it stays unheard after it",
     [](Screen& s) {
         Touch(s);
         (void)s.feeder.Mouse(ConstStrings::MsgMouseLeftDown, 1, 1, 0);
         s.feeder.Up(1, 100, 9, 100);
         s.Wait(700);
     },
     {&ConstStrings::MsgMouseLeftDrag, &ConstStrings::MsgMouseLeftUp, &ConstStrings::MsgClickLeft,
      &ConstStrings::MsgMouseMove},
     {false, false, false, true}},
};

TEST(FeederMouse, TheGateHoldsEchoesBack) {
    for (const GateRow& row : GateRows) {
        for (const bool isOn : {true, false}) {
            Screen s({.mouseEcho = isOn});
            row.before(s);
            std::vector<bool> pass;
            for (const du::Symbol* type : row.events) {
                pass.push_back(s.feeder.Mouse(*type, 20, 30, 4).has_value());
            }
            EXPECT_EQ(pass, isOn ? row.pass : std::vector<bool>(pass.size(), true)) << row.name;
        }
    }
    Screen s;
    const auto message = s.feeder.Mouse(ConstStrings::MsgMouseMove, 20, 30, 4);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->GetX(), 20);
    EXPECT_EQ(message->GetY(), 30);
    EXPECT_EQ(message->GetModifiers(), 4);
}

TEST(FeederMouse, AHostMayTakeMessages) {
    class Messages : public input::MessageSink {
    public:
        void TakeMessage(const workflow::Msg& message) override {
            texts.push_back(message.GetType().GetString());
            if (message.GetContent() == workflow::Msg::Content::Touch) {
                const auto& touch = static_cast<const workflow::TouchMsg&>(message);
                texts.back().append(" ").append(std::to_string(touch.GetIntegers()[3]));
            }
        }
        Texts texts;
    };
    Messages messages;
    input::TouchFeeder feeder(messages, {.mouseEcho = true});
    feeder.SetGeometry({.width = 1000, .height = 600});
    feeder.Down(1, 100, 9, 0);
    feeder.Move(1, 110, 9, 10);
    feeder.Advance(0);
    EXPECT_THAT(messages.texts, testing::ElementsAre("MsgTimer", "MsgTouch 100", "MsgTimer", "MsgMouseMove",
                                                     "MsgMouseLeftDown", "MsgTouch 110"));
}

}  // namespace
