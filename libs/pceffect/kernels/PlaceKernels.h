// SPDX-License-Identifier: GPL-3.0-or-later
// What position does, spread from coarse nodes to pixels; and the sums that a coarse copy of a picture is made of.
#pragma once

#include "EffectKernels.h"
#include "Lanes.h"

namespace {

typedef short PlaceOfPixel __attribute__((vector_size(16)));

QUINCE_INLINE PlaceOfPixel LoadPlace(const std::int16_t* from) {
    PlaceOfPixel v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}

// Where pixel i is kept, so that LookRow needs no shuffling: the first pixels of every four of a group, then the
// second ones, and so on.
QUINCE_INLINE int PlaceSlot(int i) {
    const int inGroup = i % Lanes;
    return i - inGroup + inGroup % 4 * (Lanes / 4) + inGroup / 4;
}

void SpreadRow(const std::int16_t* nodes, int shift, int first, int count, std::int16_t* place) {
    const int twice = 2 << shift;
    // From 16 pixels on, eight in a row lie between the same two nodes.
    const int together = shift >= 4 ? 8 : 1;
    for (int i = 0; i < count; i += together) {
        const int at = 2 * (first + i) + 1 + (1 << shift);
        const std::int16_t* node = nodes + std::ptrdiff_t{PlaceNumbers} * (at >> (shift + 1));
        const PlaceOfPixel from = LoadPlace(node), way = LoadPlace(node + PlaceNumbers) - from;
        const int rest = at & (twice - 1);
        for (int j = 0; j < together; ++j) {
            const short part = static_cast<short>((rest + 2 * j) << (14 - shift));
            const PlaceOfPixel half = (PlaceOfPixel)_mm_mulhi_epi16((__m128i)way, (__m128i)(PlaceOfPixel{} + part));
            // Products are rounded down, so a falling value may come out below its next node, and below 0.
            const PlaceOfPixel value = (PlaceOfPixel)_mm_max_epi16((__m128i)(from + half + half), _mm_setzero_si128());
            __builtin_memcpy(place + std::ptrdiff_t{PlaceNumbers} * PlaceSlot(i + j), &value, sizeof value);
        }
    }
}

void SumBlocks(const std::uint8_t* pixels, int count, int shift, std::uint32_t* sums) {
    const int block = 1 << shift;
    for (int first = 0; first < count; first += block, sums += 4) {
        const int last = first + block < count ? first + block : count;
        __m128i sum = _mm_loadu_si128((const __m128i*)sums);
        const __m128i zero = _mm_setzero_si128();
        int i = first;
        for (; i + 4 <= last; i += 4) {
            const __m128i four = _mm_loadu_si128((const __m128i*)(pixels + std::ptrdiff_t{4} * i));
            const __m128i pairs = _mm_add_epi16(_mm_unpacklo_epi8(four, zero), _mm_unpackhi_epi8(four, zero));
            sum = _mm_add_epi32(sum, _mm_add_epi32(_mm_unpacklo_epi16(pairs, zero), _mm_unpackhi_epi16(pairs, zero)));
        }
        for (; i < last; ++i) {
            int pixel;
            __builtin_memcpy(&pixel, pixels + std::ptrdiff_t{4} * i, 4);
            const __m128i one = _mm_unpacklo_epi8(_mm_cvtsi32_si128(pixel), zero);
            sum = _mm_add_epi32(sum, _mm_unpacklo_epi16(one, zero));
        }
        _mm_storeu_si128((__m128i*)sums, sum);
    }
}

}  // namespace
