// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

#include "GuidedLayer.h"

// Where, along one axis, a cell of a fine copy lies between those of a coarse one. The factors say how much of the
// picture a cell of each is wide.
struct Between {
    int from, to;
    float part;

    Between(int cell, int factor, int coarseFactor, int coarseCells) {
        const float middle = (static_cast<float>(cell) + 0.5f) * static_cast<float>(factor);
        const float at =
            std::clamp(middle / static_cast<float>(coarseFactor) - 0.5f, 0.0f, static_cast<float>(coarseCells - 1));
        from = static_cast<int>(at);
        to = std::min(from + 1, coarseCells - 1);
        part = at - static_cast<float>(from);
    }
};

// The plane there.
inline float ReadBetween(const Plane& plane, const Between& column, const Between& row) {
    const float *const above = plane.Row(row.from), *const below = plane.Row(row.to);
    const float top = above[column.from] + (above[column.to] - above[column.from]) * column.part;
    const float bottom = below[column.from] + (below[column.to] - below[column.from]) * column.part;
    return top + (bottom - top) * row.part;
}
