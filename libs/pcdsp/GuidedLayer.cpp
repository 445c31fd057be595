// SPDX-License-Identifier: GPL-3.0-or-later
#include "GuidedLayer.h"

#include <algorithm>

#include "Parallel.h"
#include "Rows.h"

namespace {

void MeanOfRow(const float* in, float* out, int count, int radius) {
    double sum = 0.0;
    for (int i = 0; i < std::min(radius, count); ++i) sum += in[i];
    for (int i = 0; i < count; ++i) {
        if (i + radius < count) sum += in[i + radius];
        if (i - radius > 0) sum -= in[i - radius - 1];
        out[i] = static_cast<float>(sum / (std::min(count - 1, i + radius) - std::max(0, i - radius) + 1));
    }
}

// Columns first to last - 1, all rows.
void MeanOfColumns(const Plane& in, Plane& out, int first, int last, int radius) {
    std::vector<double> sum(last - first, 0.0);
    const auto add = [&](int y, double sign) {
        const float* row = in.Row(y) + first;
        for (int i = 0; i < last - first; ++i) sum[i] += sign * row[i];
    };
    for (int y = 0; y < std::min(radius, in.height); ++y) add(y, 1.0);
    for (int y = 0; y < in.height; ++y) {
        if (y + radius < in.height) add(y + radius, 1.0);
        if (y - radius > 0) add(y - radius - 1, -1.0);
        const double rows = std::min(in.height - 1, y + radius) - std::max(0, y - radius) + 1;
        float* row = out.Row(y) + first;
        for (int i = 0; i < last - first; ++i) row[i] = static_cast<float>(sum[i] / rows);
    }
}

template <class F>
Plane Combine(const Plane& a, const Plane& b, F value) {
    Plane out(a.width, a.height);
    ForEachBand(a.height, GrainOf(a.width), [&](int first, int last) {
        const std::size_t begin = std::size_t(a.width) * first, end = std::size_t(a.width) * last;
        for (std::size_t i = begin; i < end; ++i) out.values[i] = value(a.values[i], b.values[i]);
    });
    return out;
}

}  // namespace

Plane BoxMean(const Plane& plane, int radius) {
    Plane across(plane.width, plane.height), out(plane.width, plane.height);
    ForEachBand(plane.height, GrainOf(plane.width), [&](int first, int last) {
        for (int y = first; y < last; ++y) MeanOfRow(plane.Row(y), across.Row(y), plane.width, radius);
    });
    ForEachBand(plane.width, 64, [&](int first, int last) { MeanOfColumns(across, out, first, last, radius); });
    return out;
}

GuidedLayer::GuidedLayer(const Plane& luma, int radius, float noise) {
    const Plane mean = BoxMean(luma, radius);
    const Plane meanOfSquares = BoxMean(Combine(luma, luma, [](float a, float b) { return a * b; }), radius);
    const float threshold = noise * noise;
    const Plane steepness = Combine(meanOfSquares, mean, [threshold](float squares, float m) {
        const float variance = std::max(0.0f, squares - m * m);
        return variance / (variance + threshold);
    });
    slope = BoxMean(steepness, radius);
    offset = BoxMean(Combine(steepness, mean, [](float s, float m) { return m - s * m; }), radius);
}
