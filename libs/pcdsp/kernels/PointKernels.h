// SPDX-License-Identifier: GPL-3.0-or-later
// The stages of a point pass. A row goes through in blocks that stay in the first cache; between the stages a block is
// three planes of levels in floating point, so that nothing is rounded before the end.
#pragma once

#include "CurveLanes.h"
#include "Kernels.h"
#include "Lanes.h"
#include "SkinTone.h"

namespace {

constexpr int BlockPixels = 256;

struct Block {
    alignas(64) float r[BlockPixels];
    alignas(64) float g[BlockPixels];
    alignas(64) float b[BlockPixels];
    alignas(64) float luminance[BlockPixels];  // in squared levels, for stages of two loops

    QUINCE_INLINE Colours Load(const Block& block, int i) {
        return {LoadFloats(block.r + i), LoadFloats(block.g + i), LoadFloats(block.b + i)};
    }
    QUINCE_INLINE void Store(Block& block, int i, const Colours& c) {
        StoreFloats(block.r + i, c.r);
        StoreFloats(block.g + i, c.g);
        StoreFloats(block.b + i, c.b);
    }
};

// A tone curve that keeps the hue: the curve moves the largest and the smallest channel, and the middle one keeps its
// place between them. Where that would raise the chroma faster than the luma, half of the excess is taken back, so that
// contrast does not turn faces red; the luma stays what the curve made it.
QUINCE_INLINE Colours BetweenEnds(const Colours& c, Floats low, Floats high, const CurveEnds& now) {
    const Floats luma = Weighted(c);
    const Floats slope = (now.high - now.low) * Inverse(Max(high - low, Spread(1e-3f)));
    const Floats newLuma = now.low + (luma - low) * slope;
    const Floats gain = Min(slope, 0.5f * (slope + newLuma * Inverse(Max(luma, Spread(1e-2f)))));
    return {newLuma + (c.r - luma) * gain, newLuma + (c.g - luma) * gain, newLuma + (c.b - luma) * gain};
}

template <bool Pieces>
QUINCE_INLINE Colours ToneOfBytes(const Colours& c, const PointCurve& curve) {
    const Floats low = Min3(c.r, c.g, c.b), high = Max3(c.r, c.g, c.b);
    return BetweenEnds(c, low, high, CurveOfBytes<Pieces>(curve, low, high));
}

template <bool Pieces>
QUINCE_INLINE Colours Tone(const Colours& c, const PointCurve& curve) {
    const Floats low = Clamp(Min3(c.r, c.g, c.b), 0.0f, 255.0f), high = Clamp(Max3(c.r, c.g, c.b), 0.0f, 255.0f);
    return BetweenEnds(c, low, high, CurveBetween<Pieces>(curve, low, high));
}

// A curve at one value between the levels.
QUINCE_INLINE Floats CurveAt(const PointCurve& curve, Floats level) {
    const Ints index = ToInts(level);
    const Words both = Gather(curve.both, index);
    return (ToFloats((Ints)(both >> 16)) + ToFloats((Ints)(both & 65535u)) * (level - ToFloats(index))) *
           (1.0f / 256.0f);
}

// The largest value of a squared level.
constexpr float White2 = 255.0f * 255.0f;

// How far a colour lies on the way from its grey to the border of the cube, as the part `way` of `whole`: 0 grey, all
// of it on the border, more outside. Two numbers instead of their ratio, since a division costs as much as all else
// here. Holds for levels and for squared levels alike.
struct Border {
    Floats way, whole;
};
QUINCE_INLINE Border TowardsBorder(const Colours& c, Floats grey, float white) {
    const Floats above = Max(white - grey, Spread(1e-2f)), below = Max(grey, Spread(1e-2f));
    return {Max((Max3(c.r, c.g, c.b) - grey) * below, (grey - Min3(c.r, c.g, c.b)) * above), above * below};
}
QUINCE_INLINE Floats WayToBorder(const Colours& c, Floats grey, float white) {
    const Border border = TowardsBorder(c, grey, white);
    return border.way / border.whole;
}

QUINCE_INLINE Colours Squares(const Colours& c) {
    return {c.r * c.r, c.g * c.g, c.b * c.b};
}

// grey + (c - grey) * gain, in squared levels, back to levels.
QUINCE_INLINE Colours Chroma(const Colours& squares, Floats grey, Floats gain) {
    return {Root(grey + (squares.r - grey) * gain), Root(grey + (squares.g - grey) * gain),
            Root(grey + (squares.b - grey) * gain)};
}

QUINCE_INLINE Colours Saturate(const Colours& c, float gain, float protection) {
    const Colours squares = Squares(c);
    const Floats grey = Weighted(squares);
    const Floats room = Max(1.0f - WayToBorder(squares, grey, White2), Spread(0.0f));
    return Chroma(squares, grey, 1.0f + room * (gain - gain * protection * SkinLikelihood(c)));
}

// Draws a colour that left the cube back towards its grey until it touches the border.
QUINCE_INLINE Colours Inside(const Colours& c, Floats grey) {
    const Border border = TowardsBorder(c, grey, 255.0f);
    const Floats gain = border.whole / Max(border.way, border.whole);
    return {grey + (c.r - grey) * gain, grey + (c.g - grey) * gain, grey + (c.b - grey) * gain};
}

// Gives a colour the luminance `squaredGrey` (in squared levels) without leaving the cube.
QUINCE_INLINE Colours AtLuminance(const Colours& c, Floats squaredGrey) {
    const Floats scale = Root(squaredGrey / Max(Weighted(Squares(c)), Spread(1e-2f)));
    return Inside({c.r * scale, c.g * scale, c.b * scale}, Root(squaredGrey));
}

// Towards grey in even steps of level: in squared levels the first step away from a pure colour would be the largest.
// The luminance is not given back yet.
QUINCE_INLINE Colours Fade(const Colours& c, Floats luminance, float gain) {
    const Floats grey = Root(luminance);
    const float keep = 1.0f + gain;
    return {grey + (c.r - grey) * keep, grey + (c.g - grey) * keep, grey + (c.b - grey) * keep};
}

// A turned hue within the cube; the luminance is not given back yet.
QUINCE_INLINE Colours TurnHue(const Colours& c, const float* m) {
    const Colours turned = {m[0] * c.r + m[1] * c.g + m[2] * c.b, m[3] * c.r + m[4] * c.g + m[5] * c.b,
                            m[6] * c.r + m[7] * c.g + m[8] * c.b};
    return Inside(turned, Weighted(turned));
}

// A parabola that leaves black and white in place.
QUINCE_INLINE Floats Lift(Floats v, float strength) {
    return v + v * (255.0f - v) * strength;
}

template <class Stage>
QUINCE_INLINE void OnBlock(Block& block, int count, const Stage& stage) {
    for (int i = 0; i < count; i += Lanes) Block::Store(block, i, stage(Block::Load(block, i)));
}

// change(colours, luminance), and then the luminance that was there before. Two loops, since each division and root
// waits for the one before it: in one loop a machine cannot look far enough ahead to fill the time with other pixels.
template <class Change>
QUINCE_INLINE void KeepingLuminance(Block& block, int count, const Change& change) {
    for (int i = 0; i < count; i += Lanes) {
        const Colours c = Block::Load(block, i);
        const Floats luminance = Weighted(Squares(c));
        StoreFloats(block.luminance + i, luminance);
        Block::Store(block, i, change(c, luminance));
    }
    for (int i = 0; i < count; i += Lanes)
        Block::Store(block, i, AtLuminance(Block::Load(block, i), LoadFloats(block.luminance + i)));
}

QUINCE_INLINE void RunTone(Block& block, int count, const PointStage& stage) {
    const PointCurve& curve = *stage.curve;
    const bool bytes = stage.kind == PointStage::Kind::ToneOfBytes;
    if (ReadsPieces && curve.pieces.good) {
        if (bytes)
            OnBlock(block, count, [&](const Colours& c) { return ToneOfBytes<true>(c, curve); });
        else
            OnBlock(block, count, [&](const Colours& c) { return Tone<true>(c, curve); });
    } else if (bytes) {
        OnBlock(block, count, [&](const Colours& c) { return ToneOfBytes<false>(c, curve); });
    } else {
        OnBlock(block, count, [&](const Colours& c) { return Tone<false>(c, curve); });
    }
}

QUINCE_INLINE void RunStage(Block& block, int count, const PointStage& stage) {
    const float* n = stage.numbers;
    switch (stage.kind) {
        case PointStage::Kind::ToneOfBytes:
        case PointStage::Kind::Tone:
            RunTone(block, count, stage);
            break;
        case PointStage::Kind::Saturate:
            if (n[0] < 0.0f)
                KeepingLuminance(block, count,
                                 [&](const Colours& c, Floats luminance) { return Fade(c, luminance, n[0]); });
            else
                OnBlock(block, count, [&](const Colours& c) { return Saturate(c, n[0], n[1]); });
            break;
        case PointStage::Kind::Hue:
            KeepingLuminance(block, count, [&](const Colours& c, Floats) { return TurnHue(c, n); });
            break;
        case PointStage::Kind::Balance:
            OnBlock(block, count, [&](const Colours& c) -> Colours {
                return {Lift(c.r, n[0]), Lift(c.g, n[1]), Lift(c.b, n[2])};
            });
            break;
    }
}

void PointBlock(std::uint8_t* pixels, int count, const PointStage* stages, int stageCount) {
    Block block;
    for (int i = 0; i < count; i += Lanes) Block::Store(block, i, Unpack(LoadWords(pixels + 4 * i)));
    for (int s = 0; s < stageCount; ++s) RunStage(block, count, stages[s]);
    for (int i = 0; i < count; i += Lanes)
        StoreWords(pixels + 4 * i, Pack(Block::Load(block, i), LoadWords(pixels + 4 * i)));
}

void PointRow(std::uint8_t* pixels, int count, const PointStage* stages, int stageCount) {
    const int whole = count - count % Lanes;
    for (int i = 0; i < whole; i += BlockPixels)
        PointBlock(pixels + std::ptrdiff_t{4} * i, whole - i < BlockPixels ? whole - i : BlockPixels, stages,
                   stageCount);
    ForPixelGroups(pixels + std::ptrdiff_t{4} * whole, count - whole,
                   [&](std::uint8_t* group, int) { PointBlock(group, Lanes, stages, stageCount); });
}

}  // namespace
