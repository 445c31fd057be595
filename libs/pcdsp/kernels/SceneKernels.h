// SPDX-License-Identifier: GPL-3.0-or-later
// The last pass of a scene: levels, local contrast, colour and skin, on one row.
#pragma once

#include "Kernels.h"
#include "Lanes.h"
#include "PointKernels.h"
#include "SkinTone.h"
#include "UsmKernels.h"

namespace {

void SkinRow(const std::uint8_t* pixels, int count, float* skin) {
    for (int i = 0; i < count; i += Lanes) {
        const int here = count - i < Lanes ? count - i : Lanes;
        std::uint8_t group[Lanes * 4] = {};
        __builtin_memcpy(group, pixels + std::ptrdiff_t{4} * i, std::size_t(here) * 4);
        const Floats value = SkinLikelihood(Unpack(LoadWords(group)));
        __builtin_memcpy(skin + i, &value, std::size_t(here) * sizeof(float));
    }
}

QUINCE_INLINE Floats Mix(float a, float b, Floats part) {
    return a + (b - a) * part;
}

// Detail times `gain`, but what is so small that it may be noise is not raised.
QUINCE_INLINE Floats Detail(Floats detail, Floats gain) {
    const Floats square = detail * detail;
    const Floats trust = square * Inverse(square + 6.0f);
    return detail * (1.0f + Min(gain - 1.0f, Spread(0.0f)) + Max(gain - 1.0f, Spread(0.0f)) * trust);
}

// How far the chroma is to be raised, before the room to the border is looked at.
QUINCE_INLINE Floats SceneSaturation(const Colours& c, Floats skin, const SceneRow& row) {
    const Floats sky = SoftEdge(c.b - c.r, 8.0f, 60.0f) * SoftEdge(c.b - c.g, -8.0f, 16.0f);
    const Floats foliage = SoftEdge(c.g - c.b, 8.0f, 48.0f) * SoftEdge(c.g - c.r, -14.0f, 12.0f);
    const Floats warm = SoftEdge(c.r - c.b, 16.0f, 80.0f) * SoftEdge(c.r - c.g, -14.0f, 16.0f);
    const Floats others = row.saturation + row.sky * sky + row.foliage * foliage + row.warm * warm;
    return others + (row.skinSaturation - others) * skin;
}

QUINCE_INLINE Floats MapAt(const SceneRow& row, int map, int x) {
    const Floats above = LoadFloats(row.above[map] + x), below = LoadFloats(row.below[map] + x);
    return above + (below - above) * row.part[map];
}

QUINCE_INLINE Colours ScenePixels(const Colours& source, int x, const SceneRow& row) {
    const Colours c = {Gather(row.curveR, ToInts(source.r)), Gather(row.curveG, ToInts(source.g)),
                       Gather(row.curveB, ToInts(source.b))};
    const Floats luma = Weighted(c);
    const Floats skin = MapAt(row, 4, x);
    const Floats fine = luma * MapAt(row, 2, x) + MapAt(row, 3, x);
    const Floats base = Clamp(fine * MapAt(row, 0, x) + MapAt(row, 1, x), 0.0f, 255.0f);

    const Floats middle = (fine - base) * Mix(row.baseDetail, row.skinBase, skin);
    const Floats finest = Detail(luma - fine, Mix(row.fineDetail, row.skinFine, skin));
    const Floats change = CurveAt(*row.tone, base) + middle + finest - luma;
    // Bent towards black and white, so that no detail is pushed over the end.
    const Floats rise = Bent(Max(change, Spread(0.0f)), 1.0f + (255.0f - luma) * 1.6f);
    const Floats fall = Bent(Min(change, Spread(0.0f)), 1.0f + luma * 1.6f);
    const Floats target = Clamp(luma + rise + fall, 0.0f, 255.0f);

    const Floats ratio = Clamp(target * Inverse(Max(luma, Spread(1.0f))), 0.25f, 3.0f);
    const Floats spread = Max3(c.r, c.g, c.b) - Min3(c.r, c.g, c.b);
    const Floats wanted = SceneSaturation(c, skin, row) - row.neutral * SoftEdge(spread, 26.0f, 6.0f) * (1.0f - skin);
    Floats gain = 0.5f + 0.5f * ratio;
    const Colours toned = {target + (c.r - luma) * gain, target + (c.g - luma) * gain, target + (c.b - luma) * gain};
    const Floats free = Max(1.0f - WayToBorder(toned, target, 255.0f), Spread(0.0f));
    gain = 1.0f + Min(wanted, Spread(0.0f)) + Max(wanted, Spread(0.0f)) * free;
    // The tint fades towards black and white.
    const Floats tint = skin * target * (255.0f - target) * (row.skinWarm * 4.0f / White2);
    const Colours coloured = {target + (toned.r - target) * gain + tint,
                              target + (toned.g - target) * gain - tint * 0.18f,
                              target + (toned.b - target) * gain - tint * 0.6f};
    // Skin bends before the border and never touches it; everything else is only held inside.
    const Floats way = WayToBorder(coloured, target, 255.0f);
    const Floats held = Inverse(Max(way, Spread(1.0f)));
    const Floats excess = Max(way - 0.84f, Spread(0.0f));
    const Floats bent = (Min(way, Spread(0.84f)) + Bent(excess, Spread(0.14f))) * Inverse(Max(way, Spread(1e-3f)));
    gain = held + (Min(bent, held) - held) * skin;
    return {target + (coloured.r - target) * gain, target + (coloured.g - target) * gain,
            target + (coloured.b - target) * gain};
}

void SceneRowInPlace(std::uint8_t* pixels, int count, const SceneRow& row) {
    ForPixelGroups(pixels, count, [&](std::uint8_t* group, int x) {
        const Words words = LoadWords(group);
        StoreWords(group, Pack(ScenePixels(Unpack(words), x, row), words));
    });
}

}  // namespace
