// SPDX-License-Identifier: GPL-3.0-or-later
#include "Parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

class ParallelBands : public testing::TestWithParam<int> {
  protected:
    void SetUp() override { SetWorkerCount(GetParam()); }
    void TearDown() override { SetWorkerCount(0); }
};

TEST_P(ParallelBands, CoverEveryRowOnce) {
    for (const int count : {1, 2, 7, 64, 1000}) {
        std::vector<std::atomic<int>> hits(count);
        ForEachBand(count, 3, [&](int first, int last) {
            for (int i = first; i < last; ++i) ++hits[i];
        });
        for (int i = 0; i < count; ++i) EXPECT_EQ(hits[i], 1) << i << " of " << count;
    }
}

TEST_P(ParallelBands, KeepTheGrainWhereTheCountAllows) {
    std::atomic<int> shortBands{0};
    ForEachBand(1000, 90, [&](int first, int last) {
        if (last - first < 90 && last != 1000) ++shortBands;
    });
    EXPECT_EQ(shortBands, 0);
}

TEST_P(ParallelBands, AnExceptionReachesTheCallerAfterAllBandsEnded) {
    EXPECT_THROW(ForEachBand(100, 1,
                             [](int first, int) {
                                 if (first == 0) throw std::runtime_error("band");
                             }),
                 std::runtime_error);
    std::atomic<int> rows{0};
    ForEachBand(100, 1, [&](int first, int last) { rows += last - first; });
    EXPECT_EQ(rows, 100);
}

TEST_P(ParallelBands, NestedAndConcurrentLoopsEnd) {
    std::atomic<int> rows{0};
    const auto nested = [&] {
        ForEachBand(20, 1, [&](int first, int last) {
            for (int i = first; i < last; ++i) ForEachBand(10, 1, [&](int a, int b) { rows += b - a; });
        });
    };
    std::thread other(nested);
    nested();
    other.join();
    EXPECT_EQ(rows, 400);
}

INSTANTIATE_TEST_SUITE_P(Threads, ParallelBands, testing::Values(1, 2, 3, 16));

TEST(Parallel, NothingHappensForAnEmptyRange) {
    ForEachBand(0, 1, [](int, int) { FAIL(); });
    ForEachBand(-4, 1, [](int, int) { FAIL(); });
}
