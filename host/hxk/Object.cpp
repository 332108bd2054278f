// A class test follows the descriptions from the object's own to the root, and compares them by number or by address.
// Attached data is found by its name's text.
#include "host/hxk/Object.h"

#include "host/hxg/MemoryPool.h"

namespace hxk {

constinit const ClassType Object::CLASS_TYPE{1, "Object", nullptr};

void* MemoryPoolAllocated::operator new(std::size_t size) {
    return hxg::MemoryPool::Allocate(size);
}

void MemoryPoolAllocated::operator delete(void* block, std::size_t size) noexcept {
    hxg::MemoryPool::Free(block, size);
}

Object::Object() = default;

Object::~Object() = default;

std::string Object::GetDebugClassName() const {
    return GetClassType().name;
}

const ClassType& Object::GetClassType() const {
    return CLASS_TYPE;
}

bool Object::IsATypeOfId(unsigned int id) const {
    for (const ClassType* type = &GetClassType(); type != nullptr; type = type->parent) {
        if (type->id == id) {
            return true;
        }
    }
    return false;
}

std::vector<const ClassType*> Object::GetClassTypes() const {
    std::vector<const ClassType*> types;
    for (const ClassType* type = &GetClassType(); type != nullptr; type = type->parent) {
        types.push_back(type);
    }
    return types;
}

void Object::AddUserData(const du::Symbol& name, du::UserData* data) {
    m_userData[name.GetString()] = data;
}

du::UserData* Object::GetUserData(const du::Symbol& name) const {
    const auto found = m_userData.find(name.GetString());
    return found == m_userData.end() ? nullptr : found->second;
}

void Object::RemoveUserData(const du::Symbol& name) {
    m_userData.erase(name.GetString());
}

std::string Object::GetObjectDescription() const {
    return {};
}

std::string Object::GetObjectName() const {
    return {};
}

void Object::AddRefCountedUserData(const du::Symbol& name, const du::SmartPtr<du::RefCounted>& data) {
    m_sharedUserData[name.GetString()] = data;
}

du::SmartPtr<du::RefCounted> Object::GetRefCountedUserData(const du::Symbol& name) const {
    const auto found = m_sharedUserData.find(name.GetString());
    return found == m_sharedUserData.end() ? nullptr : found->second;
}

bool Object::IsATypeOf(const ClassType& type) const {
    for (const ClassType* own = &GetClassType(); own != nullptr; own = own->parent) {
        if (own == &type) {
            return true;
        }
    }
    return false;
}

}  // namespace hxk
