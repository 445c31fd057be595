// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "PC_Dsp.h"

namespace {

using Fill = int (*)(unsigned char** table, int radius);

// Rows that each lie by themselves, as the brushes have them.
class Table {
  public:
    Table(Fill fill, int radius) : m_radius(radius) {
        for (int y = 0; y < 2 * radius; ++y) {
            m_rows.push_back(std::make_unique<unsigned char[]>(2 * radius));
            m_pointers.push_back(m_rows.back().get());
        }
        EXPECT_NE(fill(m_pointers.data(), radius), 0);
    }
    int At(int x, int y) const { return m_rows[y][x]; }
    double Away(int x, int y) const { return std::hypot(x + 0.5 - m_radius, y + 0.5 - m_radius); }
    long Sum() const {
        long sum = 0;
        for (int y = 0; y < 2 * m_radius; ++y)
            for (int x = 0; x < 2 * m_radius; ++x) sum += At(x, y);
        return sum;
    }

  private:
    int m_radius;
    std::vector<std::unique_ptr<unsigned char[]>> m_rows;
    std::vector<unsigned char*> m_pointers;
};

class SoftDisc : public testing::TestWithParam<Fill> {};

constexpr int Radii[] = {1, 2, 3, 5, 17, 60, 201};

}  // namespace

TEST_P(SoftDisc, IsFullInTheMiddleAndNothingAtTheRim) {
    for (const int radius : Radii) {
        const Table table(GetParam(), radius);
        for (const int x : {radius - 1, radius})
            for (const int y : {radius - 1, radius}) EXPECT_EQ(table.At(x, y), 255) << radius;
        for (int y = 0; y < 2 * radius; ++y)
            for (int x = 0; x < 2 * radius; ++x) {
                if (table.Away(x, y) >= radius && radius > 1) {
                    EXPECT_EQ(table.At(x, y), 0) << radius;
                }
            }
    }
}

TEST_P(SoftDisc, FallsWithTheDistanceAlone) {
    for (const int radius : {5, 17, 60}) {
        const Table table(GetParam(), radius);
        const int side = 2 * radius;
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                ASSERT_EQ(table.At(x, y), table.At(side - 1 - x, y));
                ASSERT_EQ(table.At(x, y), table.At(y, x));
                if (x >= radius && x + 1 < side) {
                    ASSERT_LE(table.At(x + 1, y), table.At(x, y));
                }
            }
    }
}

// A bend in the profile is what the eye sees as a ring, and many stamps on one place make it sharper.
TEST_P(SoftDisc, ShowsNoRingAfterManyStamps) {
    constexpr int radius = 200;
    const Table table(GetParam(), radius);
    std::vector<double> paint(radius, 0.0);
    for (int stamp = 0; stamp < 25; ++stamp)
        for (int i = 0; i < radius; ++i) {
            const double share = table.At(radius + i, radius) / 255.0;
            paint[i] += (255.0 - paint[i]) * share;
        }
    // Alpha itself has steps of a level, which 25 stamps raise to at most 25 where the paint is thin.
    for (int i = 2; i < radius; ++i) EXPECT_LT(std::abs(paint[i] - 2 * paint[i - 1] + paint[i - 2]), 30.0) << i;
    for (int i = 1; i < radius; ++i) EXPECT_LE(paint[i], paint[i - 1]);
}

TEST_P(SoftDisc, RefusesWhatIsNoTable) {
    unsigned char byte = 7;
    unsigned char* row = &byte;
    EXPECT_EQ(GetParam()(nullptr, 4), 0);
    EXPECT_EQ(GetParam()(&row, 0), 0);
    EXPECT_EQ(GetParam()(&row, -3), 0);
    EXPECT_EQ(byte, 7);
}

INSTANTIATE_TEST_SUITE_P(PcDsp, SoftDisc,
                         testing::Values(&PC_Dsp::Circle_Gradient_Alpha, &PC_Dsp::Circle_Gradient_Alpha2Eye),
                         [](const auto& entry) { return entry.index ? "ForEyes" : "Plain"; });

TEST(SoftDiscForEyes, IsFullerWithANarrowEdge) {
    for (const int radius : {3, 17, 60}) {
        const Table plain(PC_Dsp::Circle_Gradient_Alpha, radius), eye(PC_Dsp::Circle_Gradient_Alpha2Eye, radius);
        EXPECT_GT(eye.Sum(), plain.Sum() * 3 / 2);
        EXPECT_EQ(eye.At(radius + radius / 2, radius), 255);
    }
}
