// Lists of free blocks by size, in steps of the strictest alignment, so that every block suits any type. Each list
// keeps a bounded number of blocks, so that a peak is not held on to.
#include "host/hxg/MemoryPool.h"

#include <array>
#include <new>

namespace hxg {
namespace {

// Free blocks of one size class are chained through their own memory. Large blocks go straight to the system.
struct FreeBlock {
    FreeBlock* next;
};

constexpr std::size_t SizeStep = alignof(std::max_align_t);
constexpr std::size_t SizeClasses = 64;
// As many blocks as one markup needs, a few times over; more would only hoard memory.
constexpr int BlocksKeptPerClass = 32;

struct SizeClass {
    FreeBlock* first = nullptr;
    int count = 0;
};

class FreeLists {
public:
    FreeLists() = default;
    FreeLists(const FreeLists&) = delete;
    FreeLists& operator=(const FreeLists&) = delete;
    ~FreeLists() {
        for (SizeClass& sizeClass : m_classes) {
            while (sizeClass.first != nullptr) {
                FreeBlock* block = sizeClass.first;
                sizeClass.first = block->next;
                ::operator delete(block);
            }
        }
    }

    SizeClass* Find(std::size_t size) noexcept {
        const std::size_t index = (size + SizeStep - 1) / SizeStep;
        return index < SizeClasses ? &m_classes[index] : nullptr;
    }

private:
    std::array<SizeClass, SizeClasses> m_classes{};
};

FreeLists& Lists() {
    static FreeLists lists;
    return lists;
}

std::size_t RoundUp(std::size_t size) {
    return size == 0 ? SizeStep : (size + SizeStep - 1) / SizeStep * SizeStep;
}

}  // namespace

void* MemoryPool::Allocate(std::size_t size) {
    const std::size_t rounded = RoundUp(size);
    SizeClass* sizeClass = Lists().Find(rounded);
    if (sizeClass == nullptr || sizeClass->first == nullptr) {
        return ::operator new(rounded);
    }
    FreeBlock* block = sizeClass->first;
    sizeClass->first = block->next;
    --sizeClass->count;
    return block;
}

void MemoryPool::Free(void* block, std::size_t size) noexcept {
    if (block == nullptr) {
        return;
    }
    SizeClass* sizeClass = Lists().Find(RoundUp(size));
    if (sizeClass == nullptr || sizeClass->count >= BlocksKeptPerClass) {
        ::operator delete(block);
        return;
    }
    sizeClass->first = new (block) FreeBlock{sizeClass->first};
    ++sizeClass->count;
}

}  // namespace hxg
