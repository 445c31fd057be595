// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "CMathDefine.h"

namespace {

void ExpectTurned(MathPoint point, MathPoint centre, double degrees, MathPoint expected) {
    const MathPoint turned = CMathDefine::PtChangeByRotate(point, centre, degrees);
    EXPECT_NEAR(turned.x, expected.x, 1e-9) << degrees;
    EXPECT_NEAR(turned.y, expected.y, 1e-9) << degrees;
}

}  // namespace

TEST(PtChangeByRotate, TurnsClockwiseWhereYGrowsDownwards) {
    ExpectTurned({15, 20}, {10, 20}, 90, {10, 25});
    ExpectTurned({15, 20}, {10, 20}, -90, {10, 15});
    ExpectTurned({15, 20}, {10, 20}, 30, {10 + 5 * std::sqrt(0.75), 22.5});
}

TEST(PtChangeByRotate, QuarterTurnsAreExact) {
    for (const double degrees : {0.0, 360.0, -720.0}) {
        const MathPoint same = CMathDefine::PtChangeByRotate({3.25, -7.5}, {1, 2}, degrees);
        EXPECT_EQ(same.x, 3.25);
        EXPECT_EQ(same.y, -7.5);
    }
    const MathPoint half = CMathDefine::PtChangeByRotate({3, 5}, {1, 2}, 180);
    EXPECT_EQ(half.x, -1);
    EXPECT_EQ(half.y, -1);
}

TEST(PtChangeByRotate, KeepsTheDistanceAndComesBack) {
    for (int degrees = -400; degrees <= 400; degrees += 7) {
        const MathPoint turned = CMathDefine::PtChangeByRotate({40, 3}, {-2, 8}, degrees);
        EXPECT_NEAR(std::hypot(turned.x + 2, turned.y - 8), std::hypot(42, 5), 1e-9);
        ExpectTurned(turned, {-2, 8}, -degrees, {40, 3});
    }
}
