// The edge of the component: nothing is thrown to the host, and no object dies while it works.
#pragma once

#include "host/du/SmartPtr.h"

#include <utility>

namespace touch {

// Runs an operation that the host called. An exception, such as exhausted memory, ends the operation and the answer is
// false.
template <class Operation>
bool Guarded(Operation&& operation) noexcept {
    try {
        return operation();
    } catch (...) {
        return false;
    }
}

// The same for an operation of an object, which is held meanwhile: a host that is called back may drop its last
// reference. An object that nobody holds yet is not ours to destroy.
template <class Object, class Operation>
bool Guarded(Object& object, Operation&& operation) noexcept {
    const du::SmartPtr<Object> held(object.GetReferenceCount() > 0 ? &object : nullptr);
    return Guarded(std::forward<Operation>(operation));
}

}  // namespace touch
