// SPDX-License-Identifier: GPL-3.0-or-later
// The tone curves of PC_Dsp as its header describes them: one pixel, double precision, nothing clever.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "PointCurves.h"

using PlainPixel = std::array<double, 3>;  // red, green, blue in levels

// A curve on the largest and smallest channel; the middle one keeps its place. Half of what the chroma gains over the
// luma is taken back.
template <class Curve>
PlainPixel PlainTone(const PlainPixel& p, const Curve& curve) {
    const auto luma = [](const PlainPixel& c) { return 0.2126 * c[0] + 0.7152 * c[1] + 0.0722 * c[2]; };
    const double low = std::min({p[0], p[1], p[2]}), high = std::max({p[0], p[1], p[2]});
    const double newLow = 255.0 * curve(low / 255.0), newHigh = 255.0 * curve(high / 255.0);
    if (high == low) return {newLow, newLow, newLow};
    const double slope = (newHigh - newLow) / (high - low);
    const double newLuma = newLow + (luma(p) - low) * slope;
    const double gain = std::min(slope, 0.5 * (slope + newLuma / luma(p)));
    PlainPixel out;
    for (int i = 0; i < 3; ++i) out[i] = newLuma + (p[i] - luma(p)) * gain;
    return out;
}
