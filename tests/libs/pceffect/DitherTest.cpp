// SPDX-License-Identifier: GPL-3.0-or-later
// A slope of levels dissolves instead of breaking into bands.
#include <gtest/gtest.h>

#include <cmath>

#include "EffectKernels.h"
#include "Look.h"
#include "Parallel.h"
#include "TestPictures.h"

namespace {

// Longest run of one level in the middle row's green between two columns.
int LongestRun(const Bitmap& picture, int first, int last) {
    int longest = 0, run = 0, before = -1;
    for (int x = first; x < last; ++x) {
        const int level = picture.Row(picture.Height() / 2)[4 * x + 1];
        run = level == before ? run + 1 : 1;
        before = level;
        longest = std::max(longest, run);
    }
    return longest;
}

// Light that falls off over the whole width by a few levels only: the slope that bands most.
Recipe SoftSlope() {
    Recipe recipe;
    recipe.vignette.amount = 9;
    recipe.vignette.start = 0;
    recipe.vignette.end = 200;
    recipe.vignette.x = 0;
    return recipe;
}

Bitmap Applied(const Recipe& recipe, Bitmap picture) {
    EXPECT_NE(Look(recipe).Apply(picture.MutablePixels(), picture.Width(), picture.Height(), {}), 0);
    return picture;
}

}  // namespace

TEST(Dither, ASmoothSlopeHasNoBands) {
    const Bitmap slope = Applied(SoftSlope(), TestPictures::Plain(1600, 400, 0xFF6E6E6E));
    // Rounded plainly, the few levels between the two columns would lie in bands a hundred pixels and more wide.
    const int levels = slope.Row(200)[4 * 400] - slope.Row(200)[4 * 1200];
    EXPECT_GT(levels, 2);
    EXPECT_GT(800 / (levels + 1), 100);
    EXPECT_LT(LongestRun(slope, 400, 1200), 60);
}

TEST(Dither, TheMeanOverAFewPixelsIsTheExactLevel) {
    // A curve that puts levels between whole ones.
    Recipe recipe;
    recipe.master = {{0, 20.3}, {255, 200.8}};
    const Look look(recipe);
    for (int level = 0; level < 256; level += 5) {
        const Bitmap flat = Applied(recipe, TestPictures::Plain(16, 16, 0xFF000000u | unsigned(level) * 0x010101u));
        double sum = 0;
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x) sum += flat.Row(y)[4 * x + 1];
        const double v = level / 255.0;
        EXPECT_NEAR(sum / 256, 255 * look.Colours().At({v, v, v})[1], 0.12) << level;
    }
}

TEST(Dither, GreysStayGreyAndMoveByOneLevelAtMost) {
    const Bitmap slope = Applied(SoftSlope(), TestPictures::Plain(500, 300, 0xFF6E6E6E));
    for (int y = 1; y < 300; ++y)
        for (int x = 1; x < 500; ++x) {
            const std::uint8_t* p = slope.Row(y) + 4 * x;
            ASSERT_TRUE(p[0] == p[1] && p[1] == p[2]);
            ASSERT_LE(std::abs(p[1] - p[-3]), 1);
        }
}

TEST(Dither, WhatIsWholeStays) {
    const Bitmap source = TestPictures::Noise(700, 90, 17, false);
    EXPECT_TRUE(Applied(Recipe(), source) == source);
}

TEST(Dither, DependsOnThePlaceAloneForAnyThreadsAndInstructionSet) {
    const Bitmap source = TestPictures::Ramp(1003, 401);
    SetWorkerCount(1);
    SelectKernelSet(0);
    const Bitmap plain = Applied(SoftSlope(), source);
    SetWorkerCount(3);
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        EXPECT_TRUE(Applied(SoftSlope(), source) == plain) << EffectKernelSet(set).name;
    }
    SetWorkerCount(0);
    SelectKernelSet(-1);
}
