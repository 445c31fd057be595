// SPDX-License-Identifier: GPL-3.0-or-later
// The one pass of a look: the lattice, then what position does, then grain, on one row.
#pragma once

#include "EffectKernels.h"
#include "Shorts.h"

namespace {

// Tetrahedral interpolation (Kasson, Plouffe, Nin 1993): of the cube around a colour only the corners on the way from
// the nearest to the farthest count, walked along the channels from the largest remainder to the smallest.
struct Corners {
    Words index[4];
    Words weights01, weights23;  // 1/32768, two in a word
};

QUINCE_INLINE Ints Larger(Ints a, Ints b) {
    return a > b ? a : b;
}
QUINCE_INLINE Ints Smaller(Ints a, Ints b) {
    return a < b ? a : b;
}

QUINCE_INLINE Corners CornersOf(Words pixels, const LatticeView& lattice) {
    const Shorts indexFactor = SpreadShort(lattice.indexFactor), placeFactor = SpreadShort(lattice.placeFactor);
    const Shorts restFactor = SpreadShort(lattice.restFactor);
    const auto rest = [&](Shorts x, Shorts index) __attribute__((always_inline)) {
        return (Words)((x * placeFactor + HighProduct(x, restFactor) - (index << 15)) & 0x7FFF);
    };
    const Shorts blueRed = (Shorts)(pixels & 0x00FF00FFu), green = (Shorts)((pixels >> 8) & 0xFFu);
    const Shorts indexBlueRed = HighProduct(blueRed, indexFactor), indexGreen = HighProduct(green, indexFactor);
    const Words restBlueRed = rest(blueRed, indexBlueRed), restGreen = rest(green, indexGreen);
    const unsigned strideGreen = unsigned(lattice.strideGreen), strideRed = unsigned(lattice.strideRed);
    const Words base = PairProducts(indexBlueRed, (Shorts)(Words{} + (strideRed << 16 | 1u))) +
                       PairProducts(indexGreen, (Shorts)(Words{} + strideGreen));

    // A remainder and its channel's stride in one number, so that sorting moves both.
    const Ints blue = (Ints)(restBlueRed << 16 | 1u), red = (Ints)((restBlueRed & 0xFFFF0000u) | strideRed);
    const Ints greenKey = (Ints)(restGreen << 16 | strideGreen);
    const Ints most = Larger(Larger(blue, greenKey), red), least = Smaller(Smaller(blue, greenKey), red);
    const Words middle = (Words)blue + (Words)greenKey + (Words)red - (Words)most - (Words)least;

    Corners corners;
    const Words farthest = base + (1u + strideGreen + strideRed);
    corners.index[0] = base;
    corners.index[1] = base + ((Words)most & 0xFFFFu);
    corners.index[2] = farthest - ((Words)least & 0xFFFFu);
    corners.index[3] = farthest;
    const Words first = (Words)most >> 16, second = middle >> 16, third = (Words)least >> 16;
    corners.weights01 = (32768u - first) | (first - second) << 16;
    corners.weights23 = (second - third) | third << 16;
    return corners;
}

// Levels x 255 of half the lanes, four numbers a pixel.
template <bool High>
QUINCE_INLINE Shorts Interpolated(const Corners& corners, const std::uint16_t* points) {
    const Shorts weights =
        (Shorts)(High ? PairHigh(corners.weights01, corners.weights23) : PairLow(corners.weights01, corners.weights23));
    Shorts sum = HighProduct(FetchPoints<High>(points, corners.index[0]), Repeat<0>(weights));
    sum += HighProduct(FetchPoints<High>(points, corners.index[1]), Repeat<1>(weights));
    sum += HighProduct(FetchPoints<High>(points, corners.index[2]), Repeat<2>(weights));
    sum += HighProduct(FetchPoints<High>(points, corners.index[3]), Repeat<3>(weights));
    // Each product lost half a step on average.
    constexpr int lost = 2, unit = LatticeScale / 2;
    return Lower(SubtractHeld(sum + static_cast<unsigned short>(lost), SpreadShort(LatticeReach * unit)),
                 SpreadShort(255 * unit)) *
           static_cast<unsigned short>(255 / unit);
}

// Whole levels; a threshold of 128 rounds.
QUINCE_INLINE Shorts Levels(Shorts v, Shorts threshold) {
    return HighProduct(v + threshold, SpreadShort(257));
}

// Holds the channels of `result` inside the scale by the margin, but where those of `source` were at its ends already.
QUINCE_INLINE Words HeldInside(Words result, Words source, int margin) {
    typedef std::uint8_t Bytes __attribute__((vector_size(Lanes * 4)));
    const Bytes from = (Bytes)source, to = (Bytes)result;
    const Bytes least = Bytes{} + static_cast<std::uint8_t>(margin), most = ~least;
    const Bytes low = from < least ? from : least, high = from > most ? from : most;
    const Bytes raised = to > low ? to : low;
    return (Words)(raised < high ? raised : high);
}

// How far each pixel of a group moves the dither on from the group's first.
QUINCE_INLINE Words DitherSteps() {
    Words steps;
    for (int i = 0; i < Lanes; ++i) steps[i] = static_cast<unsigned>(i) * DitherStepX;
    return steps;
}

QUINCE_INLINE Shorts WithGrain(Shorts v, Words noise) {
    const Shorts strength = Repeat<3>(v) >> 1;
    const Shorts grain = HighSignedProduct(strength, (Shorts)noise);
    const Shorts middle = SpreadShort(0x8000);
    return Lower(AddSignedHeld(v ^ middle, grain + grain) ^ middle, SpreadShort(255 * 255));
}

template <bool HasPlace, bool HasGrain>
QUINCE_INLINE void LookRowOf(std::uint8_t* pixels, int count, const LatticeView& lattice, const std::int16_t* place,
                             const std::int8_t* noise, Dither dither) {
    const Words steps = DitherSteps() + dither.phase;
    const unsigned reach = unsigned(dither.reach);
    ForPixelGroups(pixels, count, [&](std::uint8_t* group, int x) {
        const Words words = LoadWords(group);
        const Corners corners = CornersOf(words, lattice);
        Shorts low = Interpolated<false>(corners, lattice.points), high = Interpolated<true>(corners, lattice.points);
        if (HasPlace) {
            constexpr int Step = Lanes * 2;
            const std::int16_t* here = place + std::ptrdiff_t{PlaceNumbers} * x;
            const Shorts p0 = LoadShorts(here), p1 = LoadShorts(here + Step);
            const Shorts p2 = LoadShorts(here + 2 * Step), p3 = LoadShorts(here + 3 * Step);
            const auto placed = [&](Shorts v, Shorts gain, Shorts light) __attribute__((always_inline)) {
                return Lower(AddHeld(HighProduct(v, gain + gain), light + light), SpreadShort(255 * 255));
            };
            low = placed(low, QuadLow(p0, p1), QuadHigh(p0, p1));
            high = placed(high, QuadLow(p2, p3), QuadHigh(p2, p3));
        }
        if (HasGrain) {
            std::uint8_t bytes[Lanes];
            __builtin_memcpy(bytes, noise + x, Lanes);
            typedef std::uint8_t Bytes __attribute__((vector_size(Lanes)));
            Bytes packed;
            __builtin_memcpy(&packed, bytes, Lanes);
            const Words wide = __builtin_convertvector(packed, Words);
            const Words both = wide << 8 | wide << 24;
            low = WithGrain(low, PairLow(both, both));
            high = WithGrain(high, PairHigh(both, both));
        }
        const Words byte = (steps + unsigned(x) * DitherStepX) >> 24;
        const Words threshold = (byte * reach + 128u * (256u - reach)) >> 8;
        const Words both = threshold | threshold << 16;
        const Words result =
            PackBytes(Levels(low, (Shorts)PairLow(both, both)), Levels(high, (Shorts)PairHigh(both, both)));
        const Words held = HeldInside(result, words, lattice.margin);
        StoreWords(group, (held & 0x00FFFFFFu) | (words & 0xFF000000u));
    });
}

void LookRow(std::uint8_t* pixels, int count, const LatticeView& lattice, const std::int16_t* place,
             const std::int8_t* noise, Dither dither) {
    if (place && noise)
        LookRowOf<true, true>(pixels, count, lattice, place, noise, dither);
    else if (place)
        LookRowOf<true, false>(pixels, count, lattice, place, noise, dither);
    else if (noise)
        LookRowOf<false, true>(pixels, count, lattice, place, noise, dither);
    else
        LookRowOf<false, false>(pixels, count, lattice, place, noise, dither);
}

}  // namespace
