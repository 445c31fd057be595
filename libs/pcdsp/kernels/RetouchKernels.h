// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of the retouches of colour: lips and eyes, skin tone, teeth.
#pragma once

#include "Kernels.h"
#include "Lanes.h"
#include "SkinTone.h"
#include "SmoothKernels.h"

namespace {

// The ramp's entry for each pixel's light: the level of the grey of equal luminance, near enough by squared levels.
QUINCE_INLINE Words RampAt(const std::uint32_t* ramp, const Colours& c) {
    const Floats light = Sqrt(Weighted({c.r * c.r, c.g * c.g, c.b * c.b}));
    return Gather(ramp, ToInts(light * 4.0f + 0.5f));
}

void RecolourRow(std::uint8_t* pixels, int count, const std::uint32_t* ramp) {
    ForPixelGroups(pixels, count, [&](std::uint8_t* group, int) {
        const Words words = LoadWords(group);
        const Words colour = RampAt(ramp, Unpack(words));
        StoreWords(group, (words & 0xFF000000u) | (colour & 0x00FFFFFFu));
    });
}

void TintRow(std::uint8_t* pixels, int count, const MappedRow& row) {
    ForPixelGroups(pixels, count, [&](std::uint8_t* group, int x) {
        const Words words = LoadWords(group);
        const Colours c = Unpack(words);
        const Words entry = RampAt(row.ramp, c);
        const Colours tone = Unpack(entry);
        const Floats skin = MapRowAt(row.above[0], row.below[0], row.part, x);
        const Floats share = skin * ToFloats((Ints)(entry >> 24)) * (1.0f / 255.0f);
        StoreWords(
            group,
            Pack({c.r + (tone.r - c.r) * share, c.g + (tone.g - c.g) * share, c.b + (tone.b - c.b) * share}, words));
    });
}

// A hyperbola through black and white, slope `lift` at black.
QUINCE_INLINE Floats Lifted(Floats v, float lift) {
    return v * lift * Inverse(1.0f + v * ((lift - 1.0f) / 255.0f));
}

void TeethRow(std::uint8_t* pixels, int count, const MappedRow& row) {
    ForPixelGroups(pixels, count, [&](std::uint8_t* group, int x) {
        const Words words = LoadWords(group);
        const Colours c = Unpack(words);
        const Floats perRed = Inverse(Max(c.r, Spread(1.0f)));
        const Floats p = (c.r - c.g) * perRed * row.perP;
        const Floats q = Max(c.g - c.b, 2.0f * (c.b - c.g)) * perRed * row.perQ;
        const Floats patch = MapRowAt(row.above[0], row.below[0], row.part, x);
        const Floats notBlue = SoftEdge(c.b - Max(c.r, c.g), 14.0f, 4.0f);
        const Floats tooth = SoftEdge(p + q, 1.26f, 1.05f) * SoftEdge(Weighted(c), 30.0f, 70.0f) * notBlue * patch;
        // Most of all colour goes, then most of the yellow that is left.
        const Floats grey = Weighted(c);
        const Colours pale = {c.r + (grey - c.r) * 0.7f, c.g + (grey - c.g) * 0.7f, c.b + (grey - c.b) * 0.7f};
        const Floats yellow = Max(pale.g - pale.b - 2.0f, Spread(0.0f));
        const Colours white = {Lifted(pale.r, row.lift), Lifted(pale.g, row.lift),
                               Lifted(pale.b + 0.7f * yellow, row.lift)};
        StoreWords(
            group,
            Pack({c.r + (white.r - c.r) * tooth, c.g + (white.g - c.g) * tooth, c.b + (white.b - c.b) * tooth}, words));
    });
}

}  // namespace
