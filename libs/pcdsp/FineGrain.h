// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "GuidedLayer.h"
#include "Rows.h"
#include "SpotPlace.h"

// The finest band of a picture: luma less its Gaussian of GrainSigma pixels.
inline constexpr float GrainSigma = 1.5f;
// The strength that a fill gets of the grain around: what is foreseen of a place is less than what is there.
inline constexpr float GrainLevel = 0.93f;

// A Gaussian over three planes, their border repeated. Stopped, planes hold anything; so it is below.
void BlurPlanes(Planes& planes, float sigma, const Pace& pace);
// The finest band of three planes of colour.
Plane FineLuma(const Planes& colours, const Pace& pace);
// Its root mean square in the known skin right round the hole, in levels. Holes count for nothing.
float GrainAround(const SpotPlace& place);
// The mean, in which none counts more than some times the middle one, so that a hair does not count as grain. Reorders;
// 0 for none.
float HeldMean(std::vector<float>& squares);

// Calls body(plane, row, width) for all rows of three planes, on all cores.
template <class Body>
void ForEachRow(const Planes& planes, const Body& body) {
    ForEachBand(planes.Height(), GrainOf(planes.Width()), [&](int first, int last) {
        for (int c = 0; c < SpotPlace::Colours; ++c)
            for (int y = first; y < last; ++y) body(c, y, planes.Width());
    });
}
