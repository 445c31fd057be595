// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "HoleMap.h"
#include "MarkGroups.h"
#include "Pace.h"
#include "Planes.h"

// A cut-out of the picture round one group of marks, wide enough to find other skin in it.
struct SpotPlace {
    static constexpr int Colours = 3;

    PixelRect area;  // in the picture
    PixelRect hole;  // the group's box, in the cut-out
    float radius;    // half the longer side of that box
    Planes colours;  // blue, green and red, in levels
    HoleMap holes;

    // `all` are the marks of all groups, in the order of reading. Uses all cores.
    SpotPlace(const std::uint8_t* pixels, int width, int height, const std::vector<MarkRun>& all,
              const MarkGroup& group, const Pace& pace);

  private:
    void Mark(const MarkRun& run, std::uint8_t bit);
};

// Luma of three planes as above at a pixel.
inline float LumaAt(const Planes& colours, int x, int y) {
    return 0.0722f * colours.Row(0, y)[x] + 0.7152f * colours.Row(1, y)[x] + 0.2126f * colours.Row(2, y)[x];
}
