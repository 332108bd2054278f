// Most steps are gestures of plausible hands, because wild frames alone seldom get past the recogniser. The rest is
// everything else that a host can do, in any order and from within any call.
#include "fuzz/HostileSession.h"

#include "host/workflow/ConstStrings.h"
#include "touch/Factory.h"
#include "touch/Inspection.h"
#include "touch/navigation/CameraSpinTransition.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <limits>
#include <sstream>

namespace fuzz {
namespace {

using tests::BoxTime;
using tests::HostAnswers;
using tests::HostCallCount;
using tests::HostSetup;
using tests::Setters;
using workflow::ConstStrings;

constexpr std::size_t KeptEvents = 40;
constexpr std::size_t MaxCompanions = 2;
constexpr int MaxDepth = 3;
constexpr int SilenceMs = 600;

HostSetup ChooseSetup(Choices& choices) {
    constexpr const char* switches[] = {"HXAPP_DONTPAN", "HXAPP_DONTSPIN", "HXAPP_DONTZOOM",
                                        "HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE", "HXAPP_TOUCH_TWO_HANDS_EXPLORE"};
    constexpr int resolutions[] = {96, 96, 96, 96, 0, 1, -1, 4000, std::numeric_limits<int>::min()};
    HostSetup setup;
    const std::uint32_t present = choices.Bits(1);
    for (std::size_t i = 0; i < std::size(switches); ++i) {
        // The first three each switch a gesture off, so they are rare.
        const std::uint32_t mask = (i < 3 ? 9U : 1U) << i;
        if ((present & mask) == mask) {
            setup.switches.emplace_back(switches[i]);
        }
    }
    setup.preselectGuard = choices.Chance(50);
    setup.ppiX = choices.OneOf(resolutions);
    setup.ppiY = choices.OneOf(resolutions);
    return setup;
}

// A component from the plug-in's factory, which knows what it is asked for.
du::SmartPtr<touch::TouchWorkflow> Create(Choices& choices) {
    const char* const viewType = choices.Chance(90) ? "shapeview" : "other";
    du::SmartPtr<workflow::Workflow> created;
    HXDllInit();
    HXDllCreateComponent(viewType, "workflow", "touch", created);
    HXDllTerminate();
    return du::SmartPtr<touch::TouchWorkflow>(dynamic_cast<touch::TouchWorkflow*>(created.Get()));
}

dg::FMat33 ChooseAxes(Choices& choices) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const dg::FMat33 axes[] = {
        dg::FMat33(), dg::FMat33({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}), dg::FMat33({0, 0, -1}, {0, 1, 0}, {1, 0, 0}),
        // skewed, without extent, not a number
        dg::FMat33({1, 0.5F, 0}, {0, 1, 0}, {0, 0, 7}), dg::FMat33({0, 0, 0}, {0, 0, 0}, {0, 0, 0}),
        dg::FMat33({nan, 0, 0}, {0, 1, 0}, {0, 0, 1})};
    return choices.Chance(90) ? axes[choices.Below(3)] : axes[3 + choices.Below(3)];
}

}  // namespace

HostileSession::HostileSession(Choices& choices, std::ostream* log)
    : m_choices(choices), m_log(log), m_host(ChooseSetup(choices)) {
    NoteHostChange();
    ChangeCamera();
    SendTick(m_now, m_interval);
}

// Views that go with the components call nobody any more.
HostileSession::~HostileSession() {
    m_host.ClearHooks();
}

void HostileSession::Step() {
    if (!m_fault.empty()) {
        return;
    }
    const int what = m_choices.Below(256);
    if (what < 170) {
        PlayHand();
    } else {
        DoSomething(what - 170);
    }
    CheckInvariants();
}

// Also called back from the middle of the host's calls.
void HostileSession::DoSomething(int what) {
    if (what < 20) {
        SendMouse();
    } else if (what < 28) {
        SendMode();
    } else if (what < 33) {
        SendPreferences();
    } else if (what < 42) {
        OpenView();
    } else if (what < 50) {
        ChangeCamera();
    } else if (what < 58) {
        ChangeAnswers();
    } else if (what < 64) {
        AnswerRequests();
    } else if (what < 67) {
        EndTransition();
    } else if (what < 74) {
        CallBackLater();
    } else if (what < 79) {
        CopyOrDrop();
    } else if (what < 81) {
        SendWildFrame();
    } else if (what < 83) {
        const std::int64_t now = m_choices.LongInteger();
        const std::int64_t interval = m_choices.LongInteger();
        Note("tick", now, interval);
        SendTick(now, interval);
    } else {
        Note("status bar");
        Deliver(workflow::Msg(ConstStrings::MsgUpdateStatusBar));
    }
}

// Fingers that are up come down; those that are down move for a while or lift.
void HostileSession::PlayHand() {
    constexpr int lengths[] = {1, 2, 3, 5, 8, 12, 20, 22, 61, 105, 310};  // of a tap, a drag, a hold, a long hold
    constexpr int intervals[] = {10, 10, 16, 50, 1, 49};                  // milliseconds; 61 x 50 is a long hold too
    const int what = m_choices.Below(16);
    if (m_hand.IsUp()) {
        if (what < 3) {
            Note("silence");
            SendTick(m_now + SilenceMs, m_interval);
        }
        Note("down");
        m_hand.PutDown(m_choices);
        PlayFrames(1, static_cast<int>(m_interval));
    } else if (what < 8) {
        m_hand.ChooseMotion(m_choices);
        const int count = m_choices.OneOf(lengths);
        m_interval = m_choices.OneOf(intervals);
        PlayFrames(count, static_cast<int>(m_interval));
    } else if (what < 10) {
        Note("more down");
        m_hand.PutDown(m_choices);
        PlayFrames(1, static_cast<int>(m_interval));
    } else if (what < 11) {
        Note("lift one");
        m_hand.LiftOne(m_choices);
        PlayFrames(2, static_cast<int>(m_interval));
    } else {
        Note("lift");
        m_hand.LiftAll();
        PlayFrames(1, static_cast<int>(m_interval));
    }
}

// Each frame comes after its tick.
void HostileSession::PlayFrames(int count, int milliseconds) {
    Note("frames", count, milliseconds);
    for (int i = 0; i < count && m_fault.empty(); ++i) {
        SendTick(m_now + milliseconds, milliseconds);
        CheckInvariants();
        SendFrame(m_hand.MakeFrame(milliseconds));
        CheckInvariants();
    }
}

void HostileSession::SendFrame(const workflow::TouchFrame& frame) {
    const dg::Camera3D camera = m_host.answers.camera;
    const dg::Location page = m_host.answers.pageLocation;
    const double width = m_host.answers.orthoWidth;
    m_invariants.NoteFrame(frame);
    for (Companion& companion : m_companions) {
        companion.invariants.NoteFrame(frame);
    }
    Deliver(workflow::TouchMsg(ConstStrings::MsgTouch, frame));
    ++m_frames;
    if (m_log != nullptr) {
        *m_log << "frame " << m_frames << " of " << frame.count << " fingers";
        for (const workflow::TouchRecord& finger : frame.records) {
            if (finger.id != touch::FreeSlotId) {
                *m_log << ", " << finger.id << ": " << finger.x << ' ' << finger.y << ' ' << finger.time << ' '
                       << finger.flags;
            }
        }
        *m_log << '\n' << GetCameraText() << '\n';
    }
    m_usedFrames +=
        !(camera == m_host.answers.camera && page == m_host.answers.pageLocation && width == m_host.answers.orthoWidth);
}

// Some of the records are there; each of their numbers may be anything.
void HostileSession::SendWildFrame() {
    workflow::TouchFrame frame;
    const int count = m_choices.Below(11);
    frame.count = m_choices.Chance(60) ? count : m_choices.Integer();
    Note("wild frame", frame.count, count);
    for (int i = 0; i < count; ++i) {
        frame.records[static_cast<std::size_t>(i)] = {m_choices.Integer(), m_choices.Integer(), m_choices.Integer(),
                                                      m_choices.Integer(), m_choices.Below(8)};
    }
    SendFrame(frame);
}

void HostileSession::SendTick(std::int64_t now, std::int64_t interval) {
    m_now = now > 0 && now < 1'000'000'000'000 ? now : m_now;
    if (m_host.answers.boxTime == BoxTime::NextTick) {
        m_host.AnswerRequests();
    }
    Deliver(workflow::TimerMsg(ConstStrings::MsgTimer, now, interval));
}

void HostileSession::SendMouse() {
    const du::Symbol* const types[] = {
        &ConstStrings::MsgMouseMove,         &ConstStrings::MsgMouseLeftDown,  &ConstStrings::MsgMouseLeftUp,
        &ConstStrings::MsgMouseInitLeftDrag, &ConstStrings::MsgMouseLeftDrag,  &ConstStrings::MsgMouseInitRightDrag,
        &ConstStrings::MsgMouseRightDrag,    &ConstStrings::MsgMouseRightDown, &ConstStrings::MsgMouseInitMiddleDrag,
        &ConstStrings::MsgMouseMiddleDrag,   &ConstStrings::MsgClickLeft,      &ConstStrings::MsgDoubleClickLeft};
    const int type = m_choices.Below(static_cast<int>(std::size(types)));
    Note("mouse", type);
    Deliver(workflow::MouseMsg(*types[type], 1, m_choices.Integer(), 0));
}

void HostileSession::SendMode() {
    constexpr const char* modes[] = {"leave_markup_mode", "leave_markup_mode", "enter_markup_mode",
                                     "update_preferences", "other"};
    const int mode = m_choices.Below(static_cast<int>(std::size(modes)));
    const char* addressee = m_choices.Chance(80) ? "touch" : "picker";
    Note("mode", mode, *addressee);
    Deliver(workflow::ModeMsg(ConstStrings::MsgSetMode, du::Symbol(addressee), du::Symbol(modes[mode]), nullptr, 0));
}

void HostileSession::SendPreferences() {
    m_host.answers.showsSpinCenter = m_choices.Chance(70);
    m_host.answers.hasPreferenceKey = m_choices.Chance(80);
    Note("preferences", m_host.answers.showsSpinCenter, m_host.answers.hasPreferenceKey);
    m_host.UpdatePreferences();
    NoteHostChange();
}

// A component may go, and others may come, while one hears the message.
void HostileSession::Deliver(const workflow::Msg& message) {
    if (touch::TouchWorkflow* component = m_host.Component()) {
        component->HandleMsg(message);
    }
    for (std::size_t i = 0; i < m_companions.size(); ++i) {
        m_companions[i].workflow->HandleMsg(message);
    }
}

void HostileSession::OpenView() {
    constexpr ViewKind kinds[] = {ViewKind::Shape, ViewKind::Shape,     ViewKind::Shape,   ViewKind::Drawing,
                                  ViewKind::Image, ViewKind::Document,  ViewKind::EcadPcb, ViewKind::Other,
                                  ViewKind::None,  ViewKind::FalseShape};
    const ViewKind kind = m_choices.OneOf(kinds);
    Note("view", static_cast<int>(kind));
    m_host.SetView(kind);
    for (std::size_t i = 0; i < m_companions.size(); ++i) {
        if (m_host.Component() != nullptr && m_choices.Chance(50)) {
            m_companions[i].workflow->SetView(m_host.Component()->GetView());
        }
    }
    NoteHostChange();
}

void HostileSession::ChangeCamera() {
    constexpr unsigned int sizes[] = {1280, 1280, 1280, 640, 0, 1, std::numeric_limits<unsigned int>::max()};
    HostAnswers& answers = m_host.answers;
    const bool orthographic = m_choices.Chance(50);
    Note("camera", orthographic);
    dg::Location location;
    location.SetMat(ChooseAxes(m_choices));
    location.SetPos({0, 1, m_choices.Chance(95) ? 20 : m_choices.Wild()});
    answers.camera.SetLocation(location);
    const double right = m_choices.Chance(95) ? 1 : m_choices.Wild();
    answers.camera.SetProjection(-1, right, -0.5, 0.5, -1, orthographic);
    answers.navMethod = du::Symbol(m_choices.Chance(40) ? "explore" : "standard");
    answers.pageLocation = location;
    answers.orthoWidth = m_choices.Chance(95) ? 16 : m_choices.Wild();
    answers.pageWidth = m_choices.OneOf(sizes);
    answers.pageHeight = answers.pageWidth == 1280 ? 800 : m_choices.OneOf(sizes);
    answers.camera.SetViewport(answers.pageWidth, answers.pageHeight);
    NoteHostChange();
}

void HostileSession::ChangeAnswers() {
    constexpr BoxTime times[] = {BoxTime::NextTick, BoxTime::NextTick, BoxTime::WhileManaging, BoxTime::WhileAsking,
                                 BoxTime::Never};
    const dg::DBox boxes[] = {dg::DBox({-3, -2, -1}, {1, 2, 3}), dg::DBox({-3, -2, -1}, {1, 2, 3}), dg::DBox::EMPTY,
                              dg::DBox({0, 0, 0}, {0, 0, 0})};
    constexpr Setters setters[] = {Setters::Store, Setters::Store, Setters::Store, Setters::Clamp, Setters::Ignore};
    Note("answers");
    HostAnswers& answers = m_host.answers;
    const std::uint32_t has = m_choices.Bits(1);
    answers.hasScene = (has & 1U) == 0;
    answers.hasPreferences = (has & 2U) == 0;
    answers.hasTransitionQueue = (has & 4U) == 0;
    answers.storesStatus = (has & 8U) == 0;
    answers.hasTexts = (has & 16U) == 0;
    answers.takesTraces = (has & 32U) == 0;
    answers.acceptsRequests = (has & 64U) == 0;
    answers.delivers = (has & 128U) == 0;
    answers.boxTime = m_choices.OneOf(times);
    answers.box = m_choices.Chance(95) ? m_choices.OneOf(boxes) : dg::DBox({0, 0, 0}, {1, 1, m_choices.Wild()});
    answers.setters = m_choices.OneOf(setters);
    answers.spinCenter = {static_cast<double>(m_choices.Between(-2, 2)), 0,
                          m_choices.Chance(95) ? 1 : m_choices.Wild()};
    answers.navSpeed = m_choices.Chance(95) ? m_choices.Between(-1, 3) : m_choices.Wild();
    m_host.SetManager(m_choices.Chance(95));
    NoteHostChange();
}

void HostileSession::AnswerRequests() {
    m_host.answers.boxStatus = m_choices.Below(2);
    m_host.answers.boxRepeats = 1 + m_choices.Below(2);
    m_host.answers.answersCancelled = m_choices.Chance(20);
    Note("answer", m_host.answers.boxStatus, m_host.answers.boxRepeats);
    m_host.AnswerRequests();
}

// It has played, or it goes where it is.
void HostileSession::EndTransition() {
    Note("end of transition");
    if (m_host.transition && m_choices.Chance(70)) {
        const auto& spin = static_cast<const animation::CameraSpinTransition&>(*m_host.transition);
        m_host.answers.camera.SetLocation(spin.end);
    }
    m_host.transition = nullptr;
}

// The next call of an operation does something before its work.
void HostileSession::CallBackLater() {
    const auto call = static_cast<HostCall>(m_choices.Below(HostCallCount));
    const int what = m_choices.Below(86);
    const auto callBack = [this, call, what] {
        if (m_checking || m_depth == MaxDepth) {
            return;
        }
        m_host.On(
            call, [] {}, 0);
        ++m_depth;
        NoteDisorder();
        Note(NameOf(call), what, m_depth);
        if (m_choices.Chance(30)) {
            Note("frame");
            SendFrame(m_hand.MakeFrame(1));
        } else {
            DoSomething(what);
        }
        Note("back");
        --m_depth;
    };
    m_host.On(call, callBack, FaultyHost::Always);
}

void HostileSession::CopyOrDrop() {
    const int what = m_choices.Below(10);
    touch::TouchWorkflow* main = m_host.Component();
    Note("components", what, static_cast<std::int64_t>(m_companions.size()));
    if (what < 2 && main != nullptr) {
        if (m_companions.size() == MaxCompanions) {
            TakeCompanion();
        }
        m_companions.push_back({du::SmartPtr<touch::TouchWorkflow>(new touch::TouchWorkflow(*main)), m_invariants});
    } else if (what < 4 && main != nullptr && !m_companions.empty()) {
        const Companion other = m_companions.front();
        m_invariants = other.invariants;
        *main = *other.workflow;
    } else if (what < 5 && main != nullptr && !m_companions.empty()) {
        m_companions.back().invariants = m_invariants;
        const Companion other = m_companions.back();
        *other.workflow = *main;
    } else if (what < 6 && main != nullptr && !m_companions.empty()) {
        const Companion other = TakeCompanion();
        m_companions.push_back({du::SmartPtr<touch::TouchWorkflow>(main), m_invariants});
        m_invariants = other.invariants;
        m_host.Install(other.workflow);
    } else if (what < 7 && !m_companions.empty()) {
        TakeCompanion();
    } else if (what < 8) {
        CallBesideTheDispatch();
    } else {
        m_invariants = Invariants();
        m_host.Install(m_choices.Chance(50) ? m_host.MakeAnother("touch") : Create(m_choices));
        m_host.SetView(ViewKind::Shape);
    }
    NoteKinship(m_invariants);
    for (Companion& companion : m_companions) {
        NoteKinship(companion.invariants);
    }
    NoteHostChange();
}

// The first of them, out of the list before it can go: the host calls back when a view goes with it, and may change the
// list.
HostileSession::Companion HostileSession::TakeCompanion() {
    Companion taken = m_companions.front();
    m_companions.erase(m_companions.begin());
    return taken;
}

void HostileSession::NoteKinship(Invariants& invariants) const {
    invariants.ShareRequest();
    if (m_depth > 0) {
        invariants.NoteCopyInCall();
    }
}

// What a component offers to other callers than the dispatch. A box that nobody asked for is taken all the same.
void HostileSession::CallBesideTheDispatch() {
    touch::TouchWorkflow* main = m_host.Component();
    if (main == nullptr) {
        return;
    }
    const du::SmartPtr<touch::TouchWorkflow> held(main);
    main->ReceiveBounds(m_choices.Chance(50) ? m_host.answers.box : dg::DBox::EMPTY);
    main->SingleFinger2DInitialize(0, 0);
    main->SetOriginalViewWidth(m_choices.Chance(50) ? main->GetViewWidth() : main->GetOriginalViewWidth());
    // Any numbers may be in the snapshot; reading it must do no harm.
    static_cast<void>(main->GetPixelCenter());
    static_cast<void>(main->GetCameraLocation());
    static_cast<void>(main->GetCameraU() + main->GetCameraV() + main->GetCameraW());
    if (main->IsOrthographic() == main->IsPerspective() || main->TraceMouseAndKeys() ||
        !(main->GetObjectClass() == touch::TouchWorkflow::s_class)) {
        m_fault = "the component contradicts itself";
    }
    NoteDisorder();
}

void HostileSession::NoteHostChange() {
    m_checking = true;
    if (m_host.Component() != nullptr) {
        m_invariants.NoteView(*m_host.Component());
    }
    m_invariants.ForgetReferences();
    for (Companion& companion : m_companions) {
        companion.invariants.NoteView(*companion.workflow);
        companion.invariants.ForgetReferences();
    }
    ShareDisorder();
    m_checking = false;
}

// They all move one camera: what one component may do to it, all may find.
void HostileSession::ShareDisorder() {
    const bool isSensible =
        m_invariants.IsSensible() && std::all_of(m_companions.begin(), m_companions.end(),
                                                 [](const Companion& other) { return other.invariants.IsSensible(); });
    if (!isSensible) {
        NoteDisorder();
    }
}

void HostileSession::NoteDisorder() {
    m_invariants.NoteDisorder();
    for (Companion& companion : m_companions) {
        companion.invariants.NoteDisorder();
    }
}

void HostileSession::Note(const char* name, std::int64_t first, std::int64_t second) {
    if (m_log != nullptr) {
        *m_log << name << ' ' << first << ' ' << second << std::endl;
    }
    if (m_events.size() == KeptEvents) {
        m_events.erase(m_events.begin());
    }
    m_events.push_back({name, first, second});
}

void HostileSession::CheckInvariants() {
    m_checking = true;
    ShareDisorder();
    if (m_host.Component() != nullptr) {
        CheckInvariants(*m_host.Component(), m_invariants);
    }
    for (Companion& companion : m_companions) {
        CheckInvariants(*companion.workflow, companion.invariants);
    }
    m_checking = false;
    if (m_fault.empty() && m_host.openUpdateGroups != 0) {
        m_fault = "an update group is open";
    }
}

void HostileSession::CheckInvariants(const touch::TouchWorkflow& workflow, Invariants& invariants) {
    // What companions hold changes with their touches.
    const bool settled = !m_host.transition && m_host.CountWaitingRequests() == 0 && m_companions.empty();
    const std::string fault = invariants.FindFault(workflow, settled);
    if (fault.empty() || !m_fault.empty()) {
        return;
    }
    std::ostringstream text;
    text << fault << ", at frame " << m_frames << ", after";
    for (const Event& event : m_events) {
        text << "\n  " << event.name << ' ' << event.first << ' ' << event.second;
    }
    m_fault = text.str();
}

std::string HostileSession::GetCameraText() const {
    const HostAnswers& answers = m_host.answers;
    std::array<double, 5> window{};
    bool orthographic = false;
    answers.camera.GetProjection(window[0], window[1], window[2], window[3], window[4], orthographic);
    std::ostringstream text;
    text << std::setprecision(std::numeric_limits<double>::max_digits10) << answers.orthoWidth;
    for (const double number : window) {
        text << ' ' << number;
    }
    for (const dg::Location& location : {answers.camera.GetLocation(), answers.pageLocation}) {
        for (const dg::FVec3& axis : {location.GetU(), location.GetV(), location.GetW()}) {
            text << ' ' << axis.x << ' ' << axis.y << ' ' << axis.z;
        }
        text << ' ' << location.GetPos().x << ' ' << location.GetPos().y << ' ' << location.GetPos().z;
    }
    return text.str();
}

}  // namespace fuzz
