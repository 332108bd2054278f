// The entry points by which a host loads the component.
#pragma once

#include "host/du/SmartPtr.h"
#include "host/workflow/Workflow.h"
#include "touch/TouchApi.h"

#include <string>

extern "C" {

// Called after loading and before unloading the library; both do nothing.
TOUCH_API void HXDllInit();
TOUCH_API void HXDllTerminate();

// Creates a component. For one of the seven view types "shapeview", "drawingview", "imageview", "ecadschematicview",
// "ecadpcbview", "schematicfigureview" and "illustration2dview", the kind "workflow" and the name "touch" the answer is
// true and `component` holds a new workflow, whose only reference is `component`; what it held before is released.
// For anything else, and when memory is exhausted, the answer is false and `component` stays as it was.
TOUCH_API bool HXDllCreateComponent(const std::string& viewType, const std::string& componentKind,
                                    const std::string& componentName, du::SmartPtr<workflow::Workflow>& component);
}
