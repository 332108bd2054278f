// The edge of the component: nothing is thrown to the host.
#pragma once

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

}  // namespace touch
