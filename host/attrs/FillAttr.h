// A surface's fill attributes, held by reference from the model primitives of a markup.
#pragma once

#include "host/HostApi.h"
#include "host/dg/Color.h"
#include "host/du/RefCounted.h"
#include "host/hxg/MemoryPool.h"

#include <cstddef>

namespace attrs {

// How a surface is filled. Style 0 is solid.
class HOST_API FillAttr : public du::RefCounted {
public:
    FillAttr(int style, const dg::Color& color) noexcept;
    ~FillAttr() override;

    static void* operator new(std::size_t size) { return hxg::MemoryPool::Allocate(size); }
    static void operator delete(void* block, std::size_t size) noexcept { hxg::MemoryPool::Free(block, size); }

    [[nodiscard]] int GetStyle() const noexcept { return m_style; }
    [[nodiscard]] const dg::Color& GetColor() const noexcept { return m_color; }

private:
    int m_style;
    dg::Color m_color;
};

}  // namespace attrs
