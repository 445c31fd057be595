// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptRatio.h"

#include <gtest/gtest.h>

namespace {

constexpr QSize Most(10000, 10000);

}  // namespace

TEST(KeptRatio, TheOtherSideIsTruncated) {
    EXPECT_EQ(SizeByWidth(900, 1 / (3.0 / 2), Most), QSize(900, 600));
    EXPECT_EQ(SizeByWidth(901, 1 / (3.0 / 2), Most), QSize(901, 600));
    EXPECT_EQ(SizeByHeight(601, 1 / (3.0 / 2), Most), QSize(901, 601));
    EXPECT_EQ(SizeByHeight(7, 1 / (1.4), Most), QSize(9, 7));
    EXPECT_EQ(SizeByHeight(5, 1 / (1.4), Most), QSize(7, 5));  // and not 6, which binary arithmetic is near to
}

TEST(KeptRatio, AWidthOf2InAPictureOf4000By1000GivesHeight1AndIsRewritten) {
    EXPECT_EQ(SizeByWidth(2, 1 / (4.0), Most), QSize(4, 1));
}

TEST(KeptRatio, AHeightOf5000InAPictureOf4000By1000IsRewrittenTo2500) {
    EXPECT_EQ(SizeByHeight(5000, 1 / (4.0), Most), QSize(10000, 2500));
}

TEST(KeptRatio, BothSidesStayBetween1And10000) {
    for (const double aspect : {1e-5, 0.0003, 0.4, 1.0, 2.7, 5000.0, 1e5})
        for (const int side : {1, 2, 77, 5000, 10000})
            for (const QSize size : {SizeByWidth(side, 1 / (aspect), Most), SizeByHeight(side, 1 / (aspect), Most)}) {
                EXPECT_GE(size.width(), 1) << aspect;
                EXPECT_GE(size.height(), 1) << aspect;
                EXPECT_LE(size.width(), 10000) << aspect;
                EXPECT_LE(size.height(), 10000) << aspect;
            }
}

TEST(KeptRatio, TheOtherSideFollowsTheTypedOne) {
    EXPECT_EQ(SizeByWidth(100, 1.5, {300, 200}), QSize(100, 150));
    EXPECT_EQ(SizeByHeight(150, 1.5, {300, 200}), QSize(100, 150));
    EXPECT_EQ(SizeByWidth(101, 1.5, {300, 200}), QSize(101, 151));
}

TEST(KeptRatio, AFollowingSideIsHeldAndTheTypedOneRewritten) {
    EXPECT_EQ(SizeByWidth(250, 1.5, {300, 200}), QSize(133, 200));  // 375 would be above the picture
    EXPECT_EQ(SizeByWidth(2, 0.4, {300, 200}), QSize(2, 1));        // 0 becomes 1, and 1 / 0.4 is 2
    EXPECT_EQ(SizeByWidth(1, 0.25, {300, 200}), QSize(4, 1));
    EXPECT_EQ(SizeByHeight(200, 0.4, {300, 200}), QSize(300, 120));
    EXPECT_EQ(SizeByHeight(1, 4.0, {300, 200}), QSize(1, 4));
}
