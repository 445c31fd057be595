// SPDX-License-Identifier: GPL-3.0-or-later
// The inner loops of the library: one table of functions per instruction set, chosen once for the machine. Where
// nothing else is said they count in whole numbers and give the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "InstructionSets.h"

// Levels are kept from -LatticeReach to 255 + LatticeReach, in steps of 1 / LatticeScale.
constexpr int LatticeReach = 64;
constexpr int LatticeScale = 170;
// The fourth number of a point holds levels of grain times this.
constexpr int GrainScale = 8;

// A cube of points, four numbers each: blue, green, red, grain; blue runs fastest. The numbers after the strides say
// how a channel x becomes a place: index = x * indexFactor >> 16, and the place in 1/32768 of a step is x * placeFactor
// + (x * restFactor >> 16).
struct LatticeView {
    const std::uint16_t* points = nullptr;
    int strideGreen = 0;  // in points
    int strideRed = 0;
    int indexFactor = 0;
    int placeFactor = 0;
    int restFactor = 0;
    // Levels by which a channel keeps from 0 and 255 if the pixel's was not there before: 0 or 1.
    int margin = 0;
};

// What position does to a pixel: result = colour * gain + light. Eight numbers a pixel, gain of blue, green, red and
// grain in 1/32768, then light in 1/127.5 level. PlaceSlot tells where the kernels of the set in use keep pixel i.
constexpr int PlaceNumbers = 8;

// How a row's levels become whole. A pixel's threshold moves with its place by less than half a level (`reach` / 512)
// each way, so that a smooth slope of levels dissolves instead of breaking into bands; 0 rounds plainly. What is whole
// already stays. The thresholds are the points of Roberts' R2 sequence (2018), which lie evenly without a pattern that
// the eye finds: the top byte of phase + x * DitherStepX + y * DitherStepY.
struct Dither {
    std::uint32_t phase = 0;  // of the first pixel
    int reach = 0;            // 0 to 256
};
constexpr std::uint32_t DitherStepX = 3242174889u, DitherStepY = 2447445414u;
constexpr int DitherReach = 230;

// The alpha of an opaque pixel whose colours are multiplied by it. The room above takes up what stretching overshoots
// at an edge, which would else be cut off and leave its colour too light.
constexpr int OverOpaque = 240;

struct EffectKernels {
    const char* name;

    // Replaces `count` pixels by what the lattice holds for them. `place` and `noise` may be null; each is readable for
    // 16 pixels more. Noise is in 1/32 of its standard deviation.
    void (*lookRow)(std::uint8_t* pixels, int count, const LatticeView& lattice, const std::int16_t* place,
                    const std::int8_t* noise, Dither dither);

    // Spreads a row of nodes, 2^shift pixels apart, over the pixels first to first + count - 1; node 0 lies half a
    // distance before pixel 0. `first` is a multiple of 16.
    void (*spreadRow)(const std::int16_t* nodes, int shift, int first, int count, std::int16_t* place);

    // Adds blue, green and red of 2^shift pixels at a time to sums[4 * block]; the last block may be shorter.
    void (*sumBlocks)(const std::uint8_t* pixels, int count, int shift, std::uint32_t* sums);

    // target = target + (other - target) * weight / 2^20 for `bytes` bytes, rounded to the nearest, halves up.
    void (*fadeRow)(std::uint8_t* target, const std::uint8_t* other, std::size_t bytes, int weight);

    // Lays `count` pixels of a layer over a picture in a mode of BlendModes.h. In floating point: sets may differ by a
    // level.
    void (*blendRow)(std::uint8_t* picture, const std::uint8_t* layer, int count, int mode);

    // Multiplies the colours of `count` straight pixels by their alpha, and all by OverOpaque / 255.
    void (*premultiplyRow)(const std::uint8_t* straight, int count, std::uint8_t* out);

    // Draws such pixels, stretched or not, over straight ones. Clear ones change nothing, colours above their alpha
    // count as it, alphas above OverOpaque as opaque. `out` may be `below`. Over translucent pixels sets may differ by
    // a level.
    void (*overRow)(const std::uint8_t* below, const std::uint8_t* over, int count, std::uint8_t* out);
};

const EffectKernels& EffectKernelsInUse();
// That of one instruction set by its number in InstructionSets.h.
const EffectKernels& EffectKernelSet(int index);
