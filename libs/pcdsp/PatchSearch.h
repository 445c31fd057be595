// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "HoleMap.h"
#include "Pace.h"
#include "Planes.h"

// A place whose surroundings look like those of the hole: what lies (dx, dy) away from each hole.
struct Patch {
    int dx = 0, dy = 0;
    float cost = 0.0f;  // in squared levels
};

// The best places to take the inside of a hole from, best first, at most `most`, no two next to each other. Three
// planes of colour, in levels. A place lies whole in the planes and touches no hole; none may exist, and
// none are found by a search that was stopped.
std::vector<Patch> FindPatches(const Planes& colours, const HoleMap& hole, int most, const Pace& pace = {});
