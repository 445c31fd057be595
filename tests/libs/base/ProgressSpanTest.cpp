// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgressSpan.h"

#include <gtest/gtest.h>

TEST(ProgressSpan, SplitsByWeightWithoutGaps) {
    const auto [first, second, third] = Split<3>(ProgressSpan{nullptr, 10, 90}, {1, 2, 1});
    EXPECT_EQ(first.start, 10);
    EXPECT_EQ(first.end, 30);
    EXPECT_EQ(second.start, 30);
    EXPECT_EQ(second.end, 70);
    EXPECT_EQ(third.start, 70);
    EXPECT_EQ(third.end, 90);
}

TEST(ProgressSpan, ReportsItsShareOfTheBar) {
    CObjProgress sink;
    const ProgressSpan span{&sink, 34, 84};
    span.Report(1, 2);
    EXPECT_FLOAT_EQ(sink.GetValue(), 59.0f);
    span.Report(2, 2);
    EXPECT_FLOAT_EQ(sink.GetValue(), 84.0f);
}

TEST(ProgressSpan, ANullSinkIsLegal) {
    const ProgressSpan span;
    span.Report(1, 2);
    EXPECT_TRUE(span.CanContinue());
}

TEST(ProgressSpan, StopsWhenTheSinkSaysSo) {
    struct Stopping : CObjProgress {
        int CanContinue() override { return 0; }
    } sink;
    EXPECT_FALSE((ProgressSpan{&sink, 0, 100}.CanContinue()));
}
