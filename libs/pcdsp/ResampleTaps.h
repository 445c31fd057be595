// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "PcDspTypes.h"

enum class ResampleFilter {
    Area,    // the exact share of each source pixel in the area of a result pixel
    Smooth,  // a sinc, widened, in a window: sharper and with less false pattern
    Linear,  // the two neighbours
    Cubic,   // the four neighbours (CubicTaps.h)
    Sharp,   // the ten neighbours: a sinc in a window
};

// The filter of a view: areas where it reduces.
inline ResampleFilter ViewFilter(double sourceLength, int length, ResampleQuality quality) {
    if (sourceLength >= length) return ResampleFilter::Area;
    return quality == ResampleQuality::Best ? ResampleFilter::Cubic : ResampleFilter::Linear;
}

// What one axis of a resampling reads: for each result pixel a first source pixel and `taps` weights in 1/16384, whose
// sum is exactly 16384, so that flat areas stay flat. Weights beyond the source's border fall to the border pixel.
struct ResampleTaps {
    int taps = 0;  // the same for all pixels of the axis, even
    std::vector<int> starts;
    std::vector<std::int16_t> weights;
    int first = 0, last = 0;  // the source pixels that are read: first to last - 1

    // count result pixels over origin .. origin + length of an axis of `size` source pixels. Area and Smooth widen with
    // the reduction and are only meant for it.
    ResampleTaps(int size, double origin, double length, int count, ResampleFilter filter);

    // True when every result pixel is the source pixel shifted by a whole number.
    bool IsCopy() const;
};
