// A story checks the invariants after each event and the trace channel at its end, so that no test has to ask for
// either.
#include "tests/support/FingerScript.h"

#include "viewer/Picking.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <stdexcept>

namespace tests {
namespace {

constexpr int TickMs = 10;

viewer::ViewSpec LookingAlongZ(bool orthographic, double halfWidth, double halfHeight) {
    viewer::ViewSpec view;
    view.width = 1000;
    view.height = 600;
    view.camera.orthographic = orthographic;
    view.camera.left = -halfWidth;
    view.camera.right = halfWidth;
    view.camera.bottom = -halfHeight;
    view.camera.top = halfHeight;
    view.camera.location.SetPos({0, 0, 20});
    view.bounds = {{-2, -2, -2}, {2, 2, 2}};
    return view;
}

const char* NameOfAnswer(const std::optional<bool>& answer) {
    if (!answer) {
        return "unheard";
    }
    return *answer ? "swallowed" : "passed";
}

struct ToText {
    std::string operator()(const viewer::PlainCall& c) const { return c.operation; }
    std::string operator()(const viewer::SetCameraLocationCall&) const { return "SetCameraLocation"; }
    std::string operator()(const viewer::SetWidthCall& c) const { return c.operation; }
    std::string operator()(const viewer::SetPositionCall&) const { return "SetPosition"; }
    std::string operator()(const viewer::SendMessageCall& c) const {
        return c.type + " " + std::to_string(c.x) + " " + std::to_string(c.y) + " " + NameOfAnswer(c.componentAnswer);
    }
    std::string operator()(const viewer::SendModeMessageCall& c) const {
        return c.workflow + " " + c.mode + " " + std::to_string(c.value);
    }
    std::string operator()(const viewer::SetStatusMessageCall& c) const {
        return "SetStatusMessage " + std::to_string(c.slot) + " " + c.text;
    }
    std::string operator()(const viewer::AddMarkupCall&) const { return "AddMarkup"; }
    std::string operator()(const viewer::AddTransitionCall&) const { return "AddTransition"; }
    std::string operator()(const viewer::ManageObjectCall& c) const {
        return c.accepted ? "ManageObject accepted" : "ManageObject refused";
    }
    std::string operator()(const viewer::GetBoundingBoxCall& c) const {
        return std::string("GetBoundingBox") + (c.selectedOnly ? " selected" : " all") +
               (c.visibleOnly ? " visible" : " any");
    }
    std::string operator()(const viewer::TraceCall& c) const { return "Trace " + c.text; }
};

bool IsStatusCall(const viewer::Call& call) {
    const auto* plain = std::get_if<viewer::PlainCall>(&call);
    return std::holds_alternative<viewer::SetStatusMessageCall>(call) ||
           (plain != nullptr && plain->operation == std::string("UpdateStatusMessage"));
}

bool IsMessage(const viewer::Call& call) {
    return std::holds_alternative<viewer::SendMessageCall>(call) ||
           std::holds_alternative<viewer::SendModeMessageCall>(call);
}

template <class Wanted>
Texts TextsOf(const std::vector<viewer::Call>& calls, Wanted isWanted) {
    Texts texts;
    for (const viewer::Call& call : calls) {
        if (isWanted(call)) {
            texts.push_back(std::visit(ToText{}, call));
        }
    }
    return texts;
}

}  // namespace

viewer::ViewSpec OrthographicView() {
    return LookingAlongZ(true, 10, 6);
}

viewer::ViewSpec PerspectiveView() {
    return LookingAlongZ(false, 0.5, 0.3);
}

viewer::ViewSpec ExploreView() {
    viewer::ViewSpec view = PerspectiveView();
    view.navMethod = "explore";
    return view;
}

viewer::ViewSpec PageView(const std::string& kind) {
    viewer::ViewSpec view;
    view.kind = kind;
    view.width = 800;
    view.height = 400;
    view.orthoWidth = 16;
    view.placement.SetPos({3, 4, 0});
    return view;
}

viewer::HostSettings WithSwitch(const std::string& name) {
    viewer::HostSettings settings;
    settings.environment = {name};
    return settings;
}

FingerScript FingerScript::OnShapeView(const viewer::ViewSpec& view, const viewer::HostSettings& settings) {
    return {view, settings};
}

FingerScript FingerScript::On2DView(const std::string& kind, const viewer::HostSettings& settings) {
    return {PageView(kind), settings};
}

FingerScript::FingerScript(const viewer::ViewSpec& view, const viewer::HostSettings& settings) : m_viewer(settings) {
    m_viewer.SetView(view);
    m_viewer.LoadComponent(TOUCHNAV_PLUGIN, view.kind == "other" ? "shapeview" : view.kind);
    CheckInvariantsOfNewView();
    Tick();
}

FingerScript::~FingerScript() {
    Texts traces;
    for (const viewer::Call& call : m_viewer.GetRecorder().GetCalls()) {
        if (const auto* trace = std::get_if<viewer::TraceCall>(&call)) {
            traces.push_back(trace->text);
        }
    }
    EXPECT_EQ(traces, m_announcedTraces) << "texts on the trace channel";
}

FingerScript& FingerScript::Down(const std::vector<Place>& places) {
    for (const Place& place : places) {
        m_fingers.push_back({place, workflow::TouchDown});
    }
    return SendFrame();
}

FingerScript& FingerScript::Move(const std::vector<Place>& places) {
    for (const Place& place : places) {
        Find(place.id).place = place;
    }
    return SendFrame();
}

FingerScript& FingerScript::Up(const std::vector<int>& ids) {
    for (const int id : ids) {
        Find(id).flags = workflow::TouchUp;
    }
    return SendFrame();
}

FingerScript& FingerScript::Rest() {
    return SendFrame();
}

FingerScript& FingerScript::Frame(const std::vector<workflow::TouchRecord>& records, std::int32_t count) {
    workflow::TouchFrame frame;
    frame.count = count;
    std::copy(records.begin(), records.end(), frame.records.begin());
    return Send(frame);
}

FingerScript::Finger& FingerScript::Find(int id) {
    const auto found =
        std::find_if(m_fingers.begin(), m_fingers.end(), [&](const Finger& finger) { return finger.place.id == id; });
    if (found == m_fingers.end()) {
        throw std::logic_error("the story has no finger " + std::to_string(id) + " on the screen");
    }
    return *found;
}

FingerScript& FingerScript::SendFrame() {
    workflow::TouchFrame frame;
    frame.count = static_cast<std::int32_t>(m_fingers.size());
    for (std::size_t i = 0; i < m_fingers.size(); ++i) {
        const Finger& finger = m_fingers[i];
        frame.records.at(i) = {finger.place.id, finger.place.x, finger.place.y, m_touchTime, finger.flags};
    }
    std::erase_if(m_fingers, [](const Finger& finger) { return finger.flags == workflow::TouchUp; });
    for (Finger& finger : m_fingers) {
        finger.flags = workflow::TouchMove;
    }
    return Send(frame);
}

FingerScript& FingerScript::Send(const workflow::TouchFrame& frame) {
    m_invariants.NoteFrame(frame);
    m_answer = m_viewer.Touch(frame);
    return CheckInvariants();
}

FingerScript& FingerScript::CheckInvariants() {
    if (m_viewer.GetComponent() != nullptr) {
        EXPECT_EQ(m_invariants.FindFault(Component(), !m_viewer.IsTransitionPlaying()), "");
    }
    return *this;
}

FingerScript& FingerScript::CheckInvariantsOfNewView() {
    if (m_viewer.GetComponent() != nullptr) {
        m_invariants.NoteView(Component());
    }
    return ForgetReferences().CheckInvariants();
}

FingerScript& FingerScript::ForgetReferences() {
    m_invariants.ForgetReferences();
    return *this;
}

FingerScript& FingerScript::Tick(int milliseconds) {
    m_hostTime += milliseconds;
    m_touchTime += milliseconds;
    m_answer = m_viewer.Tick(m_hostTime, milliseconds);
    return CheckInvariants();
}

FingerScript& FingerScript::Wait(int milliseconds) {
    for (int left = milliseconds; left > 0; left -= TickMs) {
        Tick(std::min(left, TickMs));
    }
    return *this;
}

FingerScript& FingerScript::Hold(int milliseconds) {
    for (int left = milliseconds; left > 0; left -= TickMs) {
        Tick(std::min(left, TickMs));
        Rest();
    }
    return *this;
}

FingerScript& FingerScript::SwitchMode() {
    const bool before = Inspect().GetNavigateMode();
    Wait(600);  // fingers of an earlier touch would hold the first slots
    Down({{91, 300, 300}, {92, 400, 300}, {93, 500, 300}}).Hold(3050).Up({91, 92, 93}).Wait(600);
    if (Inspect().GetNavigateMode() == before) {
        throw std::logic_error("holding three fingers did not switch the mode");
    }
    return Mark();
}

FingerScript& FingerScript::Mouse(const std::string& type, int x, int y) {
    m_answer = m_viewer.Mouse(type, x, y);
    return CheckInvariants();
}

FingerScript& FingerScript::Mode(const std::string& mode, const std::string& workflow) {
    m_answer = m_viewer.SetMode(workflow, mode);
    return CheckInvariants();
}

FingerScript& FingerScript::Preferences(const std::optional<viewer::PreferenceValues>& values,
                                        const std::string& workflow) {
    m_answer = m_viewer.UpdatePreferences(values, workflow);
    return ForgetReferences().CheckInvariants();
}

FingerScript& FingerScript::StatusBar() {
    m_answer = m_viewer.UpdateStatusBar();
    return CheckInvariants();
}

FingerScript& FingerScript::SetView(const std::optional<viewer::ViewSpec>& view) {
    m_viewer.SetView(view);
    m_answer.reset();
    return CheckInvariantsOfNewView();
}

FingerScript& FingerScript::Change(const viewer::ViewChange& change) {
    m_viewer.ChangeView(change);
    m_answer.reset();
    return CheckInvariantsOfNewView();
}

std::string FingerScript::AnswerTo(const std::string& mouseType) {
    return NameOfAnswer(Mouse(mouseType).Answer());
}

std::vector<viewer::Call> FingerScript::CallsSinceMark() const {
    const std::vector<viewer::Call>& calls = m_viewer.GetRecorder().GetCalls();
    return {calls.begin() + static_cast<std::ptrdiff_t>(m_mark), calls.end()};
}

Texts FingerScript::Actions() const {
    return TextsOf(CallsSinceMark(), [](const viewer::Call& call) { return !IsStatusCall(call); });
}

Texts FingerScript::StatusCalls() const {
    return TextsOf(CallsSinceMark(), IsStatusCall);
}

FingerScript& FingerScript::Mark() {
    m_mark = m_viewer.GetRecorder().GetCalls().size();
    return *this;
}

FingerScript& FingerScript::ExpectActions(const Texts& expected, const char* file, int line) {
    Compare("actions", Actions(), expected, file, line);
    return *this;
}

FingerScript& FingerScript::ExpectMessages(const Texts& expected, const char* file, int line) {
    Compare("messages", TextsOf(CallsSinceMark(), IsMessage), expected, file, line);
    return *this;
}

void FingerScript::Compare(const char* what, const Texts& actual, const Texts& expected, const char* file, int line) {
    const testing::ScopedTrace place(file, line, "expected here");
    EXPECT_EQ(actual, expected) << what << " since the latest mark";
    Mark();
}

FingerScript& FingerScript::AnnounceTrace(const std::string& text) {
    m_announcedTraces.push_back(text + "\n");
    return *this;
}

dg::DPoint2D FingerScript::PixelOf(const dg::DPoint3D& point) const {
    return viewer::ProjectPoint(Camera(), point).value();
}

touch::TouchWorkflow& FingerScript::Component() const {
    return static_cast<touch::TouchWorkflow&>(*m_viewer.GetComponent());
}

}  // namespace tests
