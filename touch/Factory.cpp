// The entry points. They decide which requests are for this component: every part of the request must match byte for
// byte. Tested by tests/component/FactoryTest.cpp.
#include "touch/Factory.h"

#include "touch/Boundary.h"
#include "touch/TouchWorkflow.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

constexpr std::string_view ViewTypes[] = {"shapeview",         "drawingview", "imageview",
                                          "ecadschematicview", "ecadpcbview", "schematicfigureview",
                                          "illustration2dview"};

}  // namespace

void HXDllInit() {}

void HXDllTerminate() {}

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
