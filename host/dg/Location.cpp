#include "host/dg/Location.h"

namespace dg {

void Location::Sanitize() noexcept {
    DVec3 u(GetU());
    DVec3 v(GetV());
    if (!u.Normalize()) {
        return;
    }
    v -= u * DotProduct(u, v);
    if (!v.Normalize()) {
        return;
    }
    SetAxis(0, u);
    SetAxis(1, v);
    SetAxis(2, CrossProduct(u, v));
}

}  // namespace dg
