// SPDX-License-Identifier: GPL-3.0-or-later
// The inner loops of the library: one table of functions per instruction set, chosen once for the machine.
#pragma once

#include <cstddef>
#include <cstdint>

#include "InstructionSets.h"

// A curve as eight cubics, for an instruction set that looks up eight numbers in a register much faster than 256 in
// memory. The piece of a level x stands in the lowest three bits of (the bits of the float 1 + scale x) >> shift:
// pieces of one length where that stays below 2, else pieces that grow with the level, as many to each power of 2.
struct CurvePieces {
    static constexpr int Count = 8;
    bool good = false;  // near enough to the curve to stand for it
    float scale = 0.0f;
    int shift = 0;
    float terms[4][Count] = {};  // of x^0 to x^3, in levels
};

// A rising curve at the 256 levels, in levels x 256: its value, and how far it rises to the next level (0 for the
// last).
struct PointCurve {
    std::uint16_t value[256];
    std::uint16_t rise[256];
    std::uint32_t both[256];  // value << 16 | rise
    CurvePieces pieces;       // none unless they were asked for
};

// One step of a point pass.
struct PointStage {
    // ToneOfBytes is Tone for the first stage, whose input has no fractions.
    enum class Kind { ToneOfBytes, Tone, Saturate, Hue, Balance };
    Kind kind = Kind::Tone;
    const PointCurve* curve = nullptr;
    // Saturate: gain and skin protection; Hue: a 3 x 3 matrix, row by row; Balance: the strength of each channel.
    float numbers[9] = {};
};

// One row of an unsharp mask. The luma rows are already extended at both sides by `half` values.
struct UsmRow {
    const float* const* luma = nullptr;  // 2 * half + 1 rows, each at its first extended value
    int half = 0;
    const float* weights = nullptr;  // half + 1, centre first
    float amount = 0.0f;
    float halo = 0.0f;
    float* scratch = nullptr;  // 3 rows of width + 2 * half + 16
};

// One row of a scene. Map rows are as wide as the picture; `below` and `above` bracket the row, `part` tells where it
// lies between them.
struct SceneRow {
    static constexpr int Maps = 5;  // slope and offset of the base layer, of the fine layer, and skin
    const float* above[Maps] = {};
    const float* below[Maps] = {};
    float part[Maps] = {};
    const float* curveR = nullptr;  // levels and white balance, 256 values in levels each
    const float* curveG = nullptr;
    const float* curveB = nullptr;
    const PointCurve* tone = nullptr;  // curve of the base layer
    float baseDetail = 1.0f;           // factor of what lies between base and fine layer
    float fineDetail = 1.0f;           // factor of the finest layer
    float skinBase = 1.0f;             // the same two on skin
    float skinFine = 1.0f;
    float saturation = 0.0f;  // of everything but skin, as in Saturate
    float skinSaturation = 0.0f;
    float sky = 0.0f;      // further saturation of blues
    float foliage = 0.0f;  // and of yellowish greens
    float warm = 0.0f;     // and of reds to yellows
    float skinWarm = 0.0f;
    float neutral = 0.0f;  // how far nearly grey pixels are drawn to grey
};

// The weights of four taps at 256 places between two pixels, in 1/16384, the sum of four exactly 16384.
struct RotateWeights {
    std::int16_t across[256 * 4];
    // The same, laid out for the sum down a column: 4 times (weight 0, weight 2), then 4 times (weight 1, weight 3).
    std::int16_t down[256 * 16];
};

// A run of result pixels of a free rotation. Places are in 1/2^32 source pixel and name the first of the four taps;
// all taps of all pixels lie in the picture.
struct RotateRun {
    const std::uint8_t* pixels = nullptr;
    std::ptrdiff_t stride = 0;
    std::int64_t x = 0, y = 0;
    std::int64_t stepX = 0, stepY = 0;
    const RotateWeights* weights = nullptr;
};

// A Gaussian across rows: 2 * half + 1 of them, the middle one at rows[half]; weights are half + 1, centre first.
struct GaussianTaps {
    const float* const* rows = nullptr;
    const float* weights = nullptr;
    int half = 0;
};

// One row of a retouch that reads maps: for each map two rows as wide as the picture, and `part` of the way between
// them where the row lies. What else is used depends on the retouch.
struct MappedRow {
    const float* above[3] = {};
    const float* below[3] = {};
    float part = 0.0f;
    const std::uint8_t* mask = nullptr;   // correction: the share of 255 that each pixel gets; null for all
    const std::uint32_t* ramp = nullptr;  // tint: a ColourRamp
    float lift = 1.0f;                    // teeth, with the next two: TeethWhiten.cpp
    float perP = 1.0f, perQ = 1.0f;
};

struct PcDspKernels {
    const char* name;
    bool readsPieces;  // whether pointRow reads the pieces of a curve

    // Runs the stages in order on `count` pixels in place.
    void (*pointRow)(std::uint8_t* pixels, int count, const PointStage* stages, int stageCount);

    // Luma of gamma-coded pixels in levels.
    void (*lumaRow)(const std::uint8_t* pixels, int count, float* luma);
    // Sharpens `count` pixels in place.
    void (*usmRow)(std::uint8_t* pixels, int count, const UsmRow& row);

    // out = sum of weights[i] * rows[i] over `bytes` bytes, weights in 1/16384, result in 1/64 level; `taps` is even.
    // Returns the bitwise and of all pixels that were read. `bytes` is a multiple of 4.
    std::uint32_t (*sumRows)(const std::uint8_t* const* rows, const std::int16_t* weights, int taps, int bytes,
                             std::int16_t* out);
    // count pixels; each is the sum of `taps` (even) pixels of `in` from starts[i] on, with its own weights.
    void (*sumColumns)(const std::int16_t* in, const int* starts, const std::int16_t* weights, int taps, int count,
                       std::uint8_t* out);

    // The same two passes with colours that count by their alpha. Between them stand four numbers for each pixel: blue,
    // green and red times alpha, and alpha, all times the weights.
    void (*sumRowsByAlpha)(const std::uint8_t* const* rows, const std::int16_t* weights, int taps, int count, int* out);
    void (*sumColumnsByAlpha)(const int* in, const int* starts, const std::int16_t* weights, int taps, int count,
                              std::uint8_t* out);

    // Samples `count` pixels, taking them as opaque. Returns the bitwise and of all pixels that were read.
    std::uint32_t (*rotateOpaque)(const RotateRun& run, int count, std::uint8_t* out);
    // The same with each pixel counted by its alpha. What comes out fully transparent is white.
    void (*rotateTranslucent)(const RotateRun& run, int count, std::uint8_t* out);

    // Skin likelihood of each pixel, 0 to 1.
    void (*skinRow)(const std::uint8_t* pixels, int count, float* skin);
    // Applies a scene to `count` pixels in place.
    void (*sceneRow)(std::uint8_t* pixels, int count, const SceneRow& row);

    // sums += pixels, byte by byte.
    void (*addRow)(const std::uint8_t* pixels, int bytes, std::uint16_t* sums);
    // One row of a Gaussian down.
    void (*gaussianRow)(const GaussianTaps& taps, int count, float* out);
    // out[x] = in[index[x]] + (in[index[x] + 1] - in[index[x]]) * part[x]. All rows are as long as whole groups need.
    void (*widenRow)(const float* in, const int* index, const float* part, int count, float* out);
    // In place on `count` pixels: adds the maps red, green and blue, in levels; colours by a ramp; tints by a ramp
    // where the map says skin; whitens teeth where the map says so.
    void (*correctRow)(std::uint8_t* pixels, int count, const MappedRow& row);
    void (*recolourRow)(std::uint8_t* pixels, int count, const std::uint32_t* ramp);
    void (*tintRow)(std::uint8_t* pixels, int count, const MappedRow& row);
    void (*teethRow)(std::uint8_t* pixels, int count, const MappedRow& row);
    // Adds the three maps of the first row, and, above a clarity of 0, that part more of the light that a base layer
    // leaves over, where the second row's maps (share of skin, slope and offset of the base) say that it is not skin.
    // What is added is held back, all channels alike, so that none of them reaches an end.
    void (*faceRow)(std::uint8_t* pixels, int count, const MappedRow& corrections, const MappedRow& details,
                    float clarity);
};

// The table in use, and that of one instruction set by its number in InstructionSets.h.
const PcDspKernels& Kernels();
const PcDspKernels& KernelSet(int index);
