// Owning pointers to reference-counted objects.
#pragma once

#include "host/du/RefCounted.h"

#include <cstddef>
#include <type_traits>
#include <utility>

namespace du {

// Removes one reference that `holder` has on the object and destroys the object when it was the last one and the
// object agrees. The exact protocol: remove; at zero add again and ask ZeroReferenceCountHook; if that answers true
// and a second removal reaches zero, destroy. A null object is nothing to do.
inline void ReleaseReference(const RefCounted* object, void* holder) {
    if (object != nullptr && object->RemoveReference(holder) == 0) {
        object->EndLastReference();
    }
}

// Holds one reference, with its own address as the holder, for as long as it points to an object. T derives from
// RefCounted and must be complete where a SmartPtr takes or releases an object.
template <class T>
class SmartPtr {
public:
    SmartPtr() noexcept = default;
    SmartPtr(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor): null is a pointer value
    explicit SmartPtr(T* object) : m_object(object) { Take(); }
    SmartPtr(const SmartPtr& other) : m_object(other.m_object) { Take(); }
    template <class U>
    requires std::is_convertible_v<U*, T*> SmartPtr(const SmartPtr<U>& other)
        : m_object(other.Get()) {  // NOLINT(google-explicit-constructor): up-cast
        Take();
    }
    ~SmartPtr() { Reset(); }

    SmartPtr& operator=(const SmartPtr& other) {
        Assign(other.m_object);
        return *this;
    }
    template <class U>
    requires std::is_convertible_v<U*, T*> SmartPtr& operator=(const SmartPtr<U>& other) {
        Assign(other.Get());
        return *this;
    }
    SmartPtr& operator=(T* object) {
        Assign(object);
        return *this;
    }
    SmartPtr& operator=(std::nullptr_t) {
        Reset();
        return *this;
    }

    // Releases the object, if any. The pointer is null before the object is destroyed, so that whatever the
    // destruction reaches finds it null.
    void Reset() {
        if (m_object != nullptr) {
            const RefCounted* released = std::exchange(m_object, nullptr);
            ReleaseReference(released, this);
        }
    }

    [[nodiscard]] T* Get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    friend bool operator==(const SmartPtr& a, const SmartPtr& b) noexcept { return a.m_object == b.m_object; }
    friend bool operator==(const SmartPtr& a, const T* b) noexcept { return a.m_object == b; }
    friend bool operator==(const SmartPtr& a, std::nullptr_t) noexcept { return a.m_object == nullptr; }

private:
    void Take() {
        if (m_object != nullptr) {
            m_object->AddReference(this);
        }
    }

    // The new object is taken before the old one is released; assigning the object already held changes nothing.
    void Assign(T* object) {
        if (object == m_object) {
            return;
        }
        T* old = std::exchange(m_object, object);
        Take();
        if (old != nullptr) {
            ReleaseReference(old, this);
        }
    }

    T* m_object = nullptr;
};

// A SmartPtr through which the object cannot be changed.
template <class T>
using ConstSmartPtr = SmartPtr<const T>;

}  // namespace du
