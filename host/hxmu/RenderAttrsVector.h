// Render attributes of a primitive. By default it is visible, opaque and can be picked.
#pragma once

#include "host/HostApi.h"
#include "host/dg/Color.h"
#include "host/du/RefCounted.h"

namespace hxmu {

// What a set of render attributes applies to.
enum RenderKind {
    RenderLines = 1,
    RenderSurfaces = 2,
};

// How one model primitive is drawn.
class HOST_API RenderAttrsVector : public du::RefCounted {
public:
    // Attributes of one kind in one colour; both kind fields take the same value, as for a plain line or surface.
    RenderAttrsVector(int kind, const dg::Color& color) noexcept;
    ~RenderAttrsVector() override;

    dg::Color color;
    int kind;           // of the primitive itself, a RenderKind
    int highlightKind;  // of the primitive while highlighted, a RenderKind
    int visible = 1;    // 0 hides it
    int pickable = 1;   // 0 lets picks pass through
    int layer = 0;
    int pattern = 0;
    int transparency = 0;
    int highlight = 0;
};

}  // namespace hxmu
