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
#include <vector>

namespace {

using hxg::MemoryPool;

template <std::size_t Size>
struct PooledObject : hxk::Object {
    std::array<unsigned char, Size> bytes{};
};

TEST(MemoryPools, AReturnedBlockServesTheNextRequestOfItsSize) {
    void* block = MemoryPool::Allocate(700);
    MemoryPool::Free(block, 700);
    void* otherSize = MemoryPool::Allocate(100);
    EXPECT_NE(otherSize, block);
    void* again = MemoryPool::Allocate(697);
    EXPECT_EQ(again, block) << "697 bytes need a block as large as 700 do";
    MemoryPool::Free(again, 697);
    MemoryPool::Free(otherSize, 100);
}

TEST(MemoryPools, LiveBlocksAreAlignedAndDoNotOverlap) {
    struct Block {
        unsigned char* bytes;
        std::size_t size;
    };
    std::vector<Block> blocks;
    // More blocks of a size than the pool keeps, and sizes around every limit: none, a step, the largest class.
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 50; ++i) {
            for (const std::size_t size : {0U, 1U, 15U, 16U, 17U, 992U, 1008U, 1009U, 1024U, 5000U}) {
                auto* bytes = static_cast<unsigned char*>(MemoryPool::Allocate(size));
                EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % alignof(std::max_align_t), 0U) << size;
                std::memset(bytes, static_cast<int>(blocks.size() % 251), size);
                blocks.push_back({bytes, size});
            }
        }
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            const std::vector<unsigned char> expected(blocks[i].size, static_cast<unsigned char>(i % 251));
            EXPECT_EQ(std::vector<unsigned char>(blocks[i].bytes, blocks[i].bytes + blocks[i].size), expected);
            MemoryPool::Free(blocks[i].bytes, blocks[i].size);
        }
        blocks.clear();
    }
}

TEST(MemoryPools, FreeingNullIsNothing) {
    MemoryPool::Free(nullptr, 48);
    void* block = MemoryPool::Allocate(48);
    EXPECT_NE(block, nullptr);
    MemoryPool::Free(block, 48);
}

TEST(MemoryPools, HostObjectsAreReturnedWithTheSizeOfTheirOwnClass) {
    // Deleted through the base: the block goes back to the class of the derived size, not of the base's.
    du::SmartPtr<hxk::Object> object(new PooledObject<400>);
    const void* address = dynamic_cast<void*>(object.Get());
    object.Reset();
    const du::SmartPtr<hxk::Object> small(new PooledObject<40>);
    EXPECT_NE(dynamic_cast<void*>(small.Get()), address);
    const du::SmartPtr<hxk::Object> large(new PooledObject<400>);
    EXPECT_EQ(dynamic_cast<void*>(large.Get()), address);
}

TEST(MemoryPools, FillAttributesComeFromThePool) {
    du::SmartPtr<attrs::FillAttr> fill(new attrs::FillAttr(3, {0.1F, 0.2F, 0.3F, 0.4F}));
    const void* address = fill.Get();
    EXPECT_EQ(fill->GetStyle(), 3);
    EXPECT_EQ(fill->GetColor(), dg::Color(0.1F, 0.2F, 0.3F, 0.4F));
    fill.Reset();
    void* block = MemoryPool::Allocate(sizeof(attrs::FillAttr));
    EXPECT_EQ(block, address);
    MemoryPool::Free(block, sizeof(attrs::FillAttr));
}

}  // namespace
