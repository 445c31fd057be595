// SPDX-License-Identifier: GPL-3.0-or-later
// Compositing and Blending Level 1 (W3C, 2015), sections 5.8, 10.1 and 10.2: source over with a blend function.
#pragma once

#include "BlendModes.h"
#include "EffectKernels.h"
#include "Lanes.h"

namespace {

QUINCE_INLINE Floats HardLight(Floats b, Floats l) {
    const Floats rest = 2.0f * l - 1.0f;
    return l <= 0.5f ? b * 2.0f * l : b + rest - b * rest;
}

QUINCE_INLINE Floats SoftLight(Floats b, Floats l) {
    const Floats bent = b <= 0.25f ? ((16.0f * b - 12.0f) * b + 4.0f) * b : Root(b);
    return l <= 0.5f ? b - (1.0f - 2.0f * l) * b * (1.0f - b) : b + (2.0f * l - 1.0f) * (bent - b);
}

template <int Mode>
QUINCE_INLINE Floats BlendChannel(Floats b, Floats l) {
    const Floats zero = Spread(0.0f), one = Spread(1.0f);
    switch (Mode) {
        case BlendMultiply:
            return b * l;
        case BlendScreen:
            return b + l - b * l;
        case BlendOverlay:
            return HardLight(l, b);
        case BlendDarken:
            return Min(b, l);
        case BlendLighten:
            return Max(b, l);
        case BlendColorDodge: {
            const Floats lit = l >= 1.0f ? one : Min(one, b / Max(1.0f - l, Spread(1e-6f)));
            return b <= 0.0f ? zero : lit;
        }
        case BlendColorBurn: {
            const Floats burnt = l <= 0.0f ? zero : 1.0f - Min(one, (1.0f - b) / Max(l, Spread(1e-6f)));
            return b >= 1.0f ? one : burnt;
        }
        case BlendHardLight:
            return HardLight(b, l);
        case BlendSoftLight:
            return SoftLight(b, l);
        case BlendDifference:
            return Absolute(b - l);
        case BlendExclusion:
            return b + l - 2.0f * b * l;
        case BlendAdd:
            return Min(one, b + l);
        case BlendSubtract:
            return Max(zero, b - l);
        default:
            return l;
    }
}

QUINCE_INLINE Floats Lum(const Colours& c) {
    return 0.3f * c.r + 0.59f * c.g + 0.11f * c.b;
}

QUINCE_INLINE Floats Sat(const Colours& c) {
    return Max3(c.r, c.g, c.b) - Min3(c.r, c.g, c.b);
}

// middle + (v - middle) * gain, for each channel.
QUINCE_INLINE Colours Stretched(const Colours& c, Floats middle, Floats gain) {
    return {middle + (c.r - middle) * gain, middle + (c.g - middle) * gain, middle + (c.b - middle) * gain};
}

QUINCE_INLINE Colours SetLum(const Colours& c, Floats lum) {
    const Floats rise = lum - Lum(c), one = Spread(1.0f), least = Spread(1e-6f);
    Colours out = {c.r + rise, c.g + rise, c.b + rise};
    const Floats low = Min3(out.r, out.g, out.b);
    out = Stretched(out, lum, low < 0.0f ? lum / Max(lum - low, least) : one);
    const Floats high = Max3(out.r, out.g, out.b);
    return Stretched(out, lum, high > 1.0f ? (1.0f - lum) / Max(high - lum, least) : one);
}

QUINCE_INLINE Colours SetSat(const Colours& c, Floats sat) {
    const Floats low = Min3(c.r, c.g, c.b), range = Sat(c);
    const Floats gain = range > 0.0f ? sat / Max(range, Spread(1e-6f)) : Spread(0.0f);
    return {(c.r - low) * gain, (c.g - low) * gain, (c.b - low) * gain};
}

template <int Mode>
QUINCE_INLINE Colours Blend(const Colours& b, const Colours& l) {
    if (Mode == BlendHue) return SetLum(SetSat(l, Sat(b)), Lum(b));
    if (Mode == BlendSaturation) return SetLum(SetSat(b, Sat(l)), Lum(b));
    if (Mode == BlendColor) return SetLum(l, Lum(b));
    if (Mode == BlendLuminosity) return SetLum(b, Lum(l));
    return {BlendChannel<Mode>(b.r, l.r), BlendChannel<Mode>(b.g, l.g), BlendChannel<Mode>(b.b, l.b)};
}

QUINCE_INLINE Colours ToUnit(const Colours& c) {
    constexpr float unit = 1.0f / 255.0f;
    return {c.r * unit, c.g * unit, c.b * unit};
}

template <int Mode>
QUINCE_INLINE Words Blended(Words picture, Words layer) {
    const Floats below = Channel(picture, 24) * (1.0f / 255.0f), above = Channel(layer, 24) * (1.0f / 255.0f);
    const Floats whole = above + below - above * below;
    const Colours b = ToUnit(Unpack(picture)), l = ToUnit(Unpack(layer)), mixed = Blend<Mode>(b, l);
    const Floats scale = 255.0f / Max(whole, Spread(1e-6f));
    const Floats ofPicture = (1.0f - above) * below * scale, ofLayer = above * (1.0f - below) * scale;
    const Floats ofBoth = above * below * scale;
    const Colours sum = {b.r * ofPicture + l.r * ofLayer + mixed.r * ofBoth,
                         b.g * ofPicture + l.g * ofLayer + mixed.g * ofBoth,
                         b.b * ofPicture + l.b * ofLayer + mixed.b * ofBoth};
    const Words result = Pack(sum, (Words)ToInts(whole * 255.0f + 0.5f) << 24);
    return layer >> 24 == 0u ? picture : result;
}

template <int Mode>
void BlendRowOf(std::uint8_t* picture, const std::uint8_t* layer, int count) {
    ForPixelGroups(picture, count, [&](std::uint8_t* group, int i) {
        const int here = count - i < Lanes ? count - i : Lanes;
        std::uint8_t bytes[Lanes * 4] = {};
        __builtin_memcpy(bytes, layer + std::ptrdiff_t{4} * i, std::size_t(here) * 4);
        StoreWords(group, Blended<Mode>(LoadWords(group), LoadWords(bytes)));
    });
}

void BlendRow(std::uint8_t* picture, const std::uint8_t* layer, int count, int mode) {
    using Run = void (*)(std::uint8_t*, const std::uint8_t*, int);
    static constexpr Run runs[BlendModeCount] = {
        BlendRowOf<0>,  BlendRowOf<1>,  BlendRowOf<2>,  BlendRowOf<3>,  BlendRowOf<4>,  BlendRowOf<5>,
        BlendRowOf<6>,  BlendRowOf<7>,  BlendRowOf<8>,  BlendRowOf<9>,  BlendRowOf<10>, BlendRowOf<11>,
        BlendRowOf<12>, BlendRowOf<13>, BlendRowOf<14>, BlendRowOf<15>, BlendRowOf<16>, BlendRowOf<17>};
    runs[mode](picture, layer, count);
}

}  // namespace
