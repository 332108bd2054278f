#include "host/du/RefCounted.h"

namespace du {

RefCounted::~RefCounted() = default;

bool RefCounted::ZeroReferenceCountHook() const {
    return true;
}

}  // namespace du
