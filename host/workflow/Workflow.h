// A workflow: a unit of interaction that a host installs among the workflows of a view.
#pragma once

#include "host/HostApi.h"
#include "host/dom/ManagedObject.h"
#include "host/du/RefCounted.h"
#include "host/du/SmartPtr.h"
#include "host/du/Symbol.h"
#include "host/hxk/View.h"
#include "host/workflow/Msg.h"
#include "host/workflow/WorkflowManagerCore.h"

#include <string>

namespace workflow {

// The order of the virtual operations here and in SimpleWorkflow is part of the binary interface: never reorder,
// insert or remove one.
class HOST_API Workflow : public du::RefCounted {
public:
    ~Workflow() override;

    // Attaches the workflow to a view, which it holds a reference to; null detaches it.
    virtual void SetView(const du::SmartPtr<hxk::View>& view);
    // Tells the workflow its manager; null takes it away. Not owned.
    virtual void SetManager(WorkflowManagerCore* manager);
    // Whether the workflow stays installed when another one completes. False until set.
    virtual void SetPersistent(bool persistent);
    virtual bool GetPersistent() const;
    // The rank among the manager's workflows; higher ranks hear a message first. 0 until set.
    virtual void SetPriority(unsigned int priority);
    virtual unsigned int GetPriority() const;
    // Ends the workflow's task. The default does nothing.
    virtual void Complete();
    // Takes a message; true consumes it. The default answers false.
    virtual bool HandleMsg(const Msg& message);
    // Answers a question of another workflow by filling `answer`; false when it is not for this workflow.
    virtual bool HandleQuery(const du::Symbol& query, du::SmartPtr<du::RefCounted>& answer);
    // Called when the manager has added the workflow, and before it removes it.
    virtual void OnAdd();
    virtual void OnRemove();
    // Takes a line of a recorded trace; true when it was understood.
    virtual bool HandleTraceString(const std::string& text);
    // An inactive workflow gets no messages. Active from the start.
    virtual bool IsActive() const;
    virtual void SetActive(bool active);

    [[nodiscard]] const du::Symbol& GetName() const noexcept { return m_name; }
    // Null while no view is attached.
    [[nodiscard]] const du::SmartPtr<hxk::View>& GetView() const noexcept { return m_view; }
    // Null before the workflow is installed. Not owned.
    [[nodiscard]] WorkflowManagerCore* GetManagerCore() const noexcept { return m_manager; }
    // Whether a tap is to keep the picker from preselecting around its click. Set by the host; false until set.
    [[nodiscard]] bool GetPreselectGuard() const noexcept { return m_preselectGuard; }
    void SetPreselectGuard(bool guard) noexcept { m_preselectGuard = guard; }

    // These ask the manager; without one they do nothing and answer false.
    void SendMessage(const Msg& message);
    void SendModeMessage(const du::Symbol& workflowName, const du::Symbol& mode, int value,
                         const du::SmartPtr<du::RefCounted>& data);
    bool SetStatusMessage(int slot, const std::string& text);
    void UpdateStatusMessage();
    bool ManageObject(const du::SmartPtr<dom::ManagedObject>& object);

protected:
    explicit Workflow(const du::Symbol& name);
    // A copy shares the view and is not installed anywhere by being copied, but keeps talking to the same manager.
    Workflow(const Workflow&);
    Workflow& operator=(const Workflow&);

    // For derived workflows: whether input navigates (true) or selects (false). The host attaches no meaning to it.
    bool m_navigateMode = false;

private:
    du::Symbol m_name;
    du::SmartPtr<hxk::View> m_view;
    WorkflowManagerCore* m_manager = nullptr;
    unsigned int m_priority = 0;
    bool m_persistent = false;
    bool m_active = true;
    bool m_preselectGuard = false;
};

}  // namespace workflow
