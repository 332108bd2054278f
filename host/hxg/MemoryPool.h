// A pool of small memory blocks for model primitives and markups.
#pragma once

#include "host/HostApi.h"

#include <cstddef>

namespace hxg {

// Hands out blocks by size and keeps returned ones for the next request of the same size class. One thread only.
class HOST_API MemoryPool {
public:
    // A block of at least `size` bytes, aligned for any type. Throws std::bad_alloc when memory is exhausted.
    [[nodiscard]] static void* Allocate(std::size_t size);
    // Gives a block back; `size` is what it was allocated with. Null is nothing to do.
    static void Free(void* block, std::size_t size) noexcept;
};

}  // namespace hxg
