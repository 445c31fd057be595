// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the table of one instruction set. Included once by each of the BrushKernels*.cpp, which name the table.
#pragma once

#include "BrushKernels.h"
#include "Shorts.h"

namespace {

// As many doubles as a register holds: half as many as lanes. Whole numbers come from the lower or the upper half.
#if defined(__AVX512F__)
typedef __m512d Doubles;
QUINCE_INLINE Doubles LowerHalf(Ints v) {
    return _mm512_cvtepi32_pd(_mm512_castsi512_si256((__m512i)v));
}
QUINCE_INLINE Doubles UpperHalf(Ints v) {
    return _mm512_cvtepi32_pd(_mm512_extracti64x4_epi64((__m512i)v, 1));
}
// Cut off behind the point.
QUINCE_INLINE Words WordsOf(Doubles lower, Doubles upper) {
    return (Words)_mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvttpd_epi32(lower)), _mm512_cvttpd_epi32(upper), 1);
}
#elif defined(__AVX2__)
typedef __m256d Doubles;
QUINCE_INLINE Doubles LowerHalf(Ints v) {
    return _mm256_cvtepi32_pd(_mm256_castsi256_si128((__m256i)v));
}
QUINCE_INLINE Doubles UpperHalf(Ints v) {
    return _mm256_cvtepi32_pd(_mm256_extracti128_si256((__m256i)v, 1));
}
QUINCE_INLINE Words WordsOf(Doubles lower, Doubles upper) {
    return (Words)_mm256_setr_m128i(_mm256_cvttpd_epi32(lower), _mm256_cvttpd_epi32(upper));
}
#else
typedef __m128d Doubles;
QUINCE_INLINE Doubles LowerHalf(Ints v) {
    return _mm_cvtepi32_pd((__m128i)v);
}
QUINCE_INLINE Doubles UpperHalf(Ints v) {
    return _mm_cvtepi32_pd(_mm_unpackhi_epi64((__m128i)v, (__m128i)v));
}
QUINCE_INLINE Words WordsOf(Doubles lower, Doubles upper) {
    return (Words)_mm_unpacklo_epi64(_mm_cvttpd_epi32(lower), _mm_cvttpd_epi32(upper));
}
#endif

// Of each lane.
struct Weights {
    Doubles lower, upper;
};

QUINCE_INLINE Words MixedChannel(Words base, Words processed, int shift, const Weights& weights) {
    const Ints b = (Ints)(base >> shift & 255u), p = (Ints)(processed >> shift & 255u);
    const auto mixed = [](Doubles from, Doubles to, Doubles weight) __attribute__((always_inline)) {
        return to * weight + from * (1.0 - weight);
    };
    return WordsOf(mixed(LowerHalf(b), LowerHalf(p), weights.lower), mixed(UpperHalf(b), UpperHalf(p), weights.upper))
           << shift;
}

// Blue, green and red mixed, no alpha.
QUINCE_INLINE Words MixedColours(Words base, Words processed, const Weights& weights) {
    return MixedChannel(base, processed, 0, weights) | MixedChannel(base, processed, 8, weights) |
           MixedChannel(base, processed, 16, weights);
}

// One byte for each lane.
struct LaneBytes {
    std::uint8_t bytes[Lanes] = {};

    QUINCE_INLINE LaneBytes Load(const std::uint8_t* from, int count) {
        LaneBytes lanes;
        __builtin_memcpy(lanes.bytes, from, count == Lanes ? Lanes : count);
        return lanes;
    }
    bool AllZero() const {
        unsigned any = 0;
        for (int i = 0; i < Lanes; i += 4) {
            unsigned four;
            __builtin_memcpy(&four, bytes + i, sizeof four);
            any |= four;
        }
        return any == 0;
    }
};
QUINCE_INLINE Words Widened(const LaneBytes& lanes) {
#if defined(__AVX512F__)
    return (Words)_mm512_cvtepu8_epi32(_mm_loadu_si128((const __m128i*)lanes.bytes));
#elif defined(__AVX2__)
    return (Words)_mm256_cvtepu8_epi32(_mm_loadl_epi64((const __m128i*)lanes.bytes));
#else
    return Words{lanes.bytes[0], lanes.bytes[1], lanes.bytes[2], lanes.bytes[3]};
#endif
}

QUINCE_INLINE Shorts Laid(Shorts ground, Shorts colour, Shorts alpha) {
    return DividedBy255(ground * (SpreadShort(255) - alpha) + colour * alpha);
}

// The ground's alpha stays, since nothing is laid over it.
QUINCE_INLINE Words LaidOver(Words ground, Words colours, Words alphas) {
    const Fields below = FieldsOf(ground), above = FieldsOf(colours);
    return PixelsOf({Laid(below.even, above.even, InBoth(alphas)), Laid(below.odd, above.odd, (Shorts)alphas)});
}

void StampRow(const std::uint8_t* base, const std::uint8_t* processed, double weight, const std::uint8_t* alphas,
              int count, std::uint8_t* out) {
    const Weights weights = {Doubles{} + weight, Doubles{} + weight};
    ForGroups(
        count, [&](int i, int here) __attribute__((always_inline)) {
            const LaneBytes disc = LaneBytes::Load(alphas + i, here);
            if (disc.AllZero()) return;
            const Words mixed = MixedColours(LoadGroup(base, i, here), LoadGroup(processed, i, here), weights);
            StoreGroup(out, i, here, LaidOver(LoadGroup(out, i, here), mixed, Widened(disc)));
        });
}

void CoverRow(std::uint8_t level, const std::uint8_t* alphas, int count, std::uint8_t* mask) {
    // Bytes as they come are as good as pixels: what is laid over each has an alpha of its own.
    constexpr int wide = Lanes * 4;
    const Shorts colour = SpreadShort(level);
    const auto laid = [&](Words below, Words disc) __attribute__((always_inline)) {
        const Fields ground = FieldsOf(below), alpha = FieldsOf(disc);
        return PixelsOf({Laid(ground.even, colour, alpha.even), Laid(ground.odd, colour, alpha.odd)});
    };
    int i = 0;
    for (; i + wide <= count; i += wide) StoreWords(mask + i, laid(LoadWords(mask + i), LoadWords(alphas + i)));
    Words below = {}, disc = {};
    __builtin_memcpy(&below, mask + i, std::size_t(count - i));
    __builtin_memcpy(&disc, alphas + i, std::size_t(count - i));
    below = laid(below, disc);
    __builtin_memcpy(mask + i, &below, std::size_t(count - i));
}

QUINCE_INLINE void MixGroup(const std::uint8_t* base, const std::uint8_t* processed, Words mask, double scale, int i,
                            int here, std::uint8_t* out) {
    const Doubles factor = Doubles{} + scale;
    const Weights weights = {LowerHalf((Ints)mask) * factor, UpperHalf((Ints)mask) * factor};
    const Words below = LoadGroup(base, i, here);
    StoreGroup(out, i, here, (below & 0xFF000000u) | MixedColours(below, LoadGroup(processed, i, here), weights));
}

void MixRow(const std::uint8_t* base, const std::uint8_t* processed, const std::uint8_t* mask, double scale, int count,
            std::uint8_t* out) {
    ForGroups(
        count, [&](int i, int here) __attribute__((always_inline)) {
            const LaneBytes painted = LaneBytes::Load(mask + i, here);
            if (!painted.AllZero()) MixGroup(base, processed, Widened(painted), scale, i, here, out);
        });
}

QUINCE_INLINE bool AnySet(Words v) {
#if defined(__AVX512F__)
    return _mm512_test_epi32_mask((__m512i)v, (__m512i)v) != 0;
#elif defined(__AVX2__)
    return !_mm256_testz_si256((__m256i)v, (__m256i)v);
#else
    return _mm_movemask_epi8(_mm_cmpeq_epi8((__m128i)v, _mm_setzero_si128())) != 0xFFFF;
#endif
}

void MixRowByGrey(const std::uint8_t* base, const std::uint8_t* processed, const std::uint8_t* mask, double scale,
                  int count, std::uint8_t* out) {
    ForGroups(
        count, [&](int i, int here) __attribute__((always_inline)) {
            const Words grey = LoadGroup(mask, i, here) & 255u;
            if (AnySet(grey)) MixGroup(base, processed, grey, scale, i, here, out);
        });
}

}  // namespace

extern const BrushKernels QUINCE_KERNEL_TABLE;
const BrushKernels QUINCE_KERNEL_TABLE = {QUINCE_KERNEL_NAME, StampRow, CoverRow, MixRow, MixRowByGrey};
