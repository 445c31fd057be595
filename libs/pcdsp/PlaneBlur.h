// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Rows.h"
#include "SpotPlace.h"

// A Gaussian over three planes, their border repeated. Stopped, planes hold anything.
void BlurPlanes(Planes& planes, float sigma, const Pace& pace);

// Calls body(plane, row, width) for all rows of three planes, on all cores.
template <class Body>
void ForEachRow(const Planes& planes, const Body& body) {
    ForEachBand(planes.Height(), GrainOf(planes.Width()), [&](int first, int last) {
        for (int c = 0; c < SpotPlace::Colours; ++c)
            for (int y = first; y < last; ++y) body(c, y, planes.Width());
    });
}
