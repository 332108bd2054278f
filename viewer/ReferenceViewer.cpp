// Puts the parts together and keeps their order. On a tick boxes are answered, then transitions move and drags run out,
// and the workflows hear of it last. Before a plug-in is unloaded everything that it made is let go.
#include "viewer/ReferenceViewer.h"

#include "host/workflow/ConstStrings.h"
#include "viewer/BoundsService.h"
#include "viewer/MarkupLines.h"
#include "viewer/MessageDispatch.h"
#include "viewer/PluginLibrary.h"
#include "viewer/TransitionPlayer.h"
#include "viewer/ViewerPlatform.h"
#include "viewer/ViewerViews.h"
#include "viewer/ViewerWorkflows.h"

#include <algorithm>
#include <utility>

namespace viewer {

using workflow::ConstStrings;

namespace {

bool HasFlag(const workflow::TouchRecord& record, std::int32_t flag) {
    return record.id >= 0 && (record.flags & flag) != 0;
}

bool HasFingerDown(const workflow::TouchFrame& frame) {
    return std::any_of(frame.records.begin(), frame.records.end(),
                       [](const workflow::TouchRecord& record) { return HasFlag(record, workflow::TouchDown); });
}

// Whether fingers stay on the screen after a frame.
bool HasFingerLeft(const workflow::TouchFrame& frame) {
    return std::any_of(frame.records.begin(), frame.records.end(), [](const workflow::TouchRecord& record) {
        return record.id >= 0 && !HasFlag(record, workflow::TouchUp);
    });
}

}  // namespace

class ReferenceViewer::Impl {
public:
    explicit Impl(const HostSettings& hostSettings)
        : settings(hostSettings),
          platform(settings, recorder),
          bounds(recorder, settings.boundsAnswer),
          transitions(recorder, settings.playTransitions),
          dispatch(recorder, bounds, transitions),
          picker(new PickerWorkflow(scene)),
          selector(new SelectorWorkflow(scene)) {
        // Of equal rank, the selector first: it lets every click go on to the picker.
        dispatch.Add(selector);
        dispatch.Add(picker);
    }
    ~Impl() { UnloadComponent(); }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    void LoadComponent(const std::string& pluginPath, const std::string& viewType);
    void UnloadComponent();
    void SetView(const std::optional<ViewSpec>& description);
    std::optional<bool> Touch(const workflow::TouchFrame& frame);
    std::optional<bool> Tick(std::int64_t now, std::int64_t interval);
    std::optional<bool> SendMode(const std::string& workflowName, const std::string& mode,
                                 const du::SmartPtr<du::RefCounted>& data);
    [[nodiscard]] ViewSnapshot TakeSnapshot() const;
    // What was picked belongs to a scene that has gone.
    void ForgetPicks();

    HostSettings settings;
    CallRecorder recorder;
    ViewerPlatform platform;
    BoundsService bounds;
    TransitionPlayer transitions;
    PickScene scene;
    MessageDispatch dispatch;
    du::SmartPtr<PickerWorkflow> picker;
    du::SmartPtr<SelectorWorkflow> selector;
    std::string viewKind;  // empty while no view is attached
    du::SmartPtr<hxk::View> view;
    ViewerShapeView* shapeView = nullptr;  // the view when it is one
    std::unique_ptr<PluginLibrary> library;
    workflow::SimpleWorkflow* component = nullptr;  // held by the dispatch

private:
    [[nodiscard]] std::string GetPartName(std::optional<std::size_t> part) const {
        return part ? scene.model->parts[*part].name : std::string();
    }
    void DescribeView(ViewSnapshot& snapshot) const;
};

void ReferenceViewer::Impl::LoadComponent(const std::string& pluginPath, const std::string& viewType) {
    UnloadComponent();
    auto loading = std::make_unique<PluginLibrary>(pluginPath);
    {
        const du::SmartPtr<workflow::Workflow> created = loading->CreateWorkflow(viewType);
        const du::SmartPtr<workflow::SimpleWorkflow> simple(dynamic_cast<workflow::SimpleWorkflow*>(created.Get()));
        if (!simple) {
            throw PluginError("the plug-in " + pluginPath + " makes a workflow that handles no messages");
        }
        simple->SetPreselectGuard(settings.preselectGuard);
        dispatch.Add(simple);
        component = simple.Get();
    }
    dispatch.SetComponent(component);
    library = std::move(loading);
    if (view) {
        component->SetView(view);
    }
}

// Nothing that the plug-in made may be left when its code goes: no transition, no request, no markup on a view.
void ReferenceViewer::Impl::UnloadComponent() {
    if (component == nullptr) {
        return;
    }
    transitions.Stop();
    bounds.FailAll();
    dispatch.Remove(*std::exchange(component, nullptr));
    if (shapeView != nullptr) {
        shapeView->RemoveMarkups();
    }
    library.reset();
}

void ReferenceViewer::Impl::SetView(const std::optional<ViewSpec>& description) {
    du::SmartPtr<hxk::View> opened;
    if (description) {
        opened = OpenView(*description, {recorder, bounds, transitions});
    }
    transitions.Stop();
    ForgetPicks();
    viewKind = description ? description->kind : std::string();
    view = opened;
    shapeView = dynamic_cast<ViewerShapeView*>(view.Get());
    scene.camera = shapeView != nullptr ? &shapeView->GetCurrentCamera() : nullptr;
    if (component != nullptr) {
        component->SetView(view);
    }
}

void ReferenceViewer::Impl::ForgetPicks() {
    scene.selected.clear();
    picker->Reset();
    selector->Reset();
}

std::optional<bool> ReferenceViewer::Impl::Touch(const workflow::TouchFrame& frame) {
    if (HasFingerDown(frame)) {
        picker->CloseContextMenu();
    }
    transitions.NoteTouch(frame.count);
    const std::optional<bool> answer = dispatch.Deliver(workflow::TouchMsg(ConstStrings::MsgTouch, frame));
    if (!HasFingerLeft(frame)) {
        selector->Finish();
    }
    return answer;
}

std::optional<bool> ReferenceViewer::Impl::Tick(std::int64_t now, std::int64_t interval) {
    bounds.AnswerWaiting();
    transitions.Advance(now);
    selector->Advance(now);
    return dispatch.Deliver(workflow::TimerMsg(ConstStrings::MsgTimer, now, interval));
}

std::optional<bool> ReferenceViewer::Impl::SendMode(const std::string& workflowName, const std::string& mode,
                                                    const du::SmartPtr<du::RefCounted>& data) {
    return dispatch.Deliver(workflow::ModeMsg(ConstStrings::MsgSetMode, du::Symbol(workflowName.c_str()),
                                              du::Symbol(mode.c_str()), data, 0));
}

void ReferenceViewer::Impl::DescribeView(ViewSnapshot& snapshot) const {
    snapshot.kind = viewKind;
    if (shapeView != nullptr) {
        snapshot.camera = shapeView->GetCurrentCamera();
        shapeView->GetSpinCenter(snapshot.spinCenter);
        snapshot.width = snapshot.camera.GetViewportWidth();
        snapshot.height = snapshot.camera.GetViewportHeight();
        for (const du::SmartPtr<hxk::Markup>& markup : shapeView->GetMarkups()) {
            AppendMarkupLines(*markup, snapshot.markups);
        }
    } else if (const auto* page = dynamic_cast<const hxk::View2D*>(view.Get())) {
        page->GetViewSize(snapshot.width, snapshot.height);
        page->GetOrthoWidth(snapshot.orthoWidth);
        page->GetViewLocation(snapshot.placement);
    }
}

ViewSnapshot ReferenceViewer::Impl::TakeSnapshot() const {
    ViewSnapshot snapshot;
    DescribeView(snapshot);
    snapshot.rubberBand = selector->GetRubberBand();
    for (const std::size_t part : scene.selected) {
        snapshot.selectedParts.push_back(GetPartName(part));
    }
    if (const std::optional<ContextMenu>& menu = picker->GetContextMenu()) {
        snapshot.contextMenu = GetPartName(menu->part);
        snapshot.contextMenuAt = menu->at;
    }
    if (picker->GetPreselected()) {
        snapshot.preselectedPart = GetPartName(picker->GetPreselected());
    }
    snapshot.statusText = dispatch.GetStatusBar().GetShownText();
    return snapshot;
}

ReferenceViewer::ReferenceViewer(const HostSettings& settings) : m_impl(std::make_unique<Impl>(settings)) {}

ReferenceViewer::~ReferenceViewer() = default;

void ReferenceViewer::LoadComponent(const std::string& pluginPath, const std::string& viewType) {
    m_impl->LoadComponent(pluginPath, viewType);
}

void ReferenceViewer::UnloadComponent() {
    m_impl->UnloadComponent();
}

workflow::SimpleWorkflow* ReferenceViewer::GetComponent() const noexcept {
    return m_impl->component;
}

std::optional<HXDllTouchState> ReferenceViewer::GetComponentState() const {
    if (m_impl->component == nullptr) {
        return std::nullopt;
    }
    return m_impl->library->GetState(*m_impl->component);
}

void ReferenceViewer::SetModel(std::shared_ptr<const scene::Model> model) {
    m_impl->ForgetPicks();
    m_impl->scene.model = std::move(model);
}

const std::shared_ptr<const scene::Model>& ReferenceViewer::GetModel() const noexcept {
    return m_impl->scene.model;
}

void ReferenceViewer::SetView(const std::optional<ViewSpec>& view) {
    m_impl->SetView(view);
}

void ReferenceViewer::ChangeView(const ViewChange& change) {
    if (m_impl->shapeView != nullptr) {
        m_impl->shapeView->Change(change);
    }
}

std::optional<bool> ReferenceViewer::Touch(const workflow::TouchFrame& frame) {
    return m_impl->Touch(frame);
}

std::optional<bool> ReferenceViewer::Tick(std::int64_t now, std::int64_t interval) {
    return m_impl->Tick(now, interval);
}

std::optional<bool> ReferenceViewer::Mouse(const std::string& type, int x, int y) {
    return m_impl->dispatch.Deliver(workflow::MouseMsg(du::Symbol(type.c_str()), x, y, 0));
}

std::optional<bool> ReferenceViewer::SetMode(const std::string& workflowName, const std::string& mode) {
    return m_impl->SendMode(workflowName, mode, nullptr);
}

std::optional<bool> ReferenceViewer::UpdatePreferences(const std::optional<PreferenceValues>& values,
                                                       const std::string& workflowName) {
    du::SmartPtr<du::RefCounted> data;
    if (values) {
        data = new ViewerPreferences(*values);
    }
    return m_impl->SendMode(workflowName, "update_preferences", data);
}

std::optional<bool> ReferenceViewer::UpdateStatusBar() {
    return m_impl->dispatch.Deliver(workflow::Msg(ConstStrings::MsgUpdateStatusBar));
}

CallRecorder& ReferenceViewer::GetRecorder() noexcept {
    return m_impl->recorder;
}

ViewSnapshot ReferenceViewer::TakeSnapshot() const {
    return m_impl->TakeSnapshot();
}

std::string ReferenceViewer::GetStatusText(int slot) const {
    return m_impl->dispatch.GetStatusBar().GetText(slot);
}

bool ReferenceViewer::IsTransitionPlaying() const noexcept {
    return m_impl->transitions.IsPlaying();
}

}  // namespace viewer
