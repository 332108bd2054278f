// The default handlers: a workflow overrides those it needs.
#include "host/workflow/SimpleWorkflow.h"

namespace workflow {

void SimpleWorkflow::OnActivate() {}

void SimpleWorkflow::OnDeactivate() {}

bool SimpleWorkflow::OnMsgModifierKey(int /*key*/, bool /*down*/) {
    return false;
}

bool SimpleWorkflow::OnMsgKeyPress(int /*key*/, int /*modifiers*/) {
    return false;
}

bool SimpleWorkflow::OnMsgDoubleClickLeft(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgDoubleClickMiddle(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgDoubleClickRight(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgClickLeft(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgClickMiddle(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgClickRight(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseLeftDown(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseMiddleDown(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseRightDown(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseLeftUp(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseMiddleUp(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseRightUp(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseMove(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseLeave() {
    return false;
}

bool SimpleWorkflow::OnMsgMouseInitLeftDrag(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseInitMiddleDrag(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseInitRightDrag(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseLeftDrag(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseMiddleDrag(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseRightDrag(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMouseWheel(int /*x*/, int /*y*/, int /*steps*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMode(const du::Symbol& /*workflowName*/, const du::Symbol& /*mode*/,
                               const du::SmartPtr<du::RefCounted>& /*data*/, int /*value*/) {
    return false;
}

bool SimpleWorkflow::OnMsgSetPage(int /*page*/) {
    return false;
}

bool SimpleWorkflow::OnMsgReset() {
    return false;
}

bool SimpleWorkflow::OnMsgUpdateStatusBar() {
    return false;
}

bool SimpleWorkflow::OnMsgUpdateCursor(int /*x*/, int /*y*/) {
    return false;
}

bool SimpleWorkflow::OnMsgToggleComponentRotate() {
    return false;
}

bool SimpleWorkflow::OnMsgSelectionChanged(unsigned int /*selectionId*/, const du::SmartPtr<hxk::View>& /*view*/) {
    return false;
}

bool SimpleWorkflow::OnMsgSelectionChanged(bool /*cleared*/, const du::SmartPtr<hxk::View>& /*view*/) {
    return false;
}

bool SimpleWorkflow::OnMsgTimer(long long /*now*/, long long /*interval*/) {
    return false;
}

bool SimpleWorkflow::OnMsgWindowSize(int /*width*/, int /*height*/) {
    return false;
}

bool SimpleWorkflow::OnMsgMoveShapeInstance(unsigned int /*instanceId*/, const dg::Location& /*location*/) {
    return false;
}

bool SimpleWorkflow::OnMsgShapeInstanceVisibility(unsigned int /*instanceId*/, bool /*visible*/) {
    return false;
}

bool SimpleWorkflow::OnMsgShapeInstanceCreate(unsigned int /*instanceId*/) {
    return false;
}

bool SimpleWorkflow::OnMsgShapeInstanceRemove(unsigned int /*instanceId*/) {
    return false;
}

bool SimpleWorkflow::OnMsgShapeInstanceMarkupOverride(unsigned int /*instanceId*/, bool /*overridden*/) {
    return false;
}

bool SimpleWorkflow::OnMsgShapeInstanceMarkupOverrideInit(unsigned int /*instanceId*/) {
    return false;
}

bool SimpleWorkflow::OnMsgViewProjection(bool /*orthographic*/) {
    return false;
}

bool SimpleWorkflow::OnMsgWorkflowChanged(const du::Symbol& /*workflowName*/) {
    return false;
}

bool SimpleWorkflow::OnMotionEvent(double /*tx*/, double /*ty*/, double /*tz*/, double /*rx*/, double /*ry*/,
                                   double /*rz*/) {
    return false;
}

bool SimpleWorkflow::OnMsgTouch(int /*reserved*/, int /*count*/, int /*id0*/, int /*x0*/, int /*y0*/, int /*time0*/,
                                int /*flags0*/, int /*id1*/, int /*x1*/, int /*y1*/, int /*time1*/, int /*flags1*/,
                                int /*id2*/, int /*x2*/, int /*y2*/, int /*time2*/, int /*flags2*/, int /*id3*/,
                                int /*x3*/, int /*y3*/, int /*time3*/, int /*flags3*/, int /*id4*/, int /*x4*/,
                                int /*y4*/, int /*time4*/, int /*flags4*/, int /*id5*/, int /*x5*/, int /*y5*/,
                                int /*time5*/, int /*flags5*/, int /*id6*/, int /*x6*/, int /*y6*/, int /*time6*/,
                                int /*flags6*/, int /*id7*/, int /*x7*/, int /*y7*/, int /*time7*/, int /*flags7*/,
                                int /*id8*/, int /*x8*/, int /*y8*/, int /*time8*/, int /*flags8*/, int /*id9*/,
                                int /*x9*/, int /*y9*/, int /*time9*/, int /*flags9*/) {
    return false;
}

bool SimpleWorkflow::OnMsgAddAnnotation(const du::SmartPtr<du::RefCounted>& /*annotation*/) {
    return false;
}

bool SimpleWorkflow::OnMsgRemoveAnnotation(const du::SmartPtr<du::RefCounted>& /*annotation*/) {
    return false;
}

bool SimpleWorkflow::OnMsgAnimationFinished() {
    return false;
}

bool SimpleWorkflow::OnMsgAnimationFinishedForOpenNewShapeViewBase() {
    return false;
}

}  // namespace workflow
