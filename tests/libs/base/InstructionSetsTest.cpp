// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "InstructionSets.h"

TEST(InstructionSets, HaveNamesThatLeadBackToTheirNumbers) {
    for (int set = 0; set < 3; ++set) EXPECT_EQ(KernelSetByName(KernelSetName(set)), set);
    EXPECT_EQ(KernelSetName(0), "baseline");
    EXPECT_EQ(KernelSetName(1), "avx2");
    EXPECT_EQ(KernelSetName(2), "avx512");
}

TEST(InstructionSets, RefuseOtherNamesAndNumbers) {
    for (const char* name : {"", "AVX2", "avx", "avx5122", "sse"}) EXPECT_EQ(KernelSetByName(name), -1) << name;
    EXPECT_TRUE(KernelSetName(-1).empty());
    EXPECT_TRUE(KernelSetName(3).empty());
}

TEST(InstructionSets, TheChoiceHoldsUntilTheWidestIsRestored) {
    const int widest = KernelSetCount() - 1;
    for (int set = 0; set <= widest; ++set) {
        SelectKernelSet(set);
        EXPECT_EQ(SelectedKernelSet(), set);
    }
    SelectKernelSet(0);
    SelectKernelSet(widest + 1);
    EXPECT_EQ(SelectedKernelSet(), widest);
    SelectKernelSet(0);
    SelectKernelSet(-1);
    EXPECT_EQ(SelectedKernelSet(), widest);
}
