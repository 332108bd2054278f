// Every operation first runs what the test has set for it, which may throw or call back, and then answers from settings
// that the test can change at any moment.
#include "tests/support/FaultyHost.h"

#include "host/platform/Display.h"
#include "host/workflow/ConstStrings.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>

namespace tests {
namespace {

constexpr std::size_t KeptTexts = 64;
constexpr int UsualPixelsPerInch = 96;
// Where setters that clamp end, in model units.
constexpr double FarthestPosition = 25;
constexpr double WidestWindow = 25;

// Not constexpr, as in the viewer: on Windows another library's addresses are no constants.
const hxk::ClassType EcadPcbType{hxk::EcadPcbViewId, "EcadPcbView", &hxk::View2D::CLASS_TYPE};
const hxk::ClassType OtherType{1000, "OtherView", &hxk::View::CLASS_TYPE};

void Keep(std::vector<std::string>& texts, std::string text) {
    if (texts.size() == KeptTexts) {
        texts.erase(texts.begin());
    }
    texts.push_back(std::move(text));
}

dg::DPoint3D ClampPosition(const dg::DPoint3D& position) {
    const auto clamp = [](double value) { return std::clamp(value, -FarthestPosition, FarthestPosition); };
    return {clamp(position.x), clamp(position.y), clamp(position.z)};
}

class CountedComponent final : public touch::TouchWorkflow {
public:
    CountedComponent(const du::Symbol& name, int& alive) : TouchWorkflow(name), m_alive(alive) { ++m_alive; }
    CountedComponent(const CountedComponent&) = delete;
    CountedComponent& operator=(const CountedComponent&) = delete;
    ~CountedComponent() override { --m_alive; }

private:
    int& m_alive;
};

class FaultyPreferences final : public hxk::Preferences {
public:
    explicit FaultyPreferences(const FaultyHost& host) : m_host(host) {}
    bool GetBool(const du::Symbol& /*key*/, bool& value, bool* /*isOwn*/) const override {
        m_host.Called(HostCall::GetBool);
        if (m_host.answers.hasPreferenceKey) {
            value = m_host.answers.showsSpinCenter;
        }
        return m_host.answers.hasPreferenceKey;
    }

private:
    const FaultyHost& m_host;
};

class FaultyQueue final : public workflow::TransitionQueue {
public:
    explicit FaultyQueue(FaultyHost& host) : m_host(host) {}
    void AddTransition(const du::SmartPtr<animation::Transition>& transition, std::int64_t /*context*/) override {
        m_host.Called(HostCall::AddTransition);
        m_host.transition = transition;
    }

private:
    FaultyHost& m_host;
};

// What every view has. Base is one of the host's view classes.
template <class Base>
class FaultyView : public Base {
public:
    FaultyView(FaultyHost& host, const hxk::ClassType& type) : m_host(host), m_type(type) {}
    FaultyView(const FaultyView&) = delete;
    FaultyView& operator=(const FaultyView&) = delete;
    ~FaultyView() override { m_host.Called(HostCall::ViewGoes); }

    const hxk::ClassType& GetClassType() const override {
        m_host.Called(HostCall::GetClassType);
        return m_type;
    }
    void GetScene(du::SmartPtr<hxk::Scene>& scene) const override {
        m_host.Called(HostCall::GetScene);
        scene = m_host.answers.hasScene ? new hxk::Scene : nullptr;
    }
    bool GetDefaultPreferences(du::SmartPtr<hxk::Preferences>& preferences) override {
        m_host.Called(HostCall::GetDefaultPreferences);
        preferences = m_host.answers.hasPreferences ? new FaultyPreferences(m_host) : nullptr;
        return m_host.answers.hasPreferences;
    }
    void BeginUpdateGroup() override {
        m_host.Called(HostCall::BeginUpdateGroup);
        ++m_host.openUpdateGroups;
    }
    void EndUpdateGroup() override {
        --m_host.openUpdateGroups;
        m_host.Called(HostCall::EndUpdateGroup);
    }

protected:
    FaultyHost& m_host;  // NOLINT(cppcoreguidelines-non-private-member-variables-in-classes): for the views below

private:
    const hxk::ClassType& m_type;
};

class FaultyShapeView final : public FaultyView<hxk::ShapeView> {
public:
    explicit FaultyShapeView(FaultyHost& host) : FaultyView(host, hxk::ShapeView::CLASS_TYPE) {}

    void GetCamera(dg::Camera3D& camera) const override {
        m_host.Called(HostCall::GetCamera);
        camera = m_host.answers.camera;
    }
    void GetSpinCenter(dg::DPoint3D& center) const override {
        m_host.Called(HostCall::GetSpinCenter);
        center = m_host.answers.spinCenter;
    }
    const du::Symbol& GetNavMethod() const override {
        m_host.Called(HostCall::GetNavMethod);
        return m_host.answers.navMethod;
    }
    double GetNavSpeed() const override {
        m_host.Called(HostCall::GetNavSpeed);
        return m_host.answers.navSpeed;
    }
    void GetBoundingBox(bool /*selectedOnly*/, bool /*visibleOnly*/, hxk::BoundingBoxEvent* /*request*/) override {
        m_host.Called(HostCall::GetBoundingBox);
        if (m_host.answers.boxTime == BoxTime::WhileAsking) {
            m_host.AnswerRequests();
        }
    }
    void SetCameraLocation(const dg::Location& location) override;
    void SetOrthographicWidth(double width, du::SmartPtr<du::RefCounted>& change) override;
    void AddMarkup(const du::SmartPtr<hxk::Markup>& markup) override {
        m_host.Called(HostCall::AddMarkup);
        m_markups.push_back(markup);
    }
    void RemoveMarkup(const du::SmartPtr<hxk::Markup>& markup) override {
        m_host.Called(HostCall::RemoveMarkup);
        std::erase(m_markups, markup);
    }

private:
    std::vector<du::SmartPtr<hxk::Markup>> m_markups;
};

void FaultyShapeView::SetCameraLocation(const dg::Location& location) {
    m_host.Called(HostCall::SetCameraLocation);
    if (m_host.answers.setters == Setters::Ignore) {
        return;
    }
    dg::Location stored = location;
    if (m_host.answers.setters == Setters::Clamp) {
        stored.SetPos(ClampPosition(location.GetPos()));
    }
    m_host.answers.camera.SetLocation(stored);
}

void FaultyShapeView::SetOrthographicWidth(double width, du::SmartPtr<du::RefCounted>& change) {
    m_host.Called(HostCall::SetOrthographicWidth);
    change = nullptr;
    dg::Camera3D& camera = m_host.answers.camera;
    double left = 0, right = 0, bottom = 0, top = 0, distance = 0;
    bool orthographic = false;
    camera.GetProjection(left, right, bottom, top, distance, orthographic);
    if (m_host.answers.setters == Setters::Ignore || !orthographic || left == right) {
        return;
    }
    if (m_host.answers.setters == Setters::Clamp) {
        width = std::clamp(width, 1.0, WidestWindow);
    }
    const double scale = width / (right - left);
    camera.SetProjection(left * scale, right * scale, bottom * scale, top * scale, distance, orthographic);
}

// Base is one of the host's 2D view classes.
template <class Base>
class FaultyPage final : public FaultyView<Base> {
public:
    using FaultyView<Base>::FaultyView;

    void GetOrthoWidth(double& width) const override {
        this->m_host.Called(HostCall::GetOrthoWidth);
        width = this->m_host.answers.orthoWidth;
    }
    void SetOrthoWidth(double width) override {
        this->m_host.Called(HostCall::SetOrthoWidth);
        switch (this->m_host.answers.setters) {
        // As a viewer does: two fingers that meet in one pixel ask for an infinite width.
        case Setters::Store:
            this->m_host.answers.orthoWidth = std::isinf(width) ? this->m_host.answers.orthoWidth : width;
            return;
        case Setters::Clamp: this->m_host.answers.orthoWidth = std::clamp(width, 1.0, WidestWindow); return;
        case Setters::Ignore: return;
        }
    }
    void SetPosition(const dg::DPoint3D& position) override {
        this->m_host.Called(HostCall::SetPosition);
        switch (this->m_host.answers.setters) {
        case Setters::Store: this->m_host.answers.pageLocation.SetPos(position); return;
        case Setters::Clamp: this->m_host.answers.pageLocation.SetPos(ClampPosition(position)); return;
        case Setters::Ignore: return;
        }
    }
    void GetViewSize(unsigned int& width, unsigned int& height) const override {
        this->m_host.Called(HostCall::GetViewSize);
        width = this->m_host.answers.pageWidth;
        height = this->m_host.answers.pageHeight;
    }
    void GetViewLocation(dg::Location& location) const override {
        this->m_host.Called(HostCall::GetViewLocation);
        location = this->m_host.answers.pageLocation;
    }
};

du::SmartPtr<hxk::View> MakeView(FaultyHost& host, ViewKind kind) {
    switch (kind) {
    case ViewKind::None: return nullptr;
    case ViewKind::Shape: return du::SmartPtr<hxk::View>(new FaultyShapeView(host));
    case ViewKind::Drawing:
        return du::SmartPtr<hxk::View>(new FaultyPage<hxk::DrawingView>(host, hxk::DrawingView::CLASS_TYPE));
    case ViewKind::Image:
        return du::SmartPtr<hxk::View>(new FaultyPage<hxk::ImageView>(host, hxk::ImageView::CLASS_TYPE));
    case ViewKind::Document:
        return du::SmartPtr<hxk::View>(new FaultyPage<hxk::DocumentView>(host, hxk::DocumentView::CLASS_TYPE));
    case ViewKind::EcadPcb: return du::SmartPtr<hxk::View>(new FaultyPage<hxk::View2D>(host, EcadPcbType));
    case ViewKind::Other: return du::SmartPtr<hxk::View>(new FaultyView<hxk::View>(host, OtherType));
    case ViewKind::FalseShape:
        return du::SmartPtr<hxk::View>(new FaultyPage<hxk::DrawingView>(host, hxk::ShapeView::CLASS_TYPE));
    }
    return nullptr;
}

}  // namespace

const char* NameOf(HostCall call) {
    static constexpr const char* Names[] = {"SendMessage",
                                            "SendModeMessage",
                                            "SetStatusMessage",
                                            "UpdateStatusMessage",
                                            "ManageObject",
                                            "StopTransition",
                                            "GetTransitionContext",
                                            "GetTransitionQueue",
                                            "AddTransition",
                                            "GetClassType",
                                            "GetScene",
                                            "GetDefaultPreferences",
                                            "GetBool",
                                            "BeginUpdateGroup",
                                            "EndUpdateGroup",
                                            "ViewGoes",
                                            "GetCamera",
                                            "GetSpinCenter",
                                            "GetNavMethod",
                                            "GetNavSpeed",
                                            "GetBoundingBox",
                                            "SetCameraLocation",
                                            "SetOrthographicWidth",
                                            "AddMarkup",
                                            "RemoveMarkup",
                                            "GetOrthoWidth",
                                            "SetOrthoWidth",
                                            "SetPosition",
                                            "GetViewSize",
                                            "GetViewLocation",
                                            "FindText",
                                            "IsTraceEnabled",
                                            "WriteTrace",
                                            "IsPresent",
                                            "MarkupContentChanged",
                                            "RequestCancelled"};
    static_assert(std::extent_v<decltype(Names)> == HostCallCount);
    return Names[static_cast<std::size_t>(call)];
}

HostAnswers::HostAnswers() {
    dg::Location location;
    location.SetPos({0, 0, 20});
    pageLocation = location;
    camera.SetLocation(location);
    camera.SetViewport(1000, 600);
    camera.SetProjection(-10, 10, -6, 6, -1, true);
}

void HostAnswers::MakePerspective() {
    camera.SetProjection(-0.5, 0.5, -0.3, 0.3, -1, false);
}

int FaultyHost::s_components = 0;

FaultyHost::FaultyHost(const HostSetup& setup) : m_setup(setup) {
    platform::SetPixelsPerInch(setup.ppiX, setup.ppiY);
    platform::SetEnvironmentProvider(this);
    du::Localizer::SetProvider(this);
    dp::HXTracer::SetSink(this);
    hxk::Markup::SetListener(this);
    m_component = MakeAnother("touch");
    m_component->SetPreselectGuard(setup.preselectGuard);
    SetManager(true);
    SetView(ViewKind::Shape);
    Tick();
}

FaultyHost::~FaultyHost() {
    ClearHooks();
    // A request that waits and the component hold each other.
    answers.boxStatus = 1;
    answers.answersCancelled = false;
    AnswerRequests();
    Drop();
    transition = nullptr;
    hxk::Markup::SetListener(nullptr);
    dp::HXTracer::SetSink(nullptr);
    du::Localizer::SetProvider(nullptr);
    platform::SetEnvironmentProvider(nullptr);
    platform::SetPixelsPerInch(UsualPixelsPerInch, UsualPixelsPerInch);
}

void FaultyHost::On(HostCall call, Hook hook, int times) {
    Watcher& watcher = m_hooks[static_cast<std::size_t>(call)];
    watcher.hook = std::move(hook);
    watcher.times = times;
}

void FaultyHost::ClearHooks() {
    for (Watcher& watcher : m_hooks) {
        watcher.times = 0;
    }
}

void FaultyHost::Called(HostCall call) const {
    Watcher& watcher = m_hooks[static_cast<std::size_t>(call)];
    ++watcher.calls;
    if (watcher.isRunning || watcher.times == 0) {
        return;
    }
    if (watcher.times > 0) {
        --watcher.times;
    }
    struct Running {
        explicit Running(bool& target) : flag(target) { flag = true; }
        ~Running() { flag = false; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        bool& flag;
    };
    const Running running(watcher.isRunning);
    const Hook hook = watcher.hook;  // which may set another one
    hook();
}

bool FaultyHost::Deliver(const workflow::Msg& message) {
    return m_component && m_component->HandleMsg(message);
}

bool FaultyHost::Touch(const std::vector<HostFinger>& fingers) {
    workflow::TouchFrame frame{static_cast<int>(fingers.size()), {}};
    for (std::size_t i = 0; i < std::min(fingers.size(), frame.records.size()); ++i) {
        const HostFinger& finger = fingers[i];
        frame.records.at(i) = {finger.id, finger.x, finger.y, m_touchTime, finger.flags};
    }
    return Frame(frame);
}

bool FaultyHost::Frame(const workflow::TouchFrame& frame) {
    return Deliver(workflow::TouchMsg(workflow::ConstStrings::MsgTouch, frame));
}

bool FaultyHost::Tick(int milliseconds) {
    m_now += milliseconds;
    m_touchTime += milliseconds;
    if (answers.boxTime == BoxTime::NextTick) {
        AnswerRequests();
    }
    return Deliver(workflow::TimerMsg(workflow::ConstStrings::MsgTimer, m_now, milliseconds));
}

bool FaultyHost::Mouse(const du::Symbol& type, int x, int y) {
    return Deliver(workflow::MouseMsg(type, x, y, 0));
}

bool FaultyHost::Mode(const char* workflowName, const char* mode) {
    return Deliver(
        workflow::ModeMsg(workflow::ConstStrings::MsgSetMode, du::Symbol(workflowName), du::Symbol(mode), nullptr, 0));
}

bool FaultyHost::UpdatePreferences() {
    const du::SmartPtr<du::RefCounted> data(new FaultyPreferences(*this));
    return Deliver(workflow::ModeMsg(workflow::ConstStrings::MsgSetMode, du::Symbol("touch"),
                                     du::Symbol("update_preferences"), data, 0));
}

bool FaultyHost::UpdateStatusBar() {
    return Deliver(workflow::Msg(workflow::ConstStrings::MsgUpdateStatusBar));
}

void FaultyHost::AnswerRequests() {
    const std::vector<du::SmartPtr<hxk::BoundingBoxEvent>> waiting = std::exchange(m_requests, {});
    for (const du::SmartPtr<hxk::BoundingBoxEvent>& request : waiting) {
        request->SetListener(nullptr);
        Answer(*request);
    }
}

void FaultyHost::CancelRequests() {
    const std::vector<du::SmartPtr<hxk::BoundingBoxEvent>> waiting = m_requests;
    for (const du::SmartPtr<hxk::BoundingBoxEvent>& request : waiting) {
        request->Cancel();
    }
}

// Complete reaches a request only once, and a cancelled one not at all; the rest is what a careless host might do.
void FaultyHost::Answer(hxk::BoundingBoxEvent& request) const {
    if (request.IsCancelled() && !answers.answersCancelled) {
        return;
    }
    request.SetBox(answers.box);
    for (int i = 0; i < answers.boxRepeats; ++i) {
        if (i == 0 && !request.IsCancelled()) {
            request.Complete(answers.boxStatus);
        } else {
            request.OnComplete(answers.boxStatus);
        }
    }
}

du::SmartPtr<touch::TouchWorkflow> FaultyHost::MakeAnother(const char* name) {
    return du::SmartPtr<touch::TouchWorkflow>(new CountedComponent(du::Symbol(name), s_components));
}

void FaultyHost::Install(const du::SmartPtr<touch::TouchWorkflow>& component) {
    m_component = component;
    SetManager(true);
}

void FaultyHost::SetView(ViewKind kind) {
    if (m_component) {
        m_component->SetView(MakeView(*this, kind));
    }
}

void FaultyHost::SetManager(bool present) {
    if (m_component) {
        m_component->SetManager(present ? this : nullptr);
    }
}

void FaultyHost::SendMessage(const workflow::Msg& message) {
    std::string text = message.GetType().GetString();
    if (message.GetContent() == workflow::Msg::Content::Mouse) {
        const auto& mouse = static_cast<const workflow::MouseMsg&>(message);
        text.append(" ").append(std::to_string(mouse.GetX())).append(" ").append(std::to_string(mouse.GetY()));
    }
    Keep(messages, std::move(text));
    Called(HostCall::SendMessage);
    if (answers.delivers) {
        Deliver(message);
    }
}

void FaultyHost::SendModeMessage(const du::Symbol& workflowName, const du::Symbol& mode, int value,
                                 const du::SmartPtr<du::RefCounted>& data) {
    Keep(messages, workflowName.GetString() + " " + mode.GetString() + " " + std::to_string(value));
    Called(HostCall::SendModeMessage);
    if (answers.delivers) {
        Deliver(workflow::ModeMsg(workflow::ConstStrings::MsgSetMode, workflowName, mode, data, value));
    }
}

bool FaultyHost::SetStatusMessage(int /*slot*/, const std::string& text) {
    Called(HostCall::SetStatusMessage);
    if (answers.storesStatus) {
        status = text;
    }
    return answers.storesStatus;
}

void FaultyHost::UpdateStatusMessage() {
    Called(HostCall::UpdateStatusMessage);
}

bool FaultyHost::ManageObject(const du::SmartPtr<dom::ManagedObject>& object) {
    Called(HostCall::ManageObject);
    auto* request = dynamic_cast<hxk::BoundingBoxEvent*>(object.Get());
    if (!answers.acceptsRequests || request == nullptr) {
        return false;
    }
    m_requests.emplace_back(request);
    request->SetListener(this);
    if (answers.boxTime == BoxTime::WhileManaging) {
        AnswerRequests();
    }
    return true;
}

void FaultyHost::StopTransition() {
    Called(HostCall::StopTransition);
    transition = nullptr;
}

std::int64_t FaultyHost::GetTransitionContext(int /*kind*/) {
    Called(HostCall::GetTransitionContext);
    return 7;
}

void FaultyHost::GetTransitionQueue(du::SmartPtr<workflow::TransitionQueue>& queue) {
    Called(HostCall::GetTransitionQueue);
    queue = answers.hasTransitionQueue ? new FaultyQueue(*this) : nullptr;
}

const std::string* FaultyHost::FindText(const char* /*table*/, const char* /*key*/) const {
    Called(HostCall::FindText);
    return answers.hasTexts ? &m_text : nullptr;
}

bool FaultyHost::IsEnabled(const char* /*module*/, const char* /*className*/) const {
    Called(HostCall::IsTraceEnabled);
    return answers.takesTraces;
}

void FaultyHost::Write(const char* /*module*/, const char* /*className*/, dp::TraceType /*type*/,
                       const std::string& text) {
    Called(HostCall::WriteTrace);
    Keep(traces, text);
}

bool FaultyHost::IsPresent(const char* name) const {
    Called(HostCall::IsPresent);
    return std::find(m_setup.switches.begin(), m_setup.switches.end(), name) != m_setup.switches.end();
}

void FaultyHost::OnMarkupContentChanged(const hxk::Markup& /*markup*/) {
    Called(HostCall::MarkupContentChanged);
}

// The request may go here.
void FaultyHost::OnCancelled(hxk::BaseAsyncEvent& event) {
    Called(HostCall::RequestCancelled);
    if (!answers.answersCancelled) {
        std::erase_if(m_requests, [&](const auto& request) { return request.Get() == &event; });
    }
}

}  // namespace tests
