// SPDX-License-Identifier: GPL-3.0-or-later
// The unsharp mask: luma, its blur down and across, and the limited difference.
#pragma once

#include "Kernels.h"
#include "Lanes.h"

namespace {

void LumaRow(const std::uint8_t* pixels, int count, float* luma) {
    int i = 0;
    for (; i + Lanes <= count; i += Lanes)
        StoreFloats(luma + i, Weighted(Unpack(LoadWords(pixels + std::ptrdiff_t{4} * i))));
    if (i == count) return;
    std::uint8_t rest[Lanes * 4] = {};
    __builtin_memcpy(rest, pixels + std::ptrdiff_t{4} * i, std::size_t(count - i) * 4);
    const Floats last = Weighted(Unpack(LoadWords(rest)));
    __builtin_memcpy(luma + i, &last, std::size_t(count - i) * sizeof(float));
}

// `change` bent so that it never reaches `room`; small changes pass nearly whole.
QUINCE_INLINE Floats Bent(Floats change, Floats room) {
    return change * room * Inverse(room + Absolute(change));
}

// Half is a template argument so that the usual blur unrolls; 0 means that it is only known now.
template <int Half>
QUINCE_INLINE void UsmRowOf(std::uint8_t* pixels, int count, const UsmRow& row) {
    const int half = Half ? Half : row.half;
    const int extended = count + 2 * half;
    float* const blurred = row.scratch;
    float* const lowest = blurred + extended + 16;
    float* const highest = lowest + extended + 16;
    const float* const* luma = row.luma;
    const float* const up = luma[half - 1];
    const float* const middle = luma[half];
    const float* const down = luma[half + 1];
    for (int i = 0; i < extended; i += Lanes) {
        const Floats m = LoadFloats(middle + i), u = LoadFloats(up + i), d = LoadFloats(down + i);
        Floats sum = m * row.weights[0] + (u + d) * row.weights[1];
        for (int k = 2; k <= half; ++k)
            sum += (LoadFloats(luma[half - k] + i) + LoadFloats(luma[half + k] + i)) * row.weights[k];
        StoreFloats(blurred + i, sum);
        StoreFloats(lowest + i, Min3(m, u, d));
        StoreFloats(highest + i, Max3(m, u, d));
    }
    ForPixelGroups(pixels, count, [&](std::uint8_t* group, int x) {
        const int i = x + half;
        Floats blur = LoadFloats(blurred + i) * row.weights[0];
        for (int k = 1; k <= half; ++k)
            blur += (LoadFloats(blurred + i - k) + LoadFloats(blurred + i + k)) * row.weights[k];
        const Floats low = Min3(LoadFloats(lowest + i - 1), LoadFloats(lowest + i), LoadFloats(lowest + i + 1));
        const Floats high = Max3(LoadFloats(highest + i - 1), LoadFloats(highest + i), LoadFloats(highest + i + 1));
        const Floats here = LoadFloats(middle + i);
        Floats change = (here - blur) * row.amount;
        if (row.amount > 0.0f) {
            const Floats rise = Max(change, Spread(0.0f)), fall = Min(change, Spread(0.0f));
            const Floats above = high - here + row.halo, below = here - low + row.halo;
            change = Bent(rise, above) + Bent(fall, below);
        }
        const Words words = LoadWords(group);
        const Colours c = Unpack(words);
        StoreWords(group, Pack({c.r + change, c.g + change, c.b + change}, words));
    });
}

void UsmRowInPlace(std::uint8_t* pixels, int count, const UsmRow& row) {
    if (row.half == 3)
        UsmRowOf<3>(pixels, count, row);
    else
        UsmRowOf<0>(pixels, count, row);
}

}  // namespace
