// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bitmap.h"

#include <gtest/gtest.h>

#include <new>
#include <thread>

#include "TestPictures.h"

TEST(Bitmap, NullIsALegalValueEverywhere) {
    Bitmap none;
    EXPECT_TRUE(none.IsNull());
    EXPECT_EQ(none.Pixels(), nullptr);
    EXPECT_EQ(none.MutablePixels(), nullptr);
    EXPECT_TRUE(none.Clone().IsNull());
    EXPECT_TRUE(none.IsOpaque());
    none.Fill(0xFFFFFFFF);
    EXPECT_EQ(none, Bitmap());
    EXPECT_TRUE(Bitmap(0, 5).IsNull());
    EXPECT_TRUE(Bitmap(5, -1).IsNull());
}

TEST(Bitmap, StartsTransparentAndHasNoPaddingInItsRows) {
    const Bitmap bitmap(3, 2);
    EXPECT_EQ(bitmap.Stride(), 12);
    EXPECT_EQ(bitmap.ByteCount(), 24u);
    for (int i = 0; i < 24; ++i) EXPECT_EQ(bitmap.Pixels()[i], 0);
}

TEST(Bitmap, CopySharesPixelsUntilOneIsWritten) {
    Bitmap first = TestPictures::Noise(40, 30, 1);
    Bitmap second = first;
    EXPECT_TRUE(first.SharesPixelsWith(second));
    const std::uint8_t before = first.Pixels()[0];
    second.MutablePixels()[0] = static_cast<std::uint8_t>(before + 1);
    EXPECT_FALSE(first.SharesPixelsWith(second));
    EXPECT_EQ(first.Pixels()[0], before);
    EXPECT_EQ(second.Pixels()[0], static_cast<std::uint8_t>(before + 1));
}

TEST(Bitmap, WritingAnUnsharedBitmapKeepsItsMemory) {
    Bitmap bitmap(8, 8);
    const std::uint8_t* place = bitmap.Pixels();
    EXPECT_EQ(bitmap.MutablePixels(), place);
}

TEST(Bitmap, CloneIsAnOwnCopyAtOnce) {
    const Bitmap large = TestPictures::Noise(701, 503, 2, false);
    const Bitmap copy = large.Clone();
    EXPECT_FALSE(copy.SharesPixelsWith(large));
    EXPECT_EQ(copy, large);
}

TEST(Bitmap, FillDetachesFromACopy) {
    const Bitmap kept = TestPictures::Ramp(16, 2);
    Bitmap filled = kept;
    filled.Fill(0x80402010);
    EXPECT_EQ(TestPictures::PixelAt(filled, 15, 1), 0x80402010u);
    EXPECT_EQ(kept, TestPictures::Ramp(16, 2));
}

TEST(Bitmap, MoveLeavesTheNullBitmap) {
    Bitmap a = TestPictures::Ramp(4, 4);
    Bitmap b = std::move(a);
    EXPECT_TRUE(a.IsNull());
    EXPECT_EQ(a.Width(), 0);
    EXPECT_EQ(b.Width(), 4);
    b = std::move(b);
    EXPECT_EQ(b.Width(), 4);
}

TEST(Bitmap, OneTranslucentPixelMakesItNotOpaque) {
    Bitmap bitmap = TestPictures::Plain(300, 300, 0xFF102030);
    EXPECT_TRUE(bitmap.IsOpaque());
    bitmap.MutablePixels()[bitmap.ByteCount() - 1] = 254;
    EXPECT_FALSE(bitmap.IsOpaque());
}

TEST(Bitmap, RefusesGiganticSizesBeforeTakingMemory) {
    EXPECT_TRUE(Bitmap::Allowed(6000, 4000));
    EXPECT_FALSE(Bitmap::Allowed(0, 1));
    EXPECT_FALSE(Bitmap::Allowed(Bitmap::MaxSide + 1, 1));
    EXPECT_FALSE(Bitmap::Allowed(1 << 20, 1 << 20));
    EXPECT_THROW(Bitmap(1 << 20, 1 << 20), std::bad_alloc);
}

TEST(Bitmap, CopiesOnDifferentThreadsShareSafely) {
    const Bitmap source = TestPictures::Noise(64, 64, 3);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([copy = source, i]() mutable {
            for (int k = 0; k < 200; ++k) {
                Bitmap mine = copy;
                mine.MutablePixels()[0] = static_cast<std::uint8_t>(i);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(source, TestPictures::Noise(64, 64, 3));
}
