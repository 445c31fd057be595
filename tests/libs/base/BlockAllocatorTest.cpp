// SPDX-License-Identifier: GPL-3.0-or-later
#include "BlockAllocator.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <new>

namespace {
constexpr std::size_t Large = std::size_t{24} << 20;
}

TEST(BlockAllocator, LargeBlocksAreHandedOutAgain) {
    BlockAllocator::Trim();
    std::uint8_t* block = BlockAllocator::Take(Large);
    std::memset(block, 1, Large);
    BlockAllocator::Give(block, Large);
    EXPECT_GE(BlockAllocator::KeptBytes(), Large);
    EXPECT_EQ(BlockAllocator::Take(Large), block);
    EXPECT_EQ(BlockAllocator::KeptBytes(), 0u);
    BlockAllocator::Give(block, Large);
    BlockAllocator::Trim();
    EXPECT_EQ(BlockAllocator::KeptBytes(), 0u);
}

TEST(BlockAllocator, AMuchLargerKeptBlockIsNotWastedOnASmallBitmap) {
    BlockAllocator::Trim();
    std::uint8_t* large = BlockAllocator::Take(Large);
    BlockAllocator::Give(large, Large);
    std::uint8_t* small = BlockAllocator::Take(Large / 4);
    EXPECT_NE(small, large);
    BlockAllocator::Give(small, Large / 4);
    BlockAllocator::Trim();
}

TEST(BlockAllocator, KeepsNoMoreThanItsLimit) {
    BlockAllocator::Trim();
    std::vector<std::uint8_t*> blocks;
    for (int i = 0; i < 20; ++i) blocks.push_back(BlockAllocator::Take(Large));
    for (std::uint8_t* block : blocks) BlockAllocator::Give(block, Large);
    EXPECT_LE(BlockAllocator::KeptBytes(), BlockAllocator::MaxKeptBytes);
    EXPECT_GT(BlockAllocator::KeptBytes(), 0u);
    BlockAllocator::Trim();
}

TEST(BlockAllocator, BlocksAreAlignedForVectors) {
    for (const std::size_t bytes : {std::size_t{1}, std::size_t{100}, std::size_t{1} << 20, Large}) {
        std::uint8_t* block = BlockAllocator::Take(bytes);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0u) << bytes;
        BlockAllocator::Give(block, bytes);
    }
}

TEST(BlockAllocator, ASizeBeyondMemoryThrows) {
    EXPECT_THROW(BlockAllocator::Take(SIZE_MAX), std::bad_alloc);
}
