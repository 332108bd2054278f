// Intrusive reference counting.
#pragma once

#include "host/HostApi.h"

namespace du {

// Base of every shared object. A new object has no references; smart pointers add and remove them (see SmartPtr.h for
// the release protocol). Copies start without references: the count belongs to the object, not to its value.
// Everything happens on one thread; the count is not atomic.
class HOST_API RefCounted {
public:
    virtual ~RefCounted();
    // Asked when the count has dropped to zero: true lets the object be destroyed, false keeps it alive, with the
    // reference that was added for the question left in place, and so does an exception. The default is true.
    virtual bool ZeroReferenceCountHook() const;

    // Adds a reference held by the smart pointer (or local) at the given address; answers the new count.
    // The address identifies the holder to debugging hosts and is not stored here.
    int AddReference(void* /*holder*/) const noexcept { return ++m_references; }
    // Removes a reference; answers the new count, 0 when the last one went.
    int RemoveReference(void* /*holder*/) const noexcept { return --m_references; }

    // What follows the removal of the last reference, as SmartPtr.h says: adds it again for the question, and destroys
    // the object when that is answered with true and nobody has taken the object meanwhile.
    void EndLastReference() const noexcept;

    // The number of references, for inspection.
    [[nodiscard]] int GetReferenceCount() const noexcept { return m_references; }

protected:
    RefCounted() noexcept = default;
    RefCounted(const RefCounted&) noexcept {}
    RefCounted& operator=(const RefCounted&) noexcept { return *this; }

private:
    mutable int m_references = 0;
};

}  // namespace du
