// A mark for objects that are being drawn.
#pragma once

#include "host/HostApi.h"
#include "host/hxk/Object.h"

namespace hxk {

// An object that a drawing host marks while it reads it. Everything happens on one thread, so the lock is a counter:
// readers nest, and whoever changes the content can tell that a reader is under way.
class HOST_API ObjectWithRWLock : public Object {
public:
    ~ObjectWithRWLock() override;

    void BeginRead() const noexcept { ++m_readers; }
    void EndRead() const noexcept { --m_readers; }
    [[nodiscard]] bool IsBeingRead() const noexcept { return m_readers > 0; }

private:
    mutable int m_readers = 0;
};

}  // namespace hxk
