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

// Divides runs, given in the order of reading, into groups in the order of their first pixel.
std::vector<MarkGroup> GroupsOf(const std::vector<MarkRun>& runs);
