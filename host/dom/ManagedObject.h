// Objects that a host can take over and look up by class at run time.
#pragma once

#include "host/HostApi.h"
#include "host/du/RefCounted.h"
#include "host/du/Symbol.h"

#include <cstddef>

namespace dom {

// Base of objects that a host manages. The first five operations describe the object's class to scripting hosts; the
// defaults describe a class without bases.
class HOST_API ManagedObject : public virtual du::RefCounted {
public:
    // The byte offset of a named base class within the object; -1 when it is not a base.
    virtual std::ptrdiff_t BaseClassOffsetByName(const du::Symbol& name) const;
    virtual unsigned int GetBaseClassCount() const;
    // The index of the class that base `index` derives from; -1 for none.
    virtual int GetBaseClassParent(unsigned int index) const;
    // The name of base `index`; the empty name when there is no such base.
    virtual du::Symbol GetBaseClass(unsigned int index) const;
    virtual du::Symbol GetClassName() const;
};

}  // namespace dom
