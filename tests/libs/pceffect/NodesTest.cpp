// SPDX-License-Identifier: GPL-3.0-or-later
// What position does: the nodes, their blur, and the grain.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "GrainTiles.h"
#include "LeakLight.h"
#include "Look.h"
#include "Nodes.h"
#include "TestPictures.h"

namespace {

// Mean and standard deviation of a square of grain.
std::pair<double, double> Spread(const GrainTiles& tiles, int side) {
    std::vector<std::int8_t> row(side);
    double sum = 0.0, square = 0.0;
    for (int y = 0; y < side; ++y) {
        tiles.Row(y, 0, side, row.data());
        for (const int v : row) {
            sum += v;
            square += v * v;
        }
    }
    const double count = double(side) * side, mean = sum / count;
    return {mean, std::sqrt(square / count - mean * mean)};
}

}  // namespace

TEST(Nodes, CoverPicturesOfEverySize) {
    for (const auto& [width, height] :
         {std::pair{1, 1}, {1, 5000}, {70, 96}, {1600, 1000}, {6000, 4000}, {1 << 20, 1}}) {
        const NodeGrid grid = NodeGrid::For(width, height);
        EXPECT_LE(grid.X(0), 0.0);
        EXPECT_GE(grid.X(grid.columns - 1), width);
        EXPECT_GE(grid.Y(grid.rows - 1), height);
        EXPECT_LE(std::max(grid.columns, grid.rows), 325);
    }
}

TEST(Nodes, BlockMeansAreMeans) {
    const Bitmap noise = TestPictures::Noise(701, 333, 4);
    const NodeGrid grid = NodeGrid::For(701, 333);
    ASSERT_EQ(grid.shift, 2);
    const NodeLayer means = BlockMeans(grid, noise.Pixels());
    for (const auto& [column, row] : {std::pair{0, 0}, {17, 40}, {grid.BlockColumns() - 1, grid.BlockRows() - 1}}) {
        double sum[3] = {}, count = 0;
        for (int y = 4 * row; y < std::min(333, 4 * row + 4); ++y)
            for (int x = 4 * column; x < std::min(701, 4 * column + 4); ++x, ++count)
                for (int c = 0; c < 3; ++c) sum[c] += noise.Row(y)[4 * x + 2 - c];
        for (int c = 0; c < 3; ++c)
            EXPECT_NEAR(means[std::size_t(row + 1) * grid.columns + column + 1][c], sum[c] / count / 255, 1e-5);
    }
}

TEST(Nodes, ABlurKeepsTheSumAndHasTheDeviationItIsAskedFor) {
    const NodeGrid grid = NodeGrid::For(161, 161);
    for (const double deviation : {0.7, 2.0, 3.3, 9.0}) {
        NodeLayer layer(grid.Count());
        const int middle = grid.columns / 2;
        layer[std::size_t(middle) * grid.columns + middle] = {1, 1, 1};
        BlurLayer(grid, deviation, layer);
        double sum = 0.0, variance = 0.0;
        for (int row = 0; row < grid.rows; ++row)
            for (int column = 0; column < grid.columns; ++column) {
                const double v = layer[std::size_t(row) * grid.columns + column][1];
                sum += v;
                variance += v * (column - middle) * (column - middle);
            }
        EXPECT_NEAR(sum, 1.0, 1e-4);
        EXPECT_NEAR(std::sqrt(variance), deviation, 0.02 * deviation);
    }
}

TEST(Nodes, ALeakIsTheSameInFractionsOfEverySize) {
    Leak leak;
    leak.strength = 80;
    leak.wobble = 40;
    leak.x = 10;
    leak.y = 40;
    // Nodes lie at the same fractions of both.
    const NodeGrid large = NodeGrid::For(6400, 3200), small = NodeGrid::For(800, 400);
    ASSERT_EQ(large.columns, small.columns);
    ASSERT_EQ(large.rows, small.rows);
    const NodeLayer one = LeakLight(leak, large), other = LeakLight(leak, small);
    double brightest = 0.0;
    for (std::size_t i = 0; i < one.size(); ++i)
        for (int c = 0; c < 3; ++c) {
            ASSERT_NEAR(one[i][c], other[i][c], 1e-6);
            brightest = std::max(brightest, double(one[i][c]));
        }
    EXPECT_GT(brightest, 0.5);
}

TEST(Nodes, WhatPositionDoesHasNoJumps) {
    // Every step that depends on position, on one colour: neighbours differ by little, at sizes whose nodes lie 2 to 16
    // pixels apart.
    Recipe recipe;
    recipe.edges = {90, 5, 50};
    recipe.vignette.amount = 60;
    recipe.glow = {40, 20, 12, {255, 240, 220}};
    for (int i = 0; i < 3; ++i) {
        recipe.leaks.emplace_back();
        recipe.leaks.back().shape = static_cast<Leak::Shape>(i);
        recipe.leaks.back().strength = 120;
        recipe.leaks.back().wobble = 40;
    }
    const Look look(recipe);
    for (const int width : {410, 900, 2600}) {
        const int height = width / 2;
        Bitmap picture = TestPictures::Plain(width, height, 0xFF806040);
        ASSERT_NE(look.Apply(picture.MutablePixels(), width, height, {}), 0);
        int largest = 0;
        for (int y = 1; y < height; ++y)
            for (int i = 4; i < 4 * width; ++i) {
                largest = std::max(largest, std::abs(picture.Row(y)[i] - picture.Row(y)[i - 4]));
                largest = std::max(largest, std::abs(picture.Row(y)[i] - picture.Row(y - 1)[i]));
            }
        EXPECT_LE(largest, 3 + 2400 / width) << width;
    }
}

TEST(Nodes, AWornBorderShowsNoFrame) {
    // Along a line at the middle of the border's reach a frame is as bright all the way; a worn one comes and goes. And
    // no two sides are alike.
    Leak leak;
    leak.shape = Leak::Shape::Border;
    leak.strength = 45;
    leak.width = leak.height = 14;
    leak.wobble = 70;
    const NodeGrid grid = NodeGrid::For(2000, 2000);
    for (const double seed : {3.0, 4.0, 5.0, 11.0}) {
        leak.seed = seed;
        const NodeLayer light = LeakLight(leak, grid);
        const auto at = [&](int column, int row) { return double(light[std::size_t(row) * grid.columns + column][0]); };
        const int inset = grid.columns * 7 / 100, last = grid.columns - 1;
        double lowest = 1, highest = 0, sides[4] = {};
        for (int i = grid.columns / 5; i < grid.columns * 4 / 5; ++i) {
            const double values[] = {at(i, inset), at(i, last - inset), at(inset, i), at(last - inset, i)};
            for (int side = 0; side < 4; ++side) {
                lowest = std::min(lowest, values[side]);
                highest = std::max(highest, values[side]);
                sides[side] += values[side] / (0.6 * grid.columns);
            }
        }
        EXPECT_GT(highest, 2 * lowest + 0.05) << seed;
        std::sort(std::begin(sides), std::end(sides));
        EXPECT_GT(sides[3], 1.15 * sides[0]) << seed;
        EXPECT_LT(at(grid.columns / 2, grid.rows / 2), 0.01) << seed;
    }
}

TEST(Nodes, LightLeavesEveryChannelShortOfItsEnd) {
    Leak leak;
    leak.strength = 400;
    leak.width = leak.height = 400;
    leak.core = leak.rim = {255, 255, 255};
    for (const NodeColour& light : LeakLight(leak, NodeGrid::For(300, 300)))
        for (const float channel : light) ASSERT_LE(channel, 0.961f);
}

TEST(Grain, HasNoMeanAndItsDeviationWherePixelsAreSmall) {
    const auto [mean, deviation] = Spread(GrainTiles(2.0), 500);
    EXPECT_NEAR(mean, 0.0, 0.5);
    EXPECT_NEAR(deviation, 32.0, 2.0);
}

TEST(Grain, FadesAsAReducedPictureDoes) {
    // The mean over squares of eight pixels of coarse grain has the strength that is made for grain of an eighth.
    const GrainTiles coarse(2.0), fine(0.25);
    std::vector<double> means;
    std::vector<std::int8_t> row(512);
    std::vector<double> sums(64);
    for (int y = 0; y < 512; ++y) {
        coarse.Row(y, 0, 512, row.data());
        for (int x = 0; x < 512; ++x) sums[x / 8] += row[x] / 64.0;
        if (y % 8 == 7) {
            means.insert(means.end(), sums.begin(), sums.end());
            std::fill(sums.begin(), sums.end(), 0.0);
        }
    }
    double square = 0.0;
    for (const double v : means) square += v * v;
    const double reduced = std::sqrt(square / double(means.size()));
    EXPECT_NEAR(Spread(fine, 300).second / reduced, 1.0, 0.15);
}

TEST(Grain, IsTheSameWhereverARowIsCut) {
    const GrainTiles tiles(1.3);
    std::vector<std::int8_t> whole(2000), part(700);
    tiles.Row(900, 0, 2000, whole.data());
    tiles.Row(900, 1234, 700, part.data());
    EXPECT_TRUE(std::equal(part.begin(), part.end(), whole.begin() + 1234));
}
