// The end of an object. Apart from the header, because few releases are the last.
#include "host/du/RefCounted.h"

namespace du {

RefCounted::~RefCounted() = default;

bool RefCounted::ZeroReferenceCountHook() const {
    return true;
}

// Objects are released in destructors, out of which nothing may be thrown: a question that ends with an exception is
// one that was answered false.
void RefCounted::EndLastReference() const noexcept {
    AddReference(nullptr);
    bool agrees = false;
    try {
        agrees = ZeroReferenceCountHook();
    } catch (...) {  // NOLINT(bugprone-empty-catch)
    }
    if (agrees && RemoveReference(nullptr) == 0) {
        delete this;
    }
}

}  // namespace du
