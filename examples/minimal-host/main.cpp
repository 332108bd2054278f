// The smallest host: one 3D view, one workflow, one finger. It loads the component, lets a finger go 200 pixels to the
// right, and prints where the camera went. Usage: minimal-host PLUGIN
#include "host/platform/DynamicLibrary.h"
#include "host/workflow/ConstStrings.h"
#include "host/workflow/SimpleWorkflow.h"
#include "touch/Factory.h"

#include <cstdio>
#include <stdexcept>

namespace {

// [view] A 3D view: it keeps a camera and gives it away.
class MyView : public hxk::ShapeView {
public:
    MyView() {
        dg::Location location;
        location.SetPos({0, 0, 20});
        m_camera.SetLocation(location);
        m_camera.SetViewport(1280, 800);
        m_camera.SetProjection(-8, 8, -5, 5, -1, true);
    }

    void GetCamera(dg::Camera3D& camera) const override { camera = m_camera; }
    void SetCameraLocation(const dg::Location& location) override { m_camera.SetLocation(location); }
    void SetOrthographicWidth(double width, du::SmartPtr<du::RefCounted>& change) override {
        m_camera.SetProjection(-width / 2, width / 2, -width * 0.3125, width * 0.3125, -1, true);
        change = nullptr;
    }
    void GetSpinCenter(dg::DPoint3D& center) const override { center = {0, 0, 0}; }
    const du::Symbol& GetNavMethod() const override { return m_navMethod; }
    double GetNavSpeed() const override { return 1.0; }

    // What this small host does without: scenes, preferences, markups, box answers, grouped notifications.
    void GetScene(du::SmartPtr<hxk::Scene>& scene) const override { scene = nullptr; }
    bool GetDefaultPreferences(du::SmartPtr<hxk::Preferences>& preferences) override {
        preferences = nullptr;
        return false;
    }
    void GetBoundingBox(bool, bool, hxk::BoundingBoxEvent*) override {}
    void AddMarkup(const du::SmartPtr<hxk::Markup>&) override {}
    void RemoveMarkup(const du::SmartPtr<hxk::Markup>&) override {}
    void BeginUpdateGroup() override {}
    void EndUpdateGroup() override {}

private:
    dg::Camera3D m_camera;
    du::Symbol m_navMethod{"standard"};
};
// [view]

// [manager] The manager: it would pass messages on to the host's other workflows; here there are none.
class MyManager : public workflow::WorkflowManagerCore {
public:
    void SendMessage(const workflow::Msg& message) override {
        std::printf("the component sends %s\n", message.GetType().GetString().c_str());
    }
    void SendModeMessage(const du::Symbol&, const du::Symbol&, int, const du::SmartPtr<du::RefCounted>&) override {}
    bool SetStatusMessage(int, const std::string&) override { return true; }
    void UpdateStatusMessage() override {}
    bool ManageObject(const du::SmartPtr<dom::ManagedObject>&) override { return false; }
    void StopTransition() override {}
    std::int64_t GetTransitionContext(int) override { return 0; }
    void GetTransitionQueue(du::SmartPtr<workflow::TransitionQueue>& queue) override { queue = nullptr; }
};
// [manager]

// [frame] One finger as a touch frame; the other nine records stay empty.
bool SendFinger(workflow::SimpleWorkflow& component, int x, int y, int time, int flags) {
    workflow::TouchFrame frame;
    frame.count = 1;
    frame.records[0] = {
        .id = 7, .x = x, .y = y, .time = time, .flags = flags};  // the id stays while the finger is down
    return component.HandleMsg(workflow::TouchMsg(workflow::ConstStrings::MsgTouch, frame));
}
// [frame]

void PrintCamera(const char* when, const MyView& view) {
    dg::Camera3D camera;
    view.GetCamera(camera);
    const dg::DPoint3D& eye = camera.GetLocation().GetPos();
    std::printf("%s: the eye is at (%.2f, %.2f, %.2f)\n", when, eye.x, eye.y, eye.z);
}

// [load] Loading: the factory makes a workflow, and the smart pointer holds its only reference.
du::SmartPtr<workflow::Workflow> MakeComponent(const platform::DynamicLibrary& library) {
    auto* init = library.Find<decltype(HXDllInit)>("HXDllInit");
    auto* create = library.Find<decltype(HXDllCreateComponent)>("HXDllCreateComponent");
    if (init == nullptr || create == nullptr) {
        throw std::runtime_error("not a touch component");
    }
    init();
    du::SmartPtr<workflow::Workflow> component;
    if (!create("shapeview", "workflow", "touch", component)) {
        throw std::runtime_error("the component refuses this kind of view");
    }
    return component;
}
// [load]

void Run(const char* pluginPath) {
    const platform::DynamicLibrary library(pluginPath);
    MyManager manager;
    const du::SmartPtr<MyView> view(new MyView);
    const du::SmartPtr<workflow::Workflow> component = MakeComponent(library);
    component->SetManager(&manager);
    component->SetView(view);
    auto& workflow = static_cast<workflow::SimpleWorkflow&>(*component);

    PrintCamera("before", *view);
    // [story] A tick before each frame; the finger goes down, moves, and lifts.
    using workflow::TouchDown;
    using workflow::TouchMove;
    using workflow::TouchUp;
    int time = 1000;
    for (int step = 0; step <= 20; ++step, time += 10) {
        workflow.HandleMsg(workflow::TimerMsg(workflow::ConstStrings::MsgTimer, time, 10));
        SendFinger(workflow, 540 + 10 * step, 400, time, step == 0 ? TouchDown : TouchMove);
    }
    workflow.HandleMsg(workflow::TimerMsg(workflow::ConstStrings::MsgTimer, time, 10));
    SendFinger(workflow, 740, 400, time, TouchUp);
    // [story]
    PrintCamera("after", *view);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: minimal-host PLUGIN\n");
        return 2;
    }
    try {
        Run(argv[1]);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "minimal-host: %s: %s\n", argv[1], fault.what());
        return 2;
    }
    return 0;
}
