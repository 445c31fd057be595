// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of the looks of beauty: what skin gains, and local contrast of everything else.
#pragma once

#include "Kernels.h"
#include "Lanes.h"
#include "SceneKernels.h"
#include "SmoothKernels.h"

namespace {

// How much of the room to the end that it moves to a channel is asked for.
QUINCE_INLINE Floats ShareOfRoom(Floats level, Floats change) {
    const Floats room = change > 0.0f ? 255.0f - level : level;
    // What is left of it so that rounding does not reach the end either.
    return Absolute(change) * Inverse(Max(room - 0.6f, Spread(1e-3f)));
}

QUINCE_INLINE void FaceGroup(std::uint8_t* group, const Colours& change) {
    const Words words = LoadWords(group);
    const Colours c = Unpack(words);
    const Floats asked = Max3(ShareOfRoom(c.r, change.r), ShareOfRoom(c.g, change.g), ShareOfRoom(c.b, change.b));
    // All but a hundredth up to a third of the room; never all of the room.
    const Floats square = asked * asked;
    const Floats given = Inverse(Sqrt(Sqrt(1.0f + square * square)));
    StoreWords(group, Pack({c.r + change.r * given, c.g + change.g * given, c.b + change.b * given}, words));
}

QUINCE_INLINE Colours CorrectionAt(const MappedRow& row, int x) {
    return {MapRowAt(row.above[0], row.below[0], row.part, x), MapRowAt(row.above[1], row.below[1], row.part, x),
            MapRowAt(row.above[2], row.below[2], row.part, x)};
}

QUINCE_INLINE Floats ClarityAt(const std::uint8_t* group, const MappedRow& row, float clarity, int x) {
    const Floats luma = Weighted(Unpack(LoadWords(group)));
    const Floats skin = MapRowAt(row.above[0], row.below[0], row.part, x);
    const Floats base =
        luma * MapRowAt(row.above[1], row.below[1], row.part, x) + MapRowAt(row.above[2], row.below[2], row.part, x);
    const Floats detail = luma - base;
    return Detail(detail, 1.0f + clarity * (1.0f - skin)) - detail;
}

void FaceRow(std::uint8_t* pixels, int count, const MappedRow& corrections, const MappedRow& details, float clarity) {
    if (clarity > 0.0f)
        ForPixelGroups(pixels, count, [&](std::uint8_t* group, int x) {
            const Floats clear = ClarityAt(group, details, clarity, x);
            const Colours change = CorrectionAt(corrections, x);
            FaceGroup(group, {change.r + clear, change.g + clear, change.b + clear});
        });
    else
        ForPixelGroups(pixels, count,
                       [&](std::uint8_t* group, int x) { FaceGroup(group, CorrectionAt(corrections, x)); });
}

}  // namespace
