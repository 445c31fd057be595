// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

// A plane of numbers.
struct Plane {
    int width = 0;
    int height = 0;
    std::vector<float> values;

    Plane() = default;
    Plane(int w, int h) : width(w), height(h), values(std::size_t(w) * h) {}
    float* Row(int y) { return values.data() + std::size_t(width) * y; }
    const float* Row(int y) const { return values.data() + std::size_t(width) * y; }
};

// Mean over a square of side 2 * radius + 1, cut at the border; cost does not grow with the radius, and each row and
// column is summed in its own order, so that threads never show.
Plane BoxMean(const Plane& plane, int radius);

// A layer of a picture that keeps its edges and loses what varies by less than `noise` levels within `radius`: at every
// point the layer is luma * slope + offset. Being linear in the luma of the full picture, it may be worked out on a
// reduced copy and enlarged (guided filter, He, Sun, Tang 2010 and 2015).
struct GuidedLayer {
    Plane slope;
    Plane offset;

    GuidedLayer(const Plane& luma, int radius, float noise);
};
