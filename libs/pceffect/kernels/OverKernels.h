// SPDX-License-Identifier: GPL-3.0-or-later
// Plain drawing of pixels whose colours are multiplied by their alpha, in whole numbers where the ground is opaque.
#pragma once

#include "EffectKernels.h"
#include "Shorts.h"

namespace {

// v * factor / 255, rounded, for bytes.
QUINCE_INLINE Shorts Scaled(Shorts v, Shorts factor) {
    return DividedBy255(v * factor);
}

QUINCE_INLINE Words Premultiply(Words straight) {
    const Words alpha = straight >> 24;
    // alpha * OverOpaque / 255, rounded: 16 bits hold the product.
    const Shorts scaled = Scaled(InBoth(alpha), SpreadShort(OverOpaque));
    const Fields fields = FieldsOf(straight);
    const Words colours = PixelsOf({Scaled(fields.even, scaled), Scaled(fields.odd, scaled)});
    return (colours & 0x00FFFFFFu) | (Words)scaled >> 16 << 24;
}

// 255 * 128 / alpha, cut off, for alphas from OverOpaque on.
constexpr int RangeFactor(int alpha) {
    return 135 - (alpha - OverOpaque) / 2 + (alpha == OverOpaque ? 1 : 0);
}
constexpr bool RangeFactorHolds() {
    for (int alpha = OverOpaque; alpha < 256; ++alpha)
        if (RangeFactor(alpha) != 255 * 128 / alpha) return false;
    return true;
}
static_assert(RangeFactorHolds());

// The pixels in full range, colours not above their alpha; still multiplied by it.
QUINCE_INLINE Words FullRange(Words over) {
    const Shorts alpha = InBoth(over >> 24);
    const Register bytes = (Register)(alpha | alpha << 8);
    const Fields held = FieldsOf((Words)QUINCE_WIDE(min_epu8)((Register)over, bytes));
    const Shorts above = SubtractHeld(alpha, SpreadShort(OverOpaque));
    const Shorts least = SpreadShort(1) - Lower(above, SpreadShort(1));
    const Shorts factor = SpreadShort(135) - (above >> 1) + least;
    const Fields full = {(held.even * factor + SpreadShort(64)) >> 7, (held.odd * factor + SpreadShort(64)) >> 7};
    return over >= (unsigned)OverOpaque << 24 ? PixelsOf(full) | 0xFF000000u : PixelsOf(full);
}

QUINCE_INLINE Words OverSolid(Words below, Words full) {
    const Shorts rest = SpreadShort(255) - InBoth(full >> 24);
    const Fields ground = FieldsOf(below);
    return full + PixelsOf({Scaled(ground.even, rest), Scaled(ground.odd, rest)});
}

// What both make together, divided by the alpha of both together.
QUINCE_INLINE Words OverTranslucent(Words below, Words full) {
    const Floats above = Channel(full, 24), rest = (255.0f - above) * Channel(below, 24) * (1.0f / 255.0f);
    const Floats whole = above + rest, share = 1.0f / Max(whole, Spread(1e-3f));
    const Colours over = Unpack(full), ground = Unpack(below);
    const Colours mixed = {(over.r * 255.0f + ground.r * rest) * share, (over.g * 255.0f + ground.g * rest) * share,
                           (over.b * 255.0f + ground.b * rest) * share};
    return Pack(mixed, (Words)ToInts(whole + 0.5f) << 24);
}

QUINCE_INLINE bool AllSolid(Words pixels) {
#if defined(__AVX512BW__)
    return _mm512_cmplt_epu32_mask((__m512i)pixels, _mm512_set1_epi32((int)0xFF000000u)) == 0;
#elif defined(__AVX2__)
    return _mm256_movemask_ps((__m256)(Ints)(pixels < 0xFF000000u)) == 0;
#else
    return _mm_movemask_ps((__m128)(Ints)(pixels < 0xFF000000u)) == 0;
#endif
}

QUINCE_INLINE Words Over(Words below, Words over) {
    const Words full = FullRange(over), solid = OverSolid(below, full);
    if (AllSolid(below)) return solid;
    const Words other = over >> 24 == 0u ? below : OverTranslucent(below, full);
    return below >= 0xFF000000u ? solid : other;
}

void PremultiplyRow(const std::uint8_t* straight, int count, std::uint8_t* out) {
    ForGroups(
        count, [&](int i, int here) __attribute__((always_inline)) {
            StoreGroup(out, i, here, Premultiply(LoadGroup(straight, i, here)));
        });
}

void OverRow(const std::uint8_t* below, const std::uint8_t* over, int count, std::uint8_t* out) {
    ForGroups(
        count, [&](int i, int here) __attribute__((always_inline)) {
            StoreGroup(out, i, here, Over(LoadGroup(below, i, here), LoadGroup(over, i, here)));
        });
}

}  // namespace
