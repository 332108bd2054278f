// A small, complete host that misbehaves on demand: every answer can be set, every operation can fail, and every
// operation can run code of the test before it does its work, which throws or calls back into the component.
//
//     FaultyHost host;
//     host.On(HostCall::SetCameraLocation, [&] { host.SetView(ViewKind::Drawing); });
//     host.Touch({{1, 400, 300, Down}});
//
// The component's class is used directly. The host has the only reference to it and holds no other during a call.
#pragma once

#include "host/dg/Box.h"
#include "host/dg/Camera3D.h"
#include "host/dp/HXTracer.h"
#include "host/du/Localizer.h"
#include "host/hxk/Markup.h"
#include "host/hxk/View.h"
#include "host/platform/Environment.h"
#include "host/workflow/WorkflowManagerCore.h"
#include "touch/TouchWorkflow.h"
#include "touch/navigation/CameraSpinTransition.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tests {

// The operations of the host that a component calls.
enum class HostCall {
    // The manager and its transition queue.
    SendMessage,
    SendModeMessage,
    SetStatusMessage,
    UpdateStatusMessage,
    ManageObject,
    StopTransition,
    GetTransitionContext,
    GetTransitionQueue,
    AddTransition,
    // Any view, and its preferences.
    GetClassType,
    GetScene,
    GetDefaultPreferences,
    GetBool,
    BeginUpdateGroup,
    EndUpdateGroup,
    ViewGoes,  // the destructor: a hook must not throw
    // The 3D view.
    GetCamera,
    GetSpinCenter,
    GetNavMethod,
    GetNavSpeed,
    GetBoundingBox,
    SetCameraLocation,
    SetOrthographicWidth,
    AddMarkup,
    RemoveMarkup,
    // The 2D view.
    GetOrthoWidth,
    SetOrthoWidth,
    SetPosition,
    GetViewSize,
    GetViewLocation,
    // The process around the views.
    FindText,
    IsTraceEnabled,
    WriteTrace,
    IsPresent,
    MarkupContentChanged,
    RequestCancelled,
};
inline constexpr std::size_t HostCallCount = static_cast<std::size_t>(HostCall::RequestCancelled) + 1;

[[nodiscard]] const char* NameOf(HostCall call);

// FalseShape says that it is a shape view, but is of another class.
enum class ViewKind { None, Shape, Drawing, Image, Document, EcadPcb, Other, FalseShape };

// What becomes of a value that is set on a view.
enum class Setters { Store, Ignore, Clamp };

// When an accepted box request is answered. `Never` leaves it to AnswerRequests.
enum class BoxTime { NextTick, WhileManaging, WhileAsking, Never };

struct HostAnswers {
    bool hasScene = true;
    bool hasPreferences = true;
    bool hasPreferenceKey = true;
    bool showsSpinCenter = true;
    bool hasTransitionQueue = true;
    bool storesStatus = true;
    bool hasTexts = true;
    bool takesTraces = true;
    bool delivers = true;  // sends reach the component too
    Setters setters = Setters::Store;

    bool acceptsRequests = true;
    BoxTime boxTime = BoxTime::NextTick;
    int boxStatus = 0;
    int boxRepeats = 1;             // how often one request is answered
    bool answersCancelled = false;  // a request that was withdrawn is answered all the same
    dg::DBox box{{-2, -2, -2}, {2, 2, 2}};

    // 1000 x 600 pixels; the default camera is orthographic, 0.02 model units a pixel, at (0, 0, 20).
    dg::Camera3D camera;
    dg::DPoint3D spinCenter;
    du::Symbol navMethod{"standard"};
    double navSpeed = 1;

    unsigned int pageWidth = 1000;  // pixels
    unsigned int pageHeight = 600;
    double orthoWidth = 20;
    dg::Location pageLocation;

    HostAnswers();
    void MakePerspective();
};

// What a component reads once.
struct HostSetup {
    std::vector<std::string> switches;  // environment switches that are present
    int ppiX = 96;
    int ppiY = 96;
    bool preselectGuard = true;
};

inline constexpr int Down = workflow::TouchDown;
inline constexpr int Move = workflow::TouchMove;
inline constexpr int Up = workflow::TouchUp;

struct HostFinger {
    int id;
    int x;
    int y;
    int flags;
};

class FaultyHost final : private workflow::WorkflowManagerCore,
                         private du::StringTableProvider,
                         private dp::TraceSink,
                         private platform::EnvironmentProvider,
                         private hxk::MarkupListener,
                         private hxk::AsyncEventListener {
public:
    using Hook = std::function<void()>;
    static constexpr int Always = -1;

    // Makes a component, gives it its manager and a shape view, and ticks. Answers for the whole process while it
    // lives.
    explicit FaultyHost(const HostSetup& setup = {});
    // Ends the requests that wait and drops the component.
    ~FaultyHost() override;
    FaultyHost(const FaultyHost&) = delete;
    FaultyHost& operator=(const FaultyHost&) = delete;

    // What the operations answer from now on.
    HostAnswers answers;

    // Runs the hook on the next `times` calls of an operation, before it does its work; it replaces an earlier one. A
    // hook does not run again while it runs. What it throws, the operation throws.
    void On(HostCall call, Hook hook, int times = 1);
    void ClearHooks();
    // How often an operation was called.
    [[nodiscard]] int CountOf(HostCall call) const { return m_hooks[static_cast<std::size_t>(call)].calls; }

    // Input; each answers what the component answered, false without a component. Time goes on by 16 ms with each tick,
    // touch time too. A frame has a record for each finger that is given, in that order.
    bool Touch(const std::vector<HostFinger>& fingers);
    bool Frame(const workflow::TouchFrame& frame);
    bool Tick(int milliseconds = 16);
    bool Mouse(const du::Symbol& type, int x = 1, int y = 1);
    bool Mode(const char* workflowName, const char* mode);
    // A mode message that carries the preferences of the answers.
    bool UpdatePreferences();
    bool UpdateStatusBar();
    // Answers every request that waits now, and cancelled ones where the answers say so.
    void AnswerRequests();
    // Ends every request that waits by cancelling it.
    void CancelRequests();

    // Null once it was dropped. The host keeps no other reference.
    [[nodiscard]] touch::TouchWorkflow* Component() const noexcept { return m_component.Get(); }
    void Drop() { m_component = nullptr; }
    // Puts a component in the place of the host's own and gives it its manager.
    void Install(const du::SmartPtr<touch::TouchWorkflow>& component);
    // Another component of this host, detached, for assignments.
    [[nodiscard]] du::SmartPtr<touch::TouchWorkflow> MakeAnother(const char* name);
    // Attaches a new view of a kind; None detaches. Without a component nothing.
    void SetView(ViewKind kind);
    void SetManager(bool present);

    // How many components of this process are alive.
    [[nodiscard]] static int CountComponents() noexcept { return s_components; }

    // What came in: the latest messages ("MsgClickLeft 400 300", "picker enable_preselect 0") and trace texts, the
    // status text, the transition that was queued last, the requests that wait and the update groups that are open.
    std::vector<std::string> messages;
    std::vector<std::string> traces;
    std::string status;
    du::SmartPtr<animation::Transition> transition;
    [[nodiscard]] std::size_t CountWaitingRequests() const noexcept { return m_requests.size(); }
    int openUpdateGroups = 0;

    // For the host's own objects: counts a call and runs its hook.
    void Called(HostCall call) const;

private:
    struct Watcher {
        int calls = 0;
        int times = 0;
        bool isRunning = false;
        Hook hook;
    };

    void SendMessage(const workflow::Msg& message) override;
    void SendModeMessage(const du::Symbol& workflowName, const du::Symbol& mode, int value,
                         const du::SmartPtr<du::RefCounted>& data) override;
    bool SetStatusMessage(int slot, const std::string& text) override;
    void UpdateStatusMessage() override;
    bool ManageObject(const du::SmartPtr<dom::ManagedObject>& object) override;
    void StopTransition() override;
    std::int64_t GetTransitionContext(int kind) override;
    void GetTransitionQueue(du::SmartPtr<workflow::TransitionQueue>& queue) override;

    const std::string* FindText(const char* table, const char* key) const override;
    bool IsEnabled(const char* module, const char* className) const override;
    void Write(const char* module, const char* className, dp::TraceType type, const std::string& text) override;
    bool IsPresent(const char* name) const override;
    void OnMarkupContentChanged(const hxk::Markup& markup) override;
    void OnCancelled(hxk::BaseAsyncEvent& event) override;

    bool Deliver(const workflow::Msg& message);
    void Answer(hxk::BoundingBoxEvent& request) const;

    static int s_components;

    HostSetup m_setup;
    mutable std::array<Watcher, HostCallCount> m_hooks;
    std::vector<du::SmartPtr<hxk::BoundingBoxEvent>> m_requests;
    std::string m_text = "Touch: a text of the host";
    std::int64_t m_now = 10'000;
    std::int32_t m_touchTime = 500'000;
    du::SmartPtr<touch::TouchWorkflow> m_component;
};

}  // namespace tests
