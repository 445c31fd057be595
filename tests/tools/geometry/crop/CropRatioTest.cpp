// SPDX-License-Identifier: GPL-3.0-or-later
#include "CropRatio.h"

#include <gtest/gtest.h>

TEST(CropRatio, TheListHasItsRatiosAsHeightByWidth) {
    // Read as width : height.
    const double readings[][2] = {{1, 1}, {2, 3}, {3, 4}, {3, 5}, {4, 5}, {4, 6}, {5, 7}, {16, 9}, {16, 10}, {5, 2}};
    EXPECT_EQ(CropRatios[0], 0.0);
    for (std::size_t i = 1; i < CropRatios.size(); ++i)
        EXPECT_DOUBLE_EQ(CropRatios[i], readings[i - 1][1] / readings[i - 1][0]) << i;
}

TEST(CropRatio, ASquareInAPictureOf300By200Is200By200) {
    EXPECT_EQ(FitRatio({300, 200}, 1.0), QSize(200, 200));
}

TEST(CropRatio, EveryRatioFitsIntoAnyPictureAndTouchesIt) {
    for (const double ratio : CropRatios) {
        if (ratio == 0.0) continue;
        for (const QSize picture : {QSize(300, 200), QSize(200, 300), QSize(1, 1), QSize(6000, 4000), QSize(7, 1000)}) {
            const QSize fit = FitRatio(picture, ratio);
            EXPECT_EQ(fit.boundedTo(picture), fit);
            EXPECT_TRUE(fit.width() == picture.width() || fit.height() == picture.height());
        }
    }
    EXPECT_EQ(FitRatio({3000, 3000}, 4.0 / 3), QSize(2250, 3000));  // 3000 / (4/3) is 2250 and not 2249
}

TEST(CropRatio, SwappedSidesAreHeldWithinThePicture) {
    EXPECT_EQ(Swapped({120, 80}, {300, 200}), QSize(80, 120));
    EXPECT_EQ(Swapped({300, 150}, {300, 200}), QSize(100, 200));  // as high as the picture, half as wide
    EXPECT_EQ(Swapped({100, 200}, {150, 200}), QSize(150, 75));
    EXPECT_EQ(Swapped({50, 50}, {300, 200}), QSize(50, 50));
    EXPECT_EQ(Swapped({300, 1}, {300, 200}), QSize(1, 200));
}
