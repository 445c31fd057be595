// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptSize.h"

#include <gtest/gtest.h>

TEST(KeptSize, TheOtherSideIsTruncated) {
    EXPECT_EQ(KeptByWidth(900, 3.0 / 2), QSize(900, 600));
    EXPECT_EQ(KeptByWidth(901, 3.0 / 2), QSize(901, 600));
    EXPECT_EQ(KeptByHeight(601, 3.0 / 2), QSize(901, 601));
    EXPECT_EQ(KeptByHeight(7, 1.4), QSize(9, 7));
    EXPECT_EQ(KeptByHeight(5, 1.4), QSize(7, 5));  // and not 6, which binary arithmetic is near to
}

TEST(KeptSize, AWidthOf2InAPictureOf4000By1000GivesHeight1AndIsRewritten) {
    EXPECT_EQ(KeptByWidth(2, 4.0), QSize(4, 1));
}

TEST(KeptSize, AHeightOf5000InAPictureOf4000By1000IsRewrittenTo2500) {
    EXPECT_EQ(KeptByHeight(5000, 4.0), QSize(10000, 2500));
}

TEST(KeptSize, BothSidesStayBetween1And10000) {
    for (const double aspect : {1e-5, 0.0003, 0.4, 1.0, 2.7, 5000.0, 1e5})
        for (const int side : {1, 2, 77, 5000, 10000})
            for (const QSize size : {KeptByWidth(side, aspect), KeptByHeight(side, aspect)}) {
                EXPECT_GE(size.width(), 1) << aspect;
                EXPECT_GE(size.height(), 1) << aspect;
                EXPECT_LE(size.width(), 10000) << aspect;
                EXPECT_LE(size.height(), 10000) << aspect;
            }
}
