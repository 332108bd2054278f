// Defaults of ManagedObject and Observer: a class without a name or bases, and notifications that nobody uses.
#include "host/dom/Observer.h"

namespace dom {

std::ptrdiff_t ManagedObject::BaseClassOffsetByName(const du::Symbol& /*name*/) const {
    return -1;
}

unsigned int ManagedObject::GetBaseClassCount() const {
    return 0;
}

int ManagedObject::GetBaseClassParent(unsigned int /*index*/) const {
    return -1;
}

du::Symbol ManagedObject::GetBaseClass(unsigned int /*index*/) const {
    return {};
}

du::Symbol ManagedObject::GetClassName() const {
    return {};
}

bool Observer::HandleMessage(const du::Symbol& /*message*/) {
    return false;
}

bool Observer::HandleTimeoutEvent(int /*timer*/) {
    return false;
}

bool Observer::HandleOnIdleEvent() {
    return false;
}

}  // namespace dom
