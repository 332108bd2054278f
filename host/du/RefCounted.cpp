#include "host/du/RefCounted.h"

namespace du {

RefCounted::~RefCounted() = default;

bool RefCounted::ZeroReferenceCountHook() const {
    return true;
}

int RefCounted::AddReference(void* /*holder*/) const noexcept {
    return ++m_references;
}

int RefCounted::RemoveReference(void* /*holder*/) const noexcept {
    return --m_references;
}

}  // namespace du
