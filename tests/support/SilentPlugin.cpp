// A plug-in whose workflow does nothing, and that does not tell what its workflow does. For images it makes none, and
// throws what nobody expects.
#include "host/workflow/SimpleWorkflow.h"
#include "touch/Factory.h"

namespace {

class SilentWorkflow final : public workflow::SimpleWorkflow {
public:
    SilentWorkflow() : SimpleWorkflow(du::Symbol("touch")) {}
};

}  // namespace

void HXDllInit() {}

void HXDllTerminate() {}

bool HXDllCreateComponent(const std::string& viewType, const std::string& /*componentKind*/,
                          const std::string& /*componentName*/, du::SmartPtr<workflow::Workflow>& component) {
    if (viewType == "imageview") {
        throw 1;  // NOLINT(hicpp-exception-baseclass)
    }
    component = new SilentWorkflow;
    return true;
}
