// SPDX-License-Identifier: GPL-3.0-or-later
// Reading of tone curves, several lanes at once.
#pragma once

#include "Kernels.h"
#include "Lanes.h"

namespace {

// Looks up a curve at two levels of each lane at once. WithRise asks for the way to the next level too.
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
QUINCE_INLINE CurvePair ReadCurve(const PointCurve& curve, Ints low, Ints high) {
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
QUINCE_INLINE CurvePair ReadCurve(const PointCurve& curve, Ints low, Ints high) {
    const Words atLow = Gather(curve.both, low), atHigh = Gather(curve.both, high);
    CurvePair pair = {ToFloats((Ints)(atLow >> 16)), ToFloats((Ints)(atHigh >> 16)), Floats{}, Floats{}};
    if (WithRise) {
        pair.riseLow = ToFloats((Ints)(atLow & 65535u));
        pair.riseHigh = ToFloats((Ints)(atHigh & 65535u));
    }
    return pair;
}
#endif

}  // namespace
