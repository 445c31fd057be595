// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResampleTaps.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "CubicTaps.h"

namespace {

constexpr int One = 16384;

// A sinc in a window of Kaiser's: its reach in pixels, and the shape of the window. The fewest pixels and the softest
// window of those compared that come nearest to the scene on zone plates and slanted edges of all kinds.
struct SincWindow {
    double reach, shape;
};
constexpr SincWindow Enlarging = {5.0, 6.0};
constexpr SincWindow Reducing = {4.0, 4.5};
constexpr SincWindow ReducingMuch = {3.0, 4.0};

const SincWindow& ReducingBy(double scale) {
    return scale < 2.0 ? Reducing : ReducingMuch;
}

// The modified Bessel function of the first kind and order 0, by its power series; for x up to 10.
double Bessel0(double x) {
    double sum = 1.0, term = 1.0;
    for (int k = 1; k <= 24; ++k) {
        term *= 0.25 * x * x / (k * k);
        sum += term;
    }
    return sum;
}

// sin(pi x) / (pi x) in the window of Kaiser 1974.
double WindowedSinc(double x, const SincWindow& window) {
    if (std::abs(x) >= window.reach) return 0.0;
    const double angle = std::numbers::pi * x, part = x / window.reach;
    const double sinc = std::abs(angle) < 1e-9 ? 1.0 : std::sin(angle) / angle;
    return sinc * Bessel0(window.shape * std::sqrt(1.0 - part * part)) / Bessel0(window.shape);
}

// The share of source pixel i in a result pixel that covers from `left` on for `scale` pixels.
double Weight(ResampleFilter filter, int i, double left, double scale) {
    const double offset = i + 0.5 - (left + 0.5 * scale);
    switch (filter) {
        case ResampleFilter::Area:
            return std::max(0.0, std::min(i + 1.0, left + scale) - std::max<double>(i, left));
        case ResampleFilter::Smooth:
            return WindowedSinc(offset / scale, ReducingBy(scale));
        case ResampleFilter::Linear:
            return std::max(0.0, 1.0 - std::abs(offset));
        case ResampleFilter::Cubic:
            return CatmullRom(offset);
        case ResampleFilter::Sharp:
            return WindowedSinc(offset, Enlarging);
    }
    return 0.0;
}

// Source pixels on each side of the centre that a weight can reach.
double Reach(ResampleFilter filter, double scale) {
    switch (filter) {
        case ResampleFilter::Area:
            return 0.5 * scale;
        case ResampleFilter::Smooth:
            return ReducingBy(scale).reach * scale;
        case ResampleFilter::Linear:
            return 1.0;
        case ResampleFilter::Cubic:
            return 2.0;
        case ResampleFilter::Sharp:
            return Enlarging.reach;
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
    // An area counts each pixel that the window touches, the other filters those whose middle lies in it.
    const double inside = filter == ResampleFilter::Area ? 0.0 : 0.5;
    // As many as the widest window may hold, and even.
    taps = std::min(size, static_cast<int>(std::ceil(2.0 * reach + 1.0 - 2.0 * inside)));
    taps += taps & 1;
    starts.resize(count);
    weights.assign(std::size_t(count) * taps, 0);
    std::vector<double> exact(taps);
    first = size;
    for (int n = 0; n < count; ++n) {
        const double left = origin + n * scale;
        const double centre = left + 0.5 * scale;
        // A hair inside, so that a border on a pixel's edge does not start a pixel early.
        const int from = static_cast<int>(std::floor(centre - reach + inside + 1e-9));
        const int to = static_cast<int>(std::ceil(centre + reach - inside - 1e-9));
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
