// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResampleTaps.h"

#include <algorithm>
#include <cmath>

#include "CubicTaps.h"

namespace {

constexpr int One = 16384;

// The share of source pixel i in a result pixel that covers from `left` on for `scale` pixels.
double Weight(ResampleFilter filter, int i, double left, double scale) {
    const double offset = i + 0.5 - (left + 0.5 * scale);
    switch (filter) {
        case ResampleFilter::Area:
            return std::max(0.0, std::min(i + 1.0, left + scale) - std::max<double>(i, left));
        case ResampleFilter::Smooth:
            return CatmullRom(offset / scale);
        case ResampleFilter::Linear:
            return std::max(0.0, 1.0 - std::abs(offset));
        case ResampleFilter::Cubic:
            return CatmullRom(offset);
    }
    return 0.0;
}

// Source pixels on each side of the centre that a weight can reach.
double Reach(ResampleFilter filter, double scale) {
    switch (filter) {
        case ResampleFilter::Area:
            return 0.5 * scale;
        case ResampleFilter::Smooth:
            return 2.0 * scale;
        case ResampleFilter::Linear:
            return 1.0;
        case ResampleFilter::Cubic:
            return 2.0;
    }
    return 0.0;
}

// Whole weights with the sum One; what rounding leaves over goes to the largest.
void Round(const std::vector<double>& exact, std::int16_t* weights) {
    double sum = 0.0;
    for (const double w : exact) sum += w;
    int left = One;
    std::size_t largest = 0;
    for (std::size_t i = 0; i < exact.size(); ++i) {
        weights[i] = static_cast<std::int16_t>(std::lround(exact[i] / sum * One));
        left -= weights[i];
        if (exact[i] > exact[largest]) largest = i;
    }
    weights[largest] = static_cast<std::int16_t>(weights[largest] + left);
}

}  // namespace

ResampleTaps::ResampleTaps(int size, double origin, double length, int count, ResampleFilter filter) {
    const double scale = length / count;
    const double reach = Reach(filter, scale);
    // One pixel more than the widest window may touch, and even.
    taps = std::min(size, static_cast<int>(std::ceil(2.0 * reach)) + 1);
    taps += taps & 1;
    starts.resize(count);
    weights.assign(std::size_t(count) * taps, 0);
    std::vector<double> exact(taps);
    first = size;
    for (int n = 0; n < count; ++n) {
        const double left = origin + n * scale;
        const double centre = left + 0.5 * scale;
        // A hair inside, so that a border on a pixel's edge does not start a pixel early.
        const int from = static_cast<int>(std::floor(centre - reach + 1e-9));
        const int to = static_cast<int>(std::ceil(centre + reach - 1e-9));
        const int start = std::clamp(from, 0, std::max(0, size - taps));
        std::fill(exact.begin(), exact.end(), 0.0);
        for (int i = from; i < to; ++i) {
            const int slot = std::clamp(i, 0, size - 1) - start;
            exact[std::clamp(slot, 0, taps - 1)] += Weight(filter, i, left, scale);
        }
        starts[n] = start;
        Round(exact, &weights[std::size_t(n) * taps]);
        first = std::min(first, start);
        last = std::max(last, std::min(size, start + taps));
    }
}

bool ResampleTaps::IsCopy() const {
    const int count = static_cast<int>(starts.size());
    int shift = 0;
    for (int n = 0; n < count; ++n) {
        const std::int16_t* w = &weights[std::size_t(n) * taps];
        const auto whole = std::find(w, w + taps, std::int16_t{One});
        if (whole == w + taps) return false;
        const int from = starts[n] + static_cast<int>(whole - w) - n;
        if (n > 0 && from != shift) return false;
        shift = from;
    }
    return true;
}
