// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "EffectTable.h"
#include "TestPictures.h"

TEST(EffectThreads, ManyMayWantTheSameLookAtOnce) {
    Bitmap pictures[4];
    std::vector<std::thread> threads;
    for (Bitmap& picture : pictures)
        threads.emplace_back([&picture] { picture = WithEffect(44, TestPictures::Face(120, 150)); });
    for (std::thread& thread : threads) thread.join();
    for (const Bitmap& picture : pictures) EXPECT_TRUE(picture == pictures[0]);
}

TEST(EffectThreads, DifferentLooksAndSizesMayRunSideBySide) {
    // Grain tiles depend on the size of the picture, and those of a look are shared.
    std::vector<Bitmap> alone, together(8);
    const auto run = [](int i) { return WithEffect(i % 2 == 0 ? 17 : 8, TestPictures::Face(100 + 40 * i, 300)); };
    for (int i = 0; i < 8; ++i) alone.push_back(run(i));
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) threads.emplace_back([&, i] { together[i] = run(i); });
    for (std::thread& thread : threads) thread.join();
    for (int i = 0; i < 8; ++i) EXPECT_TRUE(together[i] == alone[i]) << i;
}
