// What happens when a host fails: the outcomes that docs/FAULTS.md tells.
#include "tests/support/FaultyHost.h"
#include "tests/support/HostGestures.h"
#include "tests/support/Matchers.h"
#include "touch/Factory.h"
#include "touch/Inspection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

class FaultOutcomes : public testing::Test {
protected:
    [[nodiscard]] touch::WorkflowInspector State() const { return touch::WorkflowInspector(*host.Component()); }
    [[nodiscard]] dg::Location Camera() const { return host.answers.camera.GetLocation(); }
    [[nodiscard]] bool IsCameraMoved() const { return !AreNear(Camera(), start, 1e-9); }
    void Throw(HostCall call, int times = 1) {
        host.On(
            call, [] { throw std::bad_alloc(); }, times);
    }

    FaultyHost host;
    const dg::Location start = host.answers.camera.GetLocation();
};

TEST_F(FaultOutcomes, WithoutAManagerTheViewMovesAndNothingIsSentQueuedOrAsked) {
    host.SetManager(false);
    PlaySpin(host);
    EXPECT_TRUE(IsCameraMoved());
    EXPECT_EQ(host.transition, nullptr);
    PlayTap(host);
    PlayPressAndHold(host);
    EXPECT_THAT(host.messages, IsEmpty());
    EXPECT_EQ(host.status, "");
    PlayPinch(host);
    EXPECT_THAT(host.traces, ElementsAre("RequestBounds(): GetBoundingBox() failed.\n"));
    EXPECT_TRUE(State().GetModelBounds().IsEmpty());
}

// The picker is asked to preselect again by the answer that the guard gives when the click is over.
TEST_F(FaultOutcomes, AClickThatLowersThePreselectGuardLeavesThePickerAsItIs) {
    host.Component()->SetPreselectGuard(true);
    host.On(
        HostCall::SendMessage, [this] { host.Component()->SetPreselectGuard(false); }, 1);
    PlayTap(host);
    EXPECT_EQ(host.messages.back(), "MsgClickLeft 400 300");
}

TEST_F(FaultOutcomes, WithoutASceneASpinCoastsAndWithoutAQueueItStops) {
    for (const bool hasScene : {true, false}) {
        host.answers.hasScene = hasScene;
        PlaySpin(host);
        ASSERT_NE(host.transition, nullptr);
        EXPECT_EQ(host.transition->scene != nullptr, hasScene);
        EXPECT_EQ(host.transition->kind, animation::CameraSpinTransition::Kind);
        host.transition = nullptr;
    }
    host.answers.hasTransitionQueue = false;
    PlaySpin(host);
    EXPECT_EQ(host.transition, nullptr);
}

TEST_F(FaultOutcomes, WithoutTextsTheStatusIsTheKeyAndWithoutASlotTheFrameIsUsed) {
    host.answers.hasTexts = false;
    EXPECT_TRUE(host.Touch({{1, 400, 300, Down}}));
    EXPECT_EQ(host.status, "TouchNavigateMode");
    host.answers.storesStatus = false;
    EXPECT_TRUE(host.Touch({{1, 500, 300, Move}}));
}

TEST_F(FaultOutcomes, ThePinchInPerspectiveZoomsByTheBoxThatCame) {
    struct Row {
        const char* name;
        void (*set)(HostAnswers& answers);
        double distance;
        bool zooms;
    };
    const Row rows[] = {
        {"in time", [](HostAnswers&) {}, 22, true},
        {"before ManageObject returns", [](HostAnswers& a) { a.boxTime = BoxTime::WhileManaging; }, 22, true},
        {"before GetBoundingBox returns", [](HostAnswers& a) { a.boxTime = BoxTime::WhileAsking; }, 22, true},
        {"twice", [](HostAnswers& a) { a.boxRepeats = 2; }, 22, true},
        {"never", [](HostAnswers& a) { a.boxTime = BoxTime::Never; }, 0, false},
        {"refused", [](HostAnswers& a) { a.acceptsRequests = false; }, 0, false},
        {"failed", [](HostAnswers& a) { a.boxStatus = 1; }, 0, false},
        {"empty", [](HostAnswers& a) { a.box = dg::DBox::EMPTY; }, 0, false},
        {"a point at the eye",
         [](HostAnswers& a) {
             a.box = {{0, 0, 20}, {0, 0, 20}};
         },
         1, true},
        {"infinite",
         [](HostAnswers& a) {
             a.box = {{0, 0, 0}, {Infinity, 1, 1}};
         },
         Infinity, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FaultyHost other;
        other.answers.MakePerspective();
        row.set(other.answers);
        PlayPinch(other);
        EXPECT_EQ(touch::WorkflowInspector(*other.Component()).GetWorldDistance(), row.distance);
        EXPECT_EQ(other.answers.camera.GetLocation() != start, row.zooms);
    }
}

TEST_F(FaultOutcomes, ARequestThatIsNeverAnsweredIsWithdrawnByTheNext) {
    host.answers.boxTime = BoxTime::Never;
    PlayPinch(host);
    EXPECT_EQ(host.CountOf(HostCall::RequestCancelled), 0);
    PlayPinch(host);
    EXPECT_EQ(host.CountOf(HostCall::RequestCancelled), 1);
    EXPECT_EQ(host.CountWaitingRequests(), 1U);
    host.AnswerRequests();
    EXPECT_EQ(State().GetModelBounds(), host.answers.box) << "late is not too late";
    PlayPinch(host);
    host.CancelRequests();
    EXPECT_EQ(State().GetBoundsEvent(), nullptr) << "the host may withdraw it as well";
    host.Drop();
    EXPECT_EQ(FaultyHost::CountComponents(), 0);
}

// Arithmetic on a view that has no pixels has no value. What is asked of the view then is the host's to refuse.
TEST_F(FaultOutcomes, AViewWithoutPixelsDoesNotSpinAndIsGivenPlacementsThatAreNoNumbers) {
    host.answers.camera.SetViewport(0, 0);
    PlaySpin(host);
    EXPECT_FALSE(IsCameraMoved());
    PlayPinch(host);
    EXPECT_TRUE(std::isnan(Camera().GetPos().x));
}

TEST_F(FaultOutcomes, AFlightAtASpeedThatIsNoNumberIsGivenAPlacementThatIsNone) {
    for (const double speed : {0.0, NaN}) {
        FaultyHost other;
        other.answers.MakePerspective();
        other.answers.navSpeed = speed;
        PlayPinch(other);
        EXPECT_EQ(std::isnan(other.answers.camera.GetLocation().GetPos().z), std::isnan(speed));
        EXPECT_EQ(other.answers.camera.GetLocation() == start, speed == 0.0);
    }
}

TEST_F(FaultOutcomes, SettersThatIgnoreTheValueLeaveTheViewAndTheGestureGoesOn) {
    host.answers.setters = Setters::Ignore;
    EXPECT_TRUE(host.Touch({{1, 400, 300, Down}}));
    EXPECT_TRUE(host.Touch({{1, 500, 300, Move}}));
    EXPECT_TRUE(host.Touch({{1, 550, 300, Move}}));
    EXPECT_EQ(host.CountOf(HostCall::SetCameraLocation), 2);
    EXPECT_EQ(Camera(), start);
}

TEST_F(FaultOutcomes, AnExceptionEndsTheFrameAndTheNextOneGoesOnWithTheGesture) {
    host.Touch({{1, 400, 300, Down}});
    host.Touch({{1, 440, 300, Move}});
    const dg::Location before = Camera();
    Throw(HostCall::SetCameraLocation);
    EXPECT_FALSE(host.Touch({{1, 480, 300, Move}}));
    EXPECT_EQ(Camera(), before);
    EXPECT_TRUE(host.Touch({{1, 520, 300, Move}}));
    EXPECT_FALSE(AreNear(Camera(), before, 0.1));
    EXPECT_EQ(host.openUpdateGroups, 0);
}

TEST_F(FaultOutcomes, AnExceptionAtTheStartOfATouchIsMadeUpForByTheNextFrame) {
    Throw(HostCall::StopTransition);
    EXPECT_FALSE(host.Touch({{1, 400, 300, Down}}));
    EXPECT_TRUE(host.Touch({{1, 400, 300, Move}}));
    EXPECT_EQ(host.CountOf(HostCall::StopTransition), 2);
}

TEST_F(FaultOutcomes, AnExceptionOfTheStatusBarDoesNotStopTheFrame) {
    Throw(HostCall::SetStatusMessage, FaultyHost::Always);
    EXPECT_TRUE(host.Touch({{1, 400, 300, Down}}));
    EXPECT_TRUE(host.Touch({{1, 500, 300, Move}}));
    EXPECT_TRUE(host.Touch({{1, 550, 300, Move}}));
    EXPECT_TRUE(IsCameraMoved());
    EXPECT_FALSE(host.UpdateStatusBar());

    class OwnStatusBar final : public touch::TouchWorkflow {
    public:
        explicit OwnStatusBar(int& calls) : TouchWorkflow(du::Symbol("touch")), m_calls(calls) {}
        bool OnMsgUpdateStatusBar() override {
            ++m_calls;
            throw std::bad_alloc();
        }

    private:
        int& m_calls;
    };
    int calls = 0;
    host.Install(du::SmartPtr<touch::TouchWorkflow>(new OwnStatusBar(calls)));
    host.SetView(ViewKind::Shape);
    EXPECT_TRUE(host.Touch({{1, 400, 300, Down}}));
    EXPECT_EQ(calls, 1) << "a derived class has its own status text";
}

TEST_F(FaultOutcomes, AClickThatEndsWithAnExceptionGivesThePickerItsPreselectionBack) {
    Throw(HostCall::SendMessage, 2);
    PlayTap(host);
    EXPECT_THAT(host.messages,
                ElementsAre("picker enable_preselect 0", "picker enable_geom_preselect 0", "MsgMouseMove 400 300",
                            "picker enable_preselect 1", "picker enable_geom_preselect 1"));
}

TEST_F(FaultOutcomes, AHoldWhoseFirstMessageEndsWithAnExceptionIsNotTriedAgain) {
    Throw(HostCall::SendMessage);
    PlayPressAndHold(host);
    EXPECT_THAT(host.messages, ElementsAre("MsgMouseRightDown 400 300"));
}

TEST_F(FaultOutcomes, ARequestThatEndsWithAnExceptionIsForgottenAndMadeAgain) {
    for (const HostCall call : {HostCall::ManageObject, HostCall::GetBoundingBox}) {
        SCOPED_TRACE(NameOf(call));
        Throw(call);
        host.answers.boxTime = BoxTime::Never;
        host.Touch({{1, 400, 300, Down}, {2, 600, 300, Down}});
        host.Touch({{1, 300, 300, Move}, {2, 700, 300, Move}});
        EXPECT_EQ(State().GetBoundsEvent(), nullptr);
        host.Touch({{1, 290, 300, Move}, {2, 710, 300, Move}});
        EXPECT_NE(State().GetBoundsEvent(), nullptr);
        host.Tick(600);
        host.AnswerRequests();
    }
}

TEST_F(FaultOutcomes, AViewWhosePreferencesEndWithAnExceptionIsAttached) {
    const hxk::View* before = host.Component()->GetView().Get();
    Throw(HostCall::GetDefaultPreferences);
    host.SetView(ViewKind::Shape);
    EXPECT_NE(host.Component()->GetView().Get(), before);
    PlaySpin(host);
    EXPECT_TRUE(IsCameraMoved());
}

TEST_F(FaultOutcomes, TheFactoryMakesNothingWhenTheEnvironmentEndsWithAnException) {
    Throw(HostCall::IsPresent);
    du::SmartPtr<workflow::Workflow> component;
    EXPECT_FALSE(HXDllCreateComponent("shapeview", "workflow", "touch", component));
    EXPECT_EQ(component, nullptr);
}

// What a call back does to the frame in whose middle it comes.

TEST_F(FaultOutcomes, AViewThatIsAttachedInAFrameIsNavigatedFromTheNextFrameOn) {
    host.Touch({{1, 400, 300, Down}});
    host.On(HostCall::GetSpinCenter, [this] { host.SetView(ViewKind::Drawing); });
    EXPECT_TRUE(host.Touch({{1, 500, 300, Move}}));
    EXPECT_EQ(host.CountOf(HostCall::SetCameraLocation), 1) << "the frame ends on the view on which it began";
    const dg::Location turned = Camera();
    host.Touch({{1, 540, 300, Move}});
    EXPECT_EQ(Camera(), turned);
    EXPECT_EQ(host.CountOf(HostCall::SetPosition), 0) << "a spin does not become a pan";
    host.Tick(600);
    PlaySpin(host);
    EXPECT_GT(host.CountOf(HostCall::SetPosition), 0);
}

TEST_F(FaultOutcomes, ATouchThatBeginsInsideAClickIsTheTouchFromThenOn) {
    host.On(HostCall::SendMessage, [this] { host.Touch({{7, 600, 200, Down}}); });
    PlayTap(host);
    EXPECT_THAT(host.messages, Contains("MsgClickLeft 400 300")) << "the place of the tap, not of the new finger";
}

TEST_F(FaultOutcomes, MarkupModeThatIsEnteredInAFrameIsForTheNextTouch) {
    host.Touch({{1, 400, 300, Down}});
    host.On(HostCall::GetSpinCenter, [this] { host.Mode("touch", "enter_markup_mode"); });
    host.Touch({{1, 500, 300, Move}});
    host.Touch({{1, 550, 300, Move}});
    EXPECT_TRUE(IsCameraMoved());
    const dg::Location turned = Camera();
    PlaySpin(host);
    EXPECT_EQ(Camera(), turned);
}

TEST_F(FaultOutcomes, ACrossThatIsSwitchedOffWhileItIsShownStaysInItsView) {
    host.On(
        HostCall::EndUpdateGroup,
        [this] {
            if (host.CountOf(HostCall::AddMarkup) == 1) {
                host.answers.showsSpinCenter = false;
                host.UpdatePreferences();
            }
        },
        FaultyHost::Always);
    PlaySpin(host);
    EXPECT_EQ(host.CountOf(HostCall::AddMarkup), 1);
    EXPECT_EQ(host.CountOf(HostCall::RemoveMarkup), 0);
}

// A host may also hand the box in directly, beside any request.
TEST_F(FaultOutcomes, ABoxThatIsHandedInMeetsAViewThatThrowsOrDropsTheComponent) {
    PlayPinch(host);
    Throw(HostCall::GetCamera);
    EXPECT_NO_THROW(host.Component()->ReceiveBounds(host.answers.box));
    host.On(HostCall::GetCamera, [this] { host.Drop(); });
    host.Component()->ReceiveBounds(host.answers.box);
    EXPECT_EQ(FaultyHost::CountComponents(), 0);
}

TEST_F(FaultOutcomes, AManagerThatGoesInsideATapTakesTheRestOfTheMessagesWithIt) {
    host.On(HostCall::SendModeMessage, [this] { host.SetManager(false); });
    PlayTap(host);
    EXPECT_THAT(host.messages, ElementsAre("picker enable_preselect 0"));
    host.SetManager(true);
    host.On(HostCall::GetTransitionContext, [this] { host.SetManager(false); });
    PlaySpin(host);
    EXPECT_EQ(host.CountOf(HostCall::GetTransitionContext), 1);
    EXPECT_EQ(host.CountOf(HostCall::GetTransitionQueue), 0);
}

// The tick on which three fingers have been held for long enough is the one that asks for the view's class.
TEST_F(FaultOutcomes, AViewThatIsClosedWhileItsClassIsAskedStillDecidesOnTheSwitch) {
    for (const ViewKind kind : {ViewKind::Shape, ViewKind::Other, ViewKind::Drawing}) {
        FaultyHost other;
        other.SetView(kind);
        const touch::WorkflowInspector state(*other.Component());
        for (int frame = 0; frame < 36 && other.Component()->GetView() != nullptr; ++frame) {
            const int flags = frame == 0 ? Down : Move;
            other.Touch({{1, 300, 300, flags}, {2, 400, 300, flags}, {3, 500, 300, flags}});
            other.On(HostCall::GetClassType, [&] { other.SetView(ViewKind::None); });
            other.Tick(90);
            other.ClearHooks();
        }
        EXPECT_EQ(state.GetNavigateMode(), kind != ViewKind::Shape);
    }
}

TEST_F(FaultOutcomes, AnAssignmentIsCompleteWhenAViewThatGoesDropsTheComponent) {
    const du::SmartPtr<touch::TouchWorkflow> other = host.MakeAnother("other");
    PlaySpin(host);
    std::string name;
    host.SetView(ViewKind::Shape);
    host.On(HostCall::ViewGoes, [&] {
        name = host.Component()->GetName().GetString();
        host.Drop();
    });
    *host.Component() = *other;
    EXPECT_EQ(name, "other");
    EXPECT_EQ(FaultyHost::CountComponents(), 1) << "the other one";
}

}  // namespace
}  // namespace tests
