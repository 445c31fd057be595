// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "GuidedLayer.h"
#include "SpotPlace.h"

// The finest band of a picture: luma less its Gaussian of GrainSigma pixels.
inline constexpr float GrainSigma = 1.5f;

// A Gaussian over three planes, their border repeated.
void BlurPlanes(Planes& planes, float sigma);
// The finest band of three planes of colour.
Plane FineLuma(const Planes& colours);
// Its root mean square in the known skin right round the hole, in levels. Holes count for nothing.
float GrainAround(const SpotPlace& place);
// The mean of the nine tenths that are smallest, so that a hair does not count as grain. Reorders; 0 for none.
float TrimmedMean(std::vector<float>& squares);

// Calls body(plane, row, width) for all rows of three planes.
template <class Body>
void ForEachRow(const Planes& planes, const Body& body) {
    for (int c = 0; c < SpotPlace::Colours; ++c)
        for (int y = 0; y < planes.Height(); ++y) body(c, y, planes.Width());
}
