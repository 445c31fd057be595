// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of the skin smoothing: the reduced copy, its Gaussian, and the correction laid on the picture.
#pragma once

#include "Kernels.h"
#include "Lanes.h"

namespace {

void AddRow(const std::uint8_t* pixels, int bytes, std::uint16_t* sums) {
    for (int i = 0; i < bytes; ++i) sums[i] = static_cast<std::uint16_t>(sums[i] + pixels[i]);
}

void GaussianRow(const GaussianTaps& taps, int count, float* out) {
    int x = 0;
    for (; x + Lanes <= count; x += Lanes) {
        Floats sum = LoadFloats(taps.rows[taps.half] + x) * taps.weights[0];
        for (int k = 1; k <= taps.half; ++k)
            sum +=
                (LoadFloats(taps.rows[taps.half - k] + x) + LoadFloats(taps.rows[taps.half + k] + x)) * taps.weights[k];
        StoreFloats(out + x, sum);
    }
    for (; x < count; ++x) {
        float sum = taps.rows[taps.half][x] * taps.weights[0];
        for (int k = 1; k <= taps.half; ++k)
            sum += (taps.rows[taps.half - k][x] + taps.rows[taps.half + k][x]) * taps.weights[k];
        out[x] = sum;
    }
}

void WidenRow(const float* in, const int* index, const float* part, int count, float* out) {
    for (int x = 0; x < count; x += Lanes) {
        Ints at;
        __builtin_memcpy(&at, index + x, sizeof at);
        const Floats here = Gather(in, at), next = Gather(in + 1, at);
        StoreFloats(out + x, here + (next - here) * LoadFloats(part + x));
    }
}

QUINCE_INLINE Floats MapRowAt(const float* above, const float* below, float part, int x) {
    const Floats a = LoadFloats(above + x);
    return a + (LoadFloats(below + x) - a) * part;
}

void CorrectRow(std::uint8_t* pixels, int count, const MappedRow& row) {
    ForPixelGroups(pixels, count, [&](std::uint8_t* group, int x) {
        const Words words = LoadWords(group);
        const Colours c = Unpack(words);
        Floats share = Spread(1.0f);
        if (row.mask) {
            const int here = count - x < Lanes ? count - x : Lanes;
            float part[Lanes] = {};
            for (int i = 0; i < here; ++i) part[i] = static_cast<float>(row.mask[x + i]) * (1.0f / 255.0f);
            share = LoadFloats(part);
        }
        StoreWords(group, Pack({c.r + share * MapRowAt(row.above[0], row.below[0], row.part, x),
                                c.g + share * MapRowAt(row.above[1], row.below[1], row.part, x),
                                c.b + share * MapRowAt(row.above[2], row.below[2], row.part, x)},
                               words));
    });
}

}  // namespace
