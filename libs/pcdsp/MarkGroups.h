// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "HoleMap.h"

// A run of marked pixels in a row, `right` outside.
struct MarkRun {
    int y, left, right;
};

// Marked pixels that touch each other, at a side or a corner.
struct MarkGroup {
    PixelRect box;
    std::vector<MarkRun> runs;  // in the order of reading
};

// The runs of the pixels in a rectangle for which isMarked(x, y) holds, in the order of reading.
template <class Test>
std::vector<MarkRun> RunsOf(const PixelRect& part, const Test& isMarked) {
    std::vector<MarkRun> runs;
    for (int y = part.top; y < part.bottom; ++y)
        for (int x = part.left; x < part.right; ++x) {
            if (!isMarked(x, y)) continue;
            const int left = x;
            while (x < part.right && isMarked(x, y)) ++x;
            runs.push_back({y, left, x});
        }
    return runs;
}

// Divides runs, given in the order of reading, into groups in the order of their first pixel.
std::vector<MarkGroup> GroupsOf(const std::vector<MarkRun>& runs);
