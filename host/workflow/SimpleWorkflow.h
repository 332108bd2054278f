// A workflow with one handler for each message type.
#pragma once

#include "host/HostApi.h"
#include "host/dg/Location.h"
#include "host/workflow/Workflow.h"

#include <vector>

namespace workflow {

// Calls, for each message of a registered type, the handler of the same name. Every handler answers whether the
// message is consumed; the defaults do nothing and answer false. Mouse positions are view pixels, origin at the lower
// left corner, y upward.
//
// The order of the virtual operations is part of the binary interface: never reorder, insert or remove one.
class HOST_API SimpleWorkflow : public Workflow {
public:
    ~SimpleWorkflow() override;
    bool HandleMsg(const Msg& message) override;

    // Registers a message type: its messages come to the handlers. `whileActive` limits that to an active workflow.
    // Registering a type again replaces the flag.
    virtual void AddMsgTypeHandled(const du::Symbol& type, bool whileActive);
    virtual void RemoveMsgTypeHandled(const du::Symbol& type);
    virtual void RemoveAllMsgTypesHandled();
    virtual void OnActivate();
    virtual void OnDeactivate();

    virtual bool OnMsgModifierKey(int key, bool down);
    virtual bool OnMsgKeyPress(int key, int modifiers);
    virtual bool OnMsgDoubleClickLeft(int x, int y);
    virtual bool OnMsgDoubleClickMiddle(int x, int y);
    virtual bool OnMsgDoubleClickRight(int x, int y);
    virtual bool OnMsgClickLeft(int x, int y);
    virtual bool OnMsgClickMiddle(int x, int y);
    virtual bool OnMsgClickRight(int x, int y);
    virtual bool OnMsgMouseLeftDown(int x, int y);
    virtual bool OnMsgMouseMiddleDown(int x, int y);
    virtual bool OnMsgMouseRightDown(int x, int y);
    virtual bool OnMsgMouseLeftUp(int x, int y);
    virtual bool OnMsgMouseMiddleUp(int x, int y);
    virtual bool OnMsgMouseRightUp(int x, int y);
    virtual bool OnMsgMouseMove(int x, int y);
    virtual bool OnMsgMouseLeave();
    virtual bool OnMsgMouseInitLeftDrag(int x, int y);
    virtual bool OnMsgMouseInitMiddleDrag(int x, int y);
    virtual bool OnMsgMouseInitRightDrag(int x, int y);
    virtual bool OnMsgMouseLeftDrag(int x, int y);
    virtual bool OnMsgMouseMiddleDrag(int x, int y);
    virtual bool OnMsgMouseRightDrag(int x, int y);
    virtual bool OnMsgMouseWheel(int x, int y, int steps);
    // A mode message: the workflow it is addressed to, the mode's name, optional data and a value.
    virtual bool OnMsgMode(const du::Symbol& workflowName, const du::Symbol& mode,
                           const du::SmartPtr<du::RefCounted>& data, int value);
    virtual bool OnMsgSetPage(int page);
    virtual bool OnMsgReset();
    virtual bool OnMsgUpdateStatusBar();
    virtual bool OnMsgUpdateCursor(int x, int y);
    virtual bool OnMsgToggleComponentRotate();
    virtual bool OnMsgSelectionChanged(unsigned int selectionId, const du::SmartPtr<hxk::View>& view);
    virtual bool OnMsgSelectionChanged(bool cleared, const du::SmartPtr<hxk::View>& view);
    // A timer tick: the host time and the time since the previous tick, in milliseconds.
    virtual bool OnMsgTimer(long long now, long long interval);
    virtual bool OnMsgWindowSize(int width, int height);
    virtual bool OnMsgMoveShapeInstance(unsigned int instanceId, const dg::Location& location);
    virtual bool OnMsgShapeInstanceVisibility(unsigned int instanceId, bool visible);
    virtual bool OnMsgShapeInstanceCreate(unsigned int instanceId);
    virtual bool OnMsgShapeInstanceRemove(unsigned int instanceId);
    virtual bool OnMsgShapeInstanceMarkupOverride(unsigned int instanceId, bool overridden);
    virtual bool OnMsgShapeInstanceMarkupOverrideInit(unsigned int instanceId);
    virtual bool OnMsgViewProjection(bool orthographic);
    virtual bool OnMsgWorkflowChanged(const du::Symbol& workflowName);
    // A motion device: translation and rotation along and about X, Y, Z, each in [-1, 1] of the device's range.
    virtual bool OnMotionEvent(double tx, double ty, double tz, double rx, double ry, double rz);
    // A touch frame: a reserved integer, the number of fingers, and ten finger records. A record is the finger's id
    // (-1: no record), its position in view pixels, its time stamp in milliseconds of the touch clock, and its flags
    // (2: went down, 1: moved, 4: went up).
    virtual bool OnMsgTouch(int reserved, int count, int id0, int x0, int y0, int time0, int flags0, int id1, int x1,
                            int y1, int time1, int flags1, int id2, int x2, int y2, int time2, int flags2, int id3,
                            int x3, int y3, int time3, int flags3, int id4, int x4, int y4, int time4, int flags4,
                            int id5, int x5, int y5, int time5, int flags5, int id6, int x6, int y6, int time6,
                            int flags6, int id7, int x7, int y7, int time7, int flags7, int id8, int x8, int y8,
                            int time8, int flags8, int id9, int x9, int y9, int time9, int flags9);
    virtual bool OnMsgAddAnnotation(const du::SmartPtr<du::RefCounted>& annotation);
    virtual bool OnMsgRemoveAnnotation(const du::SmartPtr<du::RefCounted>& annotation);
    virtual bool OnMsgAnimationFinished();
    virtual bool OnMsgAnimationFinishedForOpenNewShapeViewBase();

    // Whether messages of a type come to the handlers at this moment.
    [[nodiscard]] bool IsMsgTypeHandled(const du::Symbol& type) const;

protected:
    explicit SimpleWorkflow(const du::Symbol& name);
    SimpleWorkflow(const SimpleWorkflow&);
    SimpleWorkflow& operator=(const SimpleWorkflow&);
    SimpleWorkflow& operator=(SimpleWorkflow&&) noexcept;

private:
    struct HandledType {
        du::Symbol type;
        bool whileActive;
    };

    bool HandleMouseMsg(const MouseMsg& message);

    std::vector<HandledType> m_handledTypes;
};

}  // namespace workflow
