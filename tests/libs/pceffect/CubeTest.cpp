// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "CubeFile.h"
#include "EffectTable.h"
#include "LookShelf.h"

namespace {

const std::string Corners =
    "0 0 0\n1 0 0\n0 1 0\n1 1 0\n"
    "0 0 1\n1 0 1\n0 1 1\n1 1 1\n";

void ExpectColour(const Triple& colour, double r, double g, double b, double within = 1e-6) {
    EXPECT_NEAR(colour[0], r, within);
    EXPECT_NEAR(colour[1], g, within);
    EXPECT_NEAR(colour[2], b, within);
}

}  // namespace

TEST(Cube, TheIdentityOfTwoPointsIsTheIdentity) {
    const CubeResult result = ParseCube("LUT_3D_SIZE 2\n" + Corners);
    ASSERT_EQ(result.error, "");
    ExpectColour(result.table.At({0.2, 0.7, 0.4}), 0.2, 0.7, 0.4);
    ExpectColour(result.table.At({-1, 0.5, 3}), 0, 0.5, 1);
}

TEST(Cube, ReadsCommentsEndsOfLinesAndTitles) {
    const CubeResult result = ParseCube(
        "\xEF\xBB\xBF#made by hand\r\n\r\nTITLE \"Warm evening\"\r\n  LUT_3D_SIZE\t2\r\nDOMAIN_MIN 0.0 0 0\r\n"
        "DOMAIN_MAX 1 1 1.0\r\n# points\r\n" +
        Corners + "\r\n\r\n");
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(result.table.title, "Warm evening");
}

TEST(Cube, OneDimensionIsThreeCurves) {
    const CubeResult result = ParseCube("LUT_1D_SIZE 3\n0 0.1 1\n0.25 0.2 0.5\n1 0.3 0\n");
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(result.table.dimensions, 1);
    ExpectColour(result.table.At({0.25, 0.5, 1.0}), 0.125, 0.2, 0.0);
}

TEST(Cube, TheDomainIsWhereTheTableLies) {
    const CubeResult result = ParseCube("LUT_3D_SIZE 2\nDOMAIN_MIN 0 0 -1\nDOMAIN_MAX 2 1 1\n" + Corners);
    ASSERT_EQ(result.error, "");
    ExpectColour(result.table.At({1, 0.5, 0}), 0.5, 0.5, 0.5);
    const CubeResult range = ParseCube("LUT_1D_SIZE 2\nLUT_1D_INPUT_RANGE 0.0 0.5\n0 0 0\n1 1 1\n");
    ASSERT_EQ(range.error, "");
    ExpectColour(range.table.At({0.25, 0.5, 0.75}), 0.5, 1, 1);
}

TEST(Cube, DamageIsNamedByLine) {
    const auto error = [](const std::string& text) { return ParseCube(text).error; };
    EXPECT_EQ(error(""), "line 0: no size");
    EXPECT_EQ(error("0 0 0\n"), "line 1: points before a size");
    EXPECT_EQ(error("LUT_3D_SIZE 1\n"), "line 1: the size must be from 2 to 256");
    EXPECT_EQ(error("LUT_3D_SIZE 257\n"), "line 1: the size must be from 2 to 256");
    EXPECT_EQ(error("LUT_3D_SIZE 2.5\n"), "line 1: the size is one whole number");
    EXPECT_EQ(error("LUT_3D_SIZE\n"), "line 1: the size is one whole number");
    EXPECT_EQ(error("LUT_3D_SIZE 2\nLUT_1D_SIZE 2\n"), "line 2: a second size");
    EXPECT_EQ(error("LUT_3D_SIZE 2\n" + Corners.substr(6)), "line 8: 7 points instead of 8");
    EXPECT_EQ(error("LUT_3D_SIZE 2\n" + Corners + "0 0 0\n"), "line 10: more points than the size says");
    EXPECT_EQ(error("LUT_3D_SIZE 2\n0 0\n"), "line 2: a point is three numbers");
    EXPECT_EQ(error("LUT_3D_SIZE 2\n0 0 0 0\n"), "line 2: a point is three numbers");
    EXPECT_EQ(error("LUT_3D_SIZE 2\n0 0 x\n"), "line 2: a point is three numbers");
    EXPECT_EQ(error("LUT_3D_SIZE 2\n0 0 nan\n"), "line 2: a point is three numbers");
    EXPECT_EQ(error("LUT_3D_SIZE 2\n0 0 0\nTITLE \"late\"\n"), "line 3: a keyword stands between the points");
    EXPECT_EQ(error("LUT_9D_SIZE 2\n"), "line 1: unknown keyword \"LUT_9D_SIZE\"");
    EXPECT_EQ(error("LUT_3D_SIZE 2\nDOMAIN_MIN 1 1 1\n" + Corners), "line 10: the domain is empty");
    EXPECT_EQ(error("LUT_3D_SIZE 2\nDOMAIN_MIN 1 1\n" + Corners), "line 2: the domain takes three numbers");
}

TEST(Cube, AHugeSizeTakesNoMemoryBeforeItsPointsAreThere) {
    EXPECT_EQ(ParseCube("LUT_3D_SIZE 256\n0 0 0\n").error, "line 2: 1 points instead of 16777216");
}

TEST(Cube, WhatIsWrittenReadsBack) {
    const auto look = LookShelf::Take(LooksFolder(), 17);
    ASSERT_TRUE(look);
    CubeTable table;
    table.title = "Lomo";
    table.size = 9;
    for (int b = 0; b < 9; ++b)
        for (int g = 0; g < 9; ++g)
            for (int r = 0; r < 9; ++r) {
                const Triple c = look->Colours().At({r / 8.0, g / 8.0, b / 8.0});
                table.points.push_back({float(c[0]), float(c[1]), float(c[2])});
            }
    const CubeResult result = ParseCube(CubeText(table));
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(result.table.title, table.title);
    ASSERT_EQ(result.table.points.size(), table.points.size());
    for (std::size_t i = 0; i < table.points.size(); ++i)
        for (int c = 0; c < 3; ++c) EXPECT_NEAR(result.table.points[i][c], table.points[i][c], 1e-6);
    // Red runs fastest: the second point is a little red.
    const Triple exact = look->Colours().At({0.125, 0, 0});
    EXPECT_NEAR(result.table.points[1][0], exact[0], 1e-6);
}
