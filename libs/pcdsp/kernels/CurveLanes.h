// SPDX-License-Identifier: GPL-3.0-or-later
// Reading of tone curves, several lanes at once.
#pragma once

#include "Kernels.h"
#include "Lanes.h"

namespace {

// A curve at two levels of each lane.
struct CurveEnds {
    Floats low, high;
};

// What a table holds at two levels of each lane: the value, and the way to the next level, in levels x 256.
struct CurvePair {
    Floats low, high, riseLow, riseHigh;
};

#if defined(__AVX512BW__)
// The whole table lies in eight registers, and the two indices of a lane are the two halves of a word: far quicker than
// a gather.
QUINCE_INLINE __m512i LookUp256(const std::uint16_t* table, __m512i index) {
    const auto part = [&](int n) __attribute__((always_inline)) {
        return _mm512_permutex2var_epi16(_mm512_loadu_si512(table + 64 * n), index,
                                         _mm512_loadu_si512(table + 64 * n + 32));
    };
    const __mmask32 odd = _mm512_test_epi16_mask(index, _mm512_set1_epi16(64));
    const __mmask32 upper = _mm512_test_epi16_mask(index, _mm512_set1_epi16(128));
    return _mm512_mask_blend_epi16(upper, _mm512_mask_blend_epi16(odd, part(0), part(1)),
                                   _mm512_mask_blend_epi16(odd, part(2), part(3)));
}
template <bool WithRise>
QUINCE_INLINE CurvePair ReadTable(const PointCurve& curve, Ints low, Ints high) {
    const __m512i index = (__m512i)((Words)low | (Words)high << 16);
    const Words value = (Words)LookUp256(curve.value, index);
    CurvePair pair = {ToFloats((Ints)(value & 65535u)), ToFloats((Ints)(value >> 16)), Floats{}, Floats{}};
    if (WithRise) {
        const Words rise = (Words)LookUp256(curve.rise, index);
        pair.riseLow = ToFloats((Ints)(rise & 65535u));
        pair.riseHigh = ToFloats((Ints)(rise >> 16));
    }
    return pair;
}
#else
template <bool WithRise>
QUINCE_INLINE CurvePair ReadTable(const PointCurve& curve, Ints low, Ints high) {
    const Words atLow = Gather(curve.both, low), atHigh = Gather(curve.both, high);
    CurvePair pair = {ToFloats((Ints)(atLow >> 16)), ToFloats((Ints)(atHigh >> 16)), Floats{}, Floats{}};
    if (WithRise) {
        pair.riseLow = ToFloats((Ints)(atLow & 65535u));
        pair.riseHigh = ToFloats((Ints)(atHigh & 65535u));
    }
    return pair;
}
#endif

#if defined(__AVX2__) && !defined(__AVX512F__)
// A gather of this set takes as long as the whole stage without it, so the pieces are what is read wherever they are
// good.
constexpr bool ReadsPieces = true;

QUINCE_INLINE Floats PieceAt(const CurvePieces& pieces, Floats level) {
    const __m256 place = _mm256_fmadd_ps(_mm256_set1_ps(pieces.scale), (__m256)level, _mm256_set1_ps(1.0f));
    const __m256i index = _mm256_srlv_epi32((__m256i)place, _mm256_set1_epi32(pieces.shift));
    const auto term = [&](int power) __attribute__((always_inline)) {
        return (Floats)_mm256_permutevar8x32_ps(_mm256_loadu_ps(pieces.terms[power]), index);
    };
    return term(0) + level * (term(1) + level * (term(2) + level * term(3)));
}
#else
constexpr bool ReadsPieces = false;

QUINCE_INLINE Floats PieceAt(const CurvePieces&, Floats level) {
    return level;
}
#endif

// At whole levels.
template <bool Pieces>
QUINCE_INLINE CurveEnds CurveOfBytes(const PointCurve& curve, Floats low, Floats high) {
    if (Pieces) return {PieceAt(curve.pieces, low), PieceAt(curve.pieces, high)};
    const CurvePair pair = ReadTable<false>(curve, ToInts(low), ToInts(high));
    return {pair.low * (1.0f / 256.0f), pair.high * (1.0f / 256.0f)};
}

// Between the levels, from 0 to 255.
template <bool Pieces>
QUINCE_INLINE CurveEnds CurveBetween(const PointCurve& curve, Floats low, Floats high) {
    if (Pieces) return {PieceAt(curve.pieces, low), PieceAt(curve.pieces, high)};
    const Ints lowIndex = ToInts(low), highIndex = ToInts(high);
    const CurvePair pair = ReadTable<true>(curve, lowIndex, highIndex);
    return {(pair.low + pair.riseLow * (low - ToFloats(lowIndex))) * (1.0f / 256.0f),
            (pair.high + pair.riseHigh * (high - ToFloats(highIndex))) * (1.0f / 256.0f)};
}

}  // namespace
