// SPDX-License-Identifier: GPL-3.0-or-later
#include "BitmapView.h"

#include <gtest/gtest.h>

#include "TestPictures.h"

TEST(BitmapView, HasTheBitmapsPixelsWithoutACopy) {
    const Bitmap bitmap = TestPictures::Noise(7, 5, 4, false);
    const QImage view = ViewOf(bitmap);
    EXPECT_EQ(view.constBits(), bitmap.Pixels());
    EXPECT_EQ(view.pixel(3, 2), TestPictures::PixelAt(bitmap, 3, 2));
    EXPECT_EQ(ViewOf(bitmap, AlphaUse::Ignore).format(), QImage::Format_RGB32);
}

TEST(BitmapView, OutlivesTheBitmap) {
    QImage view;
    {
        const Bitmap bitmap = TestPictures::Plain(4, 4, 0xFF112233);
        view = ViewOf(bitmap);
    }
    EXPECT_EQ(view.pixel(3, 3), 0xFF112233u);
}

TEST(BitmapView, WritingTheBitmapLeavesTheView) {
    Bitmap bitmap = TestPictures::Plain(4, 4, 0xFF112233);
    const QImage view = ViewOf(bitmap);
    bitmap.Fill(0xFFFFFFFF);
    EXPECT_EQ(view.pixel(0, 0), 0xFF112233u);
}

TEST(BitmapView, AnyImageBecomesABitmapAndBack) {
    EXPECT_TRUE(BitmapOf({}).IsNull());
    EXPECT_TRUE(ViewOf({}).isNull());
    const Bitmap bitmap = TestPictures::Noise(9, 3, 8, false);
    EXPECT_EQ(BitmapOf(ViewOf(bitmap)), bitmap);
    QImage grey(3, 1, QImage::Format_Grayscale8);
    grey.fill(77);
    EXPECT_EQ(TestPictures::PixelAt(BitmapOf(grey), 2, 0), 0xFF4D4D4Du);
}
