// The pool behind markups and fill attributes. Blocks of the tests have sizes that nothing else in this program asks
// for.
#include "host/hxg/MemoryPool.h"
#include "host/attrs/FillAttr.h"
#include "host/hxk/Object.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <vector>

namespace {

using hxg::MemoryPool;

template <std::size_t Size>
struct PooledObject : hxk::Object {
    std::array<unsigned char, Size> bytes{};
};

TEST(MemoryPools, LiveBlocksAreAlignedAndDoNotOverlap) {
    // More blocks of a size than the pool keeps, and sizes around every limit: none, a step, the largest class.
    constexpr std::size_t sizes[] = {0, 1, 15, 16, 17, 992, 1008, 1009, 1024, 5000};
    constexpr std::size_t blockCount = 500;
    const auto sizeOf = [&](std::size_t i) { return sizes[i % std::size(sizes)]; };
    for (int round = 0; round < 3; ++round) {
        std::vector<unsigned char*> blocks;
        for (std::size_t i = 0; i < blockCount; ++i) {
            blocks.push_back(static_cast<unsigned char*>(MemoryPool::Allocate(sizeOf(i))));
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks[i]) % alignof(std::max_align_t), 0U) << sizeOf(i);
            std::memset(blocks[i], static_cast<int>(i % 251), sizeOf(i));
        }
        for (std::size_t i = 0; i < blockCount; ++i) {
            const std::vector<unsigned char> expected(sizeOf(i), static_cast<unsigned char>(i % 251));
            EXPECT_EQ(std::vector<unsigned char>(blocks[i], blocks[i] + sizeOf(i)), expected);
            MemoryPool::Free(blocks[i], sizeOf(i));
        }
    }
    MemoryPool::Free(nullptr, 48);
}

TEST(MemoryPools, AReturnedBlockServesTheNextObjectOfItsSize) {
    // Deleted through the base: the block goes back to the class of the derived size, not of the base's.
    du::SmartPtr<hxk::Object> object(new PooledObject<400>);
    const void* address = dynamic_cast<void*>(object.Get());
    object.Reset();
    const du::SmartPtr<hxk::Object> small(new PooledObject<40>);
    EXPECT_NE(dynamic_cast<void*>(small.Get()), address);
    const du::SmartPtr<hxk::Object> large(new PooledObject<400>);
    EXPECT_EQ(dynamic_cast<void*>(large.Get()), address);

    void* block = MemoryPool::Allocate(700);
    MemoryPool::Free(block, 700);
    void* again = MemoryPool::Allocate(697);
    EXPECT_EQ(again, block) << "697 bytes need a block as large as 700 do";
    MemoryPool::Free(again, 697);

    du::SmartPtr<attrs::FillAttr> fill(new attrs::FillAttr(3, {0.1F, 0.2F, 0.3F, 0.4F}));
    address = fill.Get();
    fill.Reset();
    fill = new attrs::FillAttr(3, {0.1F, 0.2F, 0.3F, 0.4F});
    EXPECT_EQ(fill.Get(), address) << "fill attributes come from the pool";
}

}  // namespace
