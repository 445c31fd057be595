// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "CEffect.h"
#include "EffectKernels.h"
#include "Parallel.h"
#include "TestPictures.h"

namespace {

Bitmap Faded(const Bitmap& target, Bitmap other, double t) {
    Bitmap out = target;
    CEffect::Effect_AlphaAdJust(out.MutablePixels(), other.MutablePixels(), out.Width(), out.Height(), t);
    return out;
}

const Bitmap& First() {
    static const Bitmap picture = TestPictures::Noise(67, 41, 1, false);
    return picture;
}

const Bitmap& Second() {
    static const Bitmap picture = TestPictures::Noise(67, 41, 2, false);
    return picture;
}

}  // namespace

TEST(AlphaAdJust, IsExactAtBothEndsAndBeyond) {
    EXPECT_TRUE(Faded(First(), Second(), 0.0) == First());
    EXPECT_TRUE(Faded(First(), Second(), 1.0) == Second());
    EXPECT_TRUE(Faded(First(), Second(), -3.0) == First());
    EXPECT_TRUE(Faded(First(), Second(), 7.0) == Second());
    EXPECT_TRUE(Faded(First(), Second(), std::numeric_limits<double>::quiet_NaN()) == First());
}

TEST(AlphaAdJust, IsTheRoundedFormulaInEveryByte) {
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        for (int percent = 0; percent <= 100; ++percent) {
            const double t = percent * 0.01;
            const Bitmap result = Faded(First(), Second(), t);
            for (std::size_t i = 0; i < result.ByteCount(); ++i) {
                const double exact = First().Pixels()[i] * (1 - t) + Second().Pixels()[i] * t;
                ASSERT_LE(std::abs(result.Pixels()[i] - exact), 0.5002) << percent;
                const bool tie = std::abs(exact - std::floor(exact) - 0.5) <= 0.0002;
                ASSERT_TRUE(tie || result.Pixels()[i] == std::lround(exact)) << percent;
            }
        }
    }
    SelectKernelSet(-1);
}

TEST(AlphaAdJust, BothDirectionsGiveTheSamePicture) {
    for (const double t : {0.13, 0.37, 0.62, 0.99}) {
        const Bitmap forward = Faded(First(), Second(), t), back = Faded(Second(), First(), 1.0 - t);
        EXPECT_LE(TestPictures::LargestDifference(forward, back), 1) << t;
    }
}

TEST(AlphaAdJust, DoesNotDependOnThreads) {
    SetWorkerCount(1);
    const Bitmap one = Faded(First(), Second(), 0.41);
    SetWorkerCount(7);
    EXPECT_TRUE(Faded(First(), Second(), 0.41) == one);
    SetWorkerCount(0);
}
