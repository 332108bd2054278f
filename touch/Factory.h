// The entry points by which a host loads the component.
#pragma once

#include "host/du/SmartPtr.h"
#include "host/workflow/Workflow.h"
#include "touch/TouchApi.h"

#include <string>

extern "C" {

// Called after loading the library; does nothing.
TOUCH_API void HXDllInit();
// Called before unloading the library. When something that it made is still held, a workflow, a bounds request, a
// transition or a spin-centre markup, the library stays loaded until the process ends, whoever closes it, and the trace
// channel says what it was.
TOUCH_API void HXDllTerminate();

// Creates a component. For one of the seven view types "shapeview", "drawingview", "imageview", "ecadschematicview",
// "ecadpcbview", "schematicfigureview" and "illustration2dview", the kind "workflow" and the name "touch" the answer is
// true and `component` holds a new workflow, whose only reference is `component`; what it held before is released.
// For anything else, and when memory is exhausted, the answer is false and `component` stays as it was.
TOUCH_API bool HXDllCreateComponent(const std::string& viewType, const std::string& componentKind,
                                    const std::string& componentName, du::SmartPtr<workflow::Workflow>& component);

// What a component does at the moment, for traces and tests, in names that stay valid while the library is loaded.
struct HXDllTouchState {
    const char* gesture;  // of touch::GestureType, such as "GestureSpin"
    const char* state;    // of touch::GestureState, such as "GestureRecognized"
    const char* mode;     // "navigate" or "select"
};

// The version of the record above, which changes with its members or their meaning.
enum { HXDllTouchStateVersion = 1 };

// Fills the record of this version. For any other version, for null pointers and for a workflow that is not of this
// library the answer is false and nothing is written.
TOUCH_API bool HXDllGetTouchState(int version, const workflow::Workflow* component, HXDllTouchState* state);
}
