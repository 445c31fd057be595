// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Recipe.h"

// A table of colours as in a .cube file (the format is Adobe's, version 1.0 of 2013): one or three dimensions, red runs
// fastest.
struct CubeTable {
    std::string title;  // UTF-8, may be empty
    int dimensions = 3;
    int size = 0;  // points along a side
    Triple domainLow{0, 0, 0}, domainHigh{1, 1, 1};
    std::vector<std::array<float, 3>> points;  // red, green, blue

    // The table at a colour of 0 to 1: tetrahedral between points, straight between those of one dimension; a colour
    // outside of the domain counts as the nearest inside.
    Triple At(const Triple& colour) const;
};

struct CubeResult {
    CubeTable table;    // empty (size 0) when there is an error
    std::string error;  // "line 3: ..."
};

// Reads a table from the text of a file. Sizes are 2 to 256 in both kinds; titles are cut at 200 bytes. Any bytes may
// be given; memory is taken only for points that are there.
CubeResult ParseCube(std::string_view text);
// The largest file that is read.
constexpr std::size_t LargestCube = std::size_t{600} << 20;
CubeResult ReadCube(const std::filesystem::path& file);

// The text of a file with this table; reading it gives the table again within 0.000001.
std::string CubeText(const CubeTable& table);
