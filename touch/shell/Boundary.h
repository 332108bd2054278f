// The edge of the component: nothing is thrown to the host, and no object dies while it works.
#pragma once

#include "host/du/RefCounted.h"

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

// Holds an object during one of its own operations: a host that is called back may drop its last reference. An object
// that nobody held before is not ours to destroy.
class Held {
public:
    explicit Held(const du::RefCounted& object) noexcept : m_object(object), m_before(object.GetReferenceCount()) {
        m_object.AddReference(nullptr);
    }
    ~Held() {
        if (m_object.RemoveReference(nullptr) == 0 && m_before > 0) {
            m_object.EndLastReference();
        }
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    const du::RefCounted& m_object;
    int m_before;
};

// The same for an operation of an object, which is held meanwhile.
template <class Operation>
bool Guarded(const du::RefCounted& object, Operation&& operation) noexcept {
    const Held held(object);
    return Guarded(std::forward<Operation>(operation));
}

}  // namespace touch
