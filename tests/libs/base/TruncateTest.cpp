// SPDX-License-Identifier: GPL-3.0-or-later
#include "Truncate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(Truncate, GoesTowardsZeroAndNeverRounds) {
    EXPECT_EQ(Truncate(2.999), 2);
    EXPECT_EQ(Truncate(-2.999), -2);
    EXPECT_EQ(Truncate(0.5), 0);
    EXPECT_EQ(Truncate(-0.9), 0);
}

TEST(Truncate, HoldsValuesOutsideInt) {
    EXPECT_EQ(Truncate(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(Truncate(-1e300), std::numeric_limits<int>::min());
    EXPECT_EQ(Truncate(std::nan("")), 0);
}

TEST(Truncate, ASideIsAtLeastOne) {
    EXPECT_EQ(TruncateSide(0.3), 1);
    EXPECT_EQ(TruncateSide(-7), 1);
    EXPECT_EQ(TruncateSide(1.99), 1);
    EXPECT_EQ(TruncateSide(2000.0), 2000);
}
