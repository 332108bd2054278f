// The root of views and markups, and run-time class tests.
#pragma once

#include "host/HostApi.h"
#include "host/du/RefCounted.h"
#include "host/du/SmartPtr.h"
#include "host/du/Symbol.h"
#include "host/du/UserData.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace hxk {

class Preferences;

// Describes one class of host objects. Descriptions are constants; they are compared by address.
struct ClassType {
    unsigned int id;          // the host's number of the class
    const char* name;         // for diagnostics
    const ClassType* parent;  // null for a root
};

// Base of objects that come from the host's memory pool.
class HOST_API MemoryPoolAllocated {
public:
    static void* operator new(std::size_t size);
    static void operator delete(void* block, std::size_t size) noexcept;
};

// Base of views and markups.
class HOST_API Object : public MemoryPoolAllocated, public virtual du::RefCounted {
public:
    static const ClassType CLASS_TYPE;

    ~Object() override;
    virtual std::string GetDebugClassName() const;
    // The class of the object.
    virtual const ClassType& GetClassType() const;
    // Whether the object's class or one of its bases has the given number.
    virtual bool IsATypeOfId(unsigned int id) const;
    // The object's class and its bases, nearest first.
    virtual std::vector<const ClassType*> GetClassTypes() const;
    // Data that other code attaches under a name. Plain user data is not owned; attaching null or attaching again
    // replaces what was there. Looking up a missing name gives null.
    virtual void AddUserData(const du::Symbol& name, du::UserData* data);
    virtual du::UserData* GetUserData(const du::Symbol& name) const;
    virtual void RemoveUserData(const du::Symbol& name);
    virtual std::string GetObjectDescription() const;
    virtual std::string GetObjectName() const;
    // The same for shared data, which the object holds a reference to.
    virtual void AddRefCountedUserData(const du::Symbol& name, const du::SmartPtr<du::RefCounted>& data);
    virtual du::SmartPtr<du::RefCounted> GetRefCountedUserData(const du::Symbol& name) const;

    // Whether the object's class is the given class or derives from it.
    [[nodiscard]] bool IsATypeOf(const ClassType& type) const;

protected:
    Object();

private:
    std::map<std::string, du::UserData*> m_userData;
    std::map<std::string, du::SmartPtr<du::RefCounted>> m_sharedUserData;
};

}  // namespace hxk
