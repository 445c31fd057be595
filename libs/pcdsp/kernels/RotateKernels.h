// SPDX-License-Identifier: GPL-3.0-or-later
// The inner loops of the free rotation. The opaque one is in whole numbers: the same bytes from every instruction set.
#pragma once

#include "Kernels.h"
#include "Lanes.h"

namespace {

constexpr int AcrossShift = 14 - 6;  // weights in 1/16384 to 1/64 level
constexpr int DownShift = 14 + 6;    // to whole levels

// One result pixel: where its first tap lies, and its weights.
struct RotateSample {
    const std::uint8_t* first;
    const std::int16_t* across;
    const std::int16_t* down;
};

QUINCE_INLINE RotateSample SampleAt(const RotateRun& run, std::int64_t x, std::int64_t y) {
    return {run.pixels + (y >> 32) * run.stride + (x >> 32) * 4, run.weights->across + 4 * (std::uint32_t(x) >> 24),
            run.weights->down + 16 * (std::uint32_t(y) >> 24)};
}

// The four channels in 1/2^20 level. The taps are first summed across the row, two rows to a register or more, then
// down: the low halves of `pairs` hold rows 0 and 1 and the high halves rows 2 and 3.
#if defined(__AVX512F__)
QUINCE_INLINE __m128i SumTaps(const RotateSample& at, std::ptrdiff_t stride, __m512i& all) {
    const auto row = [&](int n) __attribute__((always_inline)) {
        return _mm_loadu_si128((const __m128i*)(at.first + n * stride));
    };
    __m512i rows = _mm512_castsi128_si512(row(0));
    rows = _mm512_inserti32x4(rows, row(1), 1);
    rows = _mm512_inserti32x4(rows, row(2), 2);
    rows = _mm512_inserti32x4(rows, row(3), 3);
    all = _mm512_and_si512(all, rows);
    const __m512i mixed = _mm512_shuffle_epi8(
        rows, _mm512_broadcast_i32x4(_mm_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15)));
    const __m512i zero = _mm512_setzero_si512();
    int first, second;
    __builtin_memcpy(&first, at.across, 4);
    __builtin_memcpy(&second, at.across + 2, 4);
    const __m512i sum = _mm512_add_epi32(
        _mm512_madd_epi16(_mm512_unpacklo_epi8(mixed, zero), _mm512_set1_epi32(first)),
        _mm512_add_epi32(_mm512_madd_epi16(_mm512_unpackhi_epi8(mixed, zero), _mm512_set1_epi32(second)),
                         _mm512_set1_epi32(1 << (AcrossShift - 1))));
    const __m256i upper = _mm512_castsi512_si256(sum), lower = _mm512_extracti64x4_epi64(sum, 1);
    const __m256i pairs =
        _mm256_blend_epi16(_mm256_srli_epi32(upper, AcrossShift), _mm256_slli_epi32(lower, 16 - AcrossShift), 0xAA);
    const __m256i both = _mm256_madd_epi16(pairs, _mm256_loadu_si256((const __m256i*)at.down));
    return _mm_add_epi32(_mm256_castsi256_si128(both), _mm256_extracti128_si256(both, 1));
}
typedef __m512i AllBytes;
QUINCE_INLINE AllBytes NoBytes() {
    return _mm512_set1_epi32(-1);
}
#elif defined(__AVX2__)
QUINCE_INLINE __m256i SumAcross(const std::uint8_t* row, std::ptrdiff_t stride, __m256i first, __m256i second,
                                __m256i& all) {
    const __m256i rows = _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128((const __m128i*)row)),
                                                 _mm_loadu_si128((const __m128i*)(row + stride)), 1);
    all = _mm256_and_si256(all, rows);
    const __m256i mixed =
        _mm256_shuffle_epi8(rows, _mm256_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15, 0, 4, 1, 5, 2,
                                                   6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15));
    const __m256i zero = _mm256_setzero_si256();
    return _mm256_add_epi32(_mm256_madd_epi16(_mm256_unpacklo_epi8(mixed, zero), first),
                            _mm256_add_epi32(_mm256_madd_epi16(_mm256_unpackhi_epi8(mixed, zero), second),
                                             _mm256_set1_epi32(1 << (AcrossShift - 1))));
}
QUINCE_INLINE __m128i SumTaps(const RotateSample& at, std::ptrdiff_t stride, __m256i& all) {
    int two[2];
    __builtin_memcpy(two, at.across, 8);
    const __m256i first = _mm256_set1_epi32(two[0]), second = _mm256_set1_epi32(two[1]);
    const __m256i upper = SumAcross(at.first, stride, first, second, all);
    const __m256i lower = SumAcross(at.first + 2 * stride, stride, first, second, all);
    const __m256i pairs =
        _mm256_blend_epi16(_mm256_srli_epi32(upper, AcrossShift), _mm256_slli_epi32(lower, 16 - AcrossShift), 0xAA);
    const __m256i both = _mm256_madd_epi16(pairs, _mm256_loadu_si256((const __m256i*)at.down));
    return _mm_add_epi32(_mm256_castsi256_si128(both), _mm256_extracti128_si256(both, 1));
}
typedef __m256i AllBytes;
QUINCE_INLINE AllBytes NoBytes() {
    return _mm256_set1_epi32(-1);
}
#else
QUINCE_INLINE __m128i SumAcross(const std::uint8_t* row, __m128i first, __m128i second, __m128i& all) {
    const __m128i pixels = _mm_loadu_si128((const __m128i*)row);
    all = _mm_and_si128(all, pixels);
    const __m128i next = _mm_srli_si128(pixels, 4), zero = _mm_setzero_si128();
    const __m128i low = _mm_unpacklo_epi8(_mm_unpacklo_epi8(pixels, next), zero);
    const __m128i high = _mm_unpacklo_epi8(_mm_unpackhi_epi8(pixels, next), zero);
    return _mm_add_epi32(_mm_madd_epi16(low, first),
                         _mm_add_epi32(_mm_madd_epi16(high, second), _mm_set1_epi32(1 << (AcrossShift - 1))));
}
// The upper row's sums in the even words, the lower row's in the odd ones.
QUINCE_INLINE __m128i Interleave(__m128i upper, __m128i lower) {
    const __m128i even = _mm_set1_epi32(0xFFFF);
    return _mm_or_si128(_mm_and_si128(_mm_srli_epi32(upper, AcrossShift), even),
                        _mm_andnot_si128(even, _mm_slli_epi32(lower, 16 - AcrossShift)));
}
QUINCE_INLINE __m128i SumTaps(const RotateSample& at, std::ptrdiff_t stride, __m128i& all) {
    int two[2];
    __builtin_memcpy(two, at.across, 8);
    const __m128i first = _mm_set1_epi32(two[0]), second = _mm_set1_epi32(two[1]);
    const auto row = [&](int n) __attribute__((always_inline)) {
        return SumAcross(at.first + n * stride, first, second, all);
    };
    const __m128i* down = (const __m128i*)at.down;
    return _mm_add_epi32(_mm_madd_epi16(Interleave(row(0), row(2)), _mm_loadu_si128(down)),
                         _mm_madd_epi16(Interleave(row(1), row(3)), _mm_loadu_si128(down + 1)));
}
typedef __m128i AllBytes;
QUINCE_INLINE AllBytes NoBytes() {
    return _mm_set1_epi32(-1);
}
#endif

QUINCE_INLINE __m128i ToLevels(__m128i sum) {
    return _mm_srai_epi32(_mm_add_epi32(sum, _mm_set1_epi32(1 << (DownShift - 1))), DownShift);
}

std::uint32_t RotateOpaque(const RotateRun& run, int count, std::uint8_t* out) {
    AllBytes all = NoBytes();
    std::int64_t x = run.x, y = run.y;
    const auto next = [&]() __attribute__((always_inline)) {
        const __m128i levels = ToLevels(SumTaps(SampleAt(run, x, y), run.stride, all));
        x += run.stepX;
        y += run.stepY;
        return levels;
    };
    int i = 0;
    for (; i + 4 <= count; i += 4, out += 16) {
        const __m128i a = next(), b = next(), c = next(), d = next();
        _mm_storeu_si128((__m128i*)out, _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d)));
    }
    for (; i < count; ++i, out += 4) {
        const __m128i words = _mm_packs_epi32(next(), _mm_setzero_si128());
        const int pixel = _mm_cvtsi128_si32(_mm_packus_epi16(words, words));
        __builtin_memcpy(out, &pixel, 4);
    }
    std::uint32_t words[sizeof all / 4], result = 0xFFFFFFFFu;
    __builtin_memcpy(words, &all, sizeof words);
    for (const std::uint32_t word : words) result &= word;
    return result;
}

typedef float Quad __attribute__((vector_size(16)));

// Colours times alpha, and alpha.
QUINCE_INLINE Quad ByAlpha(const std::uint8_t* pixel) {
    return Quad{float(pixel[0]), float(pixel[1]), float(pixel[2]), 1.0f} * float(pixel[3]);
}

QUINCE_INLINE std::uint8_t ToLevel(float v) {
    return static_cast<std::uint8_t>((v < 0.0f ? 0.0f : v > 255.0f ? 255.0f : v) + 0.5f);
}

void RotateTranslucent(const RotateRun& run, int count, std::uint8_t* out) {
    std::int64_t x = run.x, y = run.y;
    for (int i = 0; i < count; ++i, out += 4, x += run.stepX, y += run.stepY) {
        const RotateSample at = SampleAt(run, x, y);
        // Rows 0, 2, 1, 3 as the table has them.
        const int down[4] = {at.down[0], at.down[8], at.down[1], at.down[9]};
        Quad sum = {};
        for (int row = 0; row < 4; ++row) {
            const std::uint8_t* in = at.first + row * run.stride;
            Quad across = {};
            for (int column = 0; column < 4; ++column) across += ByAlpha(in + 4 * column) * float(at.across[column]);
            sum += across * float(down[row]);
        }
        const float alpha = sum[3] / (16384.0f * 16384.0f);
        const bool seen = alpha >= 0.5f;
        for (int c = 0; c < 3; ++c) out[c] = seen ? ToLevel(sum[c] / sum[3]) : 255;
        out[3] = seen ? ToLevel(alpha) : 0;
    }
}

}  // namespace
