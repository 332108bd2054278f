// A host that calls back: every operation of the host, on a chosen one or on each of its calls, does something to the
// component that is in the middle of a gesture. Nothing crashes, the component stays consistent, and a new touch
// works; a component that was dropped goes once its call and its requests have ended.
#include "host/workflow/ConstStrings.h"
#include "tests/support/FaultyHost.h"
#include "tests/support/HostGestures.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>

namespace tests {
namespace {

struct Deed {
    const char* name;
    void (*act)(FaultyHost& host);

    friend void PrintTo(const Deed& deed, std::ostream* out) { *out << deed.name; }
};

const Deed Deeds[] = {
    {"MovesAFinger",
     [](FaultyHost& host) {
         host.Touch({{1, 520, 330, Move}});
     }},
    {"AddsAFinger",
     [](FaultyHost& host) {
         host.Touch({{1, 300, 330, Move}, {2, 700, 330, Down}});
     }},
    {"BeginsATouch",
     [](FaultyHost& host) {
         host.Touch({{7, 600, 200, Down}});
     }},
    {"LiftsAFinger",
     [](FaultyHost& host) {
         host.Touch({{1, 520, 330, Up}});
     }},
    {"SendsAnEmptyFrame", [](FaultyHost& host) { host.Touch({}); }},
    {"Ticks", [](FaultyHost& host) { host.Tick(); }},
    {"TicksAfterASilence", [](FaultyHost& host) { host.Tick(600); }},
    {"Clicks",
     [](FaultyHost& host) {
         host.Mouse(workflow::ConstStrings::MsgMouseLeftDown);
         host.Mouse(workflow::ConstStrings::MsgClickLeft);
         host.Mouse(workflow::ConstStrings::MsgMouseInitRightDrag);
     }},
    {"EntersMarkupMode", [](FaultyHost& host) { host.Mode("touch", "enter_markup_mode"); }},
    {"SwitchesTheSpinCenter",
     [](FaultyHost& host) {
         host.answers.showsSpinCenter = !host.answers.showsSpinCenter;
         host.UpdatePreferences();
     }},
    {"AnswersRequests", [](FaultyHost& host) { host.AnswerRequests(); }},
    {"CancelsRequests", [](FaultyHost& host) { host.CancelRequests(); }},
    {"OpensAnotherShapeView",
     [](FaultyHost& host) {
         host.SetView(ViewKind::Shape);
         host.Touch({{1, 520, 330, Move}});
     }},
    {"OpensAPage",
     [](FaultyHost& host) {
         host.SetView(ViewKind::Drawing);
         host.Touch({{1, 300, 330, Move}, {2, 700, 330, Down}});
     }},
    {"OpensAnUnknownView", [](FaultyHost& host) { host.SetView(ViewKind::Other); }},
    {"ClosesTheView", [](FaultyHost& host) { host.SetView(ViewKind::None); }},
    {"CopiesTheComponent",
     [](FaultyHost& host) {
         if (host.Component() != nullptr) {
             const du::SmartPtr<touch::TouchWorkflow> copy(new touch::TouchWorkflow(*host.Component()));
         }
     }},
    {"AssignsAFreshComponent",
     [](FaultyHost& host) {
         if (host.Component() != nullptr) {
             *host.Component() = *host.MakeAnother("touch");
         }
     }},
    {"DropsTheComponent", [](FaultyHost& host) { host.Drop(); }},
    {"ClosesTheViewAndDropsTheComponent",
     [](FaultyHost& host) {
         host.SetView(ViewKind::None);
         host.Drop();
     }},
    {"TakesTheManagerAway", [](FaultyHost& host) { host.SetManager(false); }},
};

// The calls that are acted on: the first of every operation, some later ones, each, and one by chance.
constexpr int EachCall = 0;
constexpr int ChosenCalls[] = {2, 3, 5, EachCall};

// A gesture with the hook set on one call, and what comes after a gesture: another view, its first frame, with which
// the view before it goes, and new preferences.
void PlayWith(FaultyHost& host, const HostGesture& gesture, HostCall call, const FaultyHost::Hook& hook) {
    gesture.prepare(host);
    host.answers.acceptsRequests = call != HostCall::IsTraceEnabled && call != HostCall::WriteTrace;
    host.answers.boxTime = call == HostCall::RequestCancelled ? BoxTime::Never : BoxTime::NextTick;
    host.On(call, hook, FaultyHost::Always);
    gesture.play(host);
    host.SetView(ViewKind::Shape);
    host.Touch({{1, 400, 300, Down}});
    host.UpdatePreferences();
}

// Acts on the call of that number, from 1, or on EachCall. Answers how often the call came.
int PlayAndCheck(const Deed& deed, const HostGesture& gesture, HostCall call, int chosen) {
    FaultyHost host(gesture.setup);
    int seen = 0;
    PlayWith(host, gesture, call, [&] {
        ++seen;
        if (chosen == EachCall || seen == chosen) {
            deed.act(host);
        }
    });
    if (seen == 0) {
        return 0;
    }
    EXPECT_EQ(FindHarm(host), "") << gesture.name << ", " << NameOf(call) << ", call " << chosen;
    return seen;
}

class Reentrancy : public testing::TestWithParam<Deed> {};

TEST_P(Reentrancy, OfAnyCallDoesNotHarmAnyGesture) {
    int tries = 0;
    std::minstd_rand random;  // the same calls in every run
    for (const HostGesture& gesture : AllHostGestures()) {
        for (std::size_t i = 0; i < HostCallCount && !HasFailure(); ++i) {
            const auto call = static_cast<HostCall>(i);
            const int calls = PlayAndCheck(GetParam(), gesture, call, 1);
            if (calls == 0) {
                continue;
            }
            for (const int chosen : ChosenCalls) {
                if (chosen <= calls) {
                    PlayAndCheck(GetParam(), gesture, call, chosen);
                }
            }
            PlayAndCheck(GetParam(), gesture, call, 1 + static_cast<int>(random() % static_cast<unsigned>(calls)));
            ++tries;
        }
    }
    EXPECT_EQ(FaultyHost::CountComponents(), 0);
    EXPECT_GT(tries, 200) << "most calls do not come";
}

INSTANTIATE_TEST_SUITE_P(Host, Reentrancy, testing::ValuesIn(Deeds), [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace tests
