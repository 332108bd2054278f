// The entry points. They decide which requests are for this component: every part of the request must match byte for
// byte. Tested by tests/component/FactoryTest.cpp.
#include "touch/Factory.h"

#include "host/dp/HXTracer.h"
#include "host/platform/DynamicLibrary.h"
#include "touch/Inspection.h"
#include "touch/LiveObjects.h"
#include "touch/TouchWorkflow.h"
#include "touch/shell/Boundary.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

constexpr std::string_view ViewTypes[] = {"shapeview",         "drawingview", "imageview",
                                          "ecadschematicview", "ecadpcbview", "schematicfigureview",
                                          "illustration2dview"};

}  // namespace

void HXDllInit() {}

void HXDllTerminate() {
    touch::Guarded([] {
        const std::string alive = touch::DescribeLiveObjects();
        if (alive.empty()) {
            return false;
        }
        platform::DynamicLibrary::KeepLoaded(&HXDllTerminate);
        const dp::HXTracer tracer("touch", "Factory");
        tracer(dp::TraceError) << "HXDllTerminate(): stays loaded for " << alive << ".\n";
        return true;
    });
}

bool HXDllCreateComponent(const std::string& viewType, const std::string& componentKind,
                          const std::string& componentName, du::SmartPtr<workflow::Workflow>& component) {
    return touch::Guarded([&] {
        if (std::find(std::begin(ViewTypes), std::end(ViewTypes), viewType) == std::end(ViewTypes) ||
            componentKind != "workflow" || componentName != "touch") {
            return false;
        }
        component = new touch::TouchWorkflow(du::Symbol("touch"));
        return true;
    });
}

bool HXDllGetTouchState(int version, const workflow::Workflow* component, HXDllTouchState* state) {
    return touch::Guarded([&] {
        const auto* own = dynamic_cast<const touch::TouchWorkflow*>(component);
        if (version != HXDllTouchStateVersion || own == nullptr || state == nullptr) {
            return false;
        }
        const touch::WorkflowInspector inspector(*own);
        // The names are literals, so each ends with a zero.
        *state = {NameOf(inspector.GetGesture()).data(), NameOf(inspector.GetGestureState()).data(),
                  inspector.GetNavigateMode() ? "navigate" : "select"};
        return true;
    });
}
