// SPDX-License-Identifier: GPL-3.0-or-later
// The two passes of the resampler, in whole numbers: the same bytes from every instruction set.
#pragma once

#include "Kernels.h"
#include "Lanes.h"

namespace {

constexpr int RowShift = 14 - 6;     // weights in 1/16384 to 1/64 level
constexpr int ColumnShift = 14 + 6;  // to whole levels

// A register of bytes with the few operations of the vertical pass. Unpacking works inside halves of 16 bytes.
#if defined(__AVX2__)
struct Wide {
    static constexpr int Bytes = 32;
    typedef __m256i Type;
    QUINCE_INLINE Type Load(const std::uint8_t* p) { return _mm256_loadu_si256((const __m256i*)p); }
    QUINCE_INLINE Type Pair(std::int16_t a, std::int16_t b) {
        return _mm256_set1_epi32((int)((unsigned)(std::uint16_t)a | (unsigned)(std::uint16_t)b << 16));
    }
    QUINCE_INLINE Type Zero() { return _mm256_setzero_si256(); }
    QUINCE_INLINE Type Number(int v) { return _mm256_set1_epi32(v); }
    QUINCE_INLINE Type And(Type a, Type b) { return _mm256_and_si256(a, b); }
    QUINCE_INLINE Type Add(Type a, Type b) { return _mm256_add_epi32(a, b); }
    QUINCE_INLINE Type MulAdd(Type a, Type b) { return _mm256_madd_epi16(a, b); }
    QUINCE_INLINE Type LowBytes(Type a, Type b) { return _mm256_unpacklo_epi8(a, b); }
    QUINCE_INLINE Type HighBytes(Type a, Type b) { return _mm256_unpackhi_epi8(a, b); }
    QUINCE_INLINE Type Narrow(Type a, Type b) {
        return _mm256_packs_epi32(_mm256_srai_epi32(a, RowShift), _mm256_srai_epi32(b, RowShift));
    }
    QUINCE_INLINE void Store(std::int16_t* out, Type first, Type second) {
        _mm256_storeu_si256((__m256i*)out, _mm256_permute2x128_si256(first, second, 0x20));
        _mm256_storeu_si256((__m256i*)(out + 16), _mm256_permute2x128_si256(first, second, 0x31));
    }
};
#else
struct Wide {
    static constexpr int Bytes = 16;
    typedef __m128i Type;
    QUINCE_INLINE Type Load(const std::uint8_t* p) { return _mm_loadu_si128((const __m128i*)p); }
    QUINCE_INLINE Type Pair(std::int16_t a, std::int16_t b) {
        return _mm_set1_epi32((int)((unsigned)(std::uint16_t)a | (unsigned)(std::uint16_t)b << 16));
    }
    QUINCE_INLINE Type Zero() { return _mm_setzero_si128(); }
    QUINCE_INLINE Type Number(int v) { return _mm_set1_epi32(v); }
    QUINCE_INLINE Type And(Type a, Type b) { return _mm_and_si128(a, b); }
    QUINCE_INLINE Type Add(Type a, Type b) { return _mm_add_epi32(a, b); }
    QUINCE_INLINE Type MulAdd(Type a, Type b) { return _mm_madd_epi16(a, b); }
    QUINCE_INLINE Type LowBytes(Type a, Type b) { return _mm_unpacklo_epi8(a, b); }
    QUINCE_INLINE Type HighBytes(Type a, Type b) { return _mm_unpackhi_epi8(a, b); }
    QUINCE_INLINE Type Narrow(Type a, Type b) {
        return _mm_packs_epi32(_mm_srai_epi32(a, RowShift), _mm_srai_epi32(b, RowShift));
    }
    QUINCE_INLINE void Store(std::int16_t* out, Type first, Type second) {
        _mm_storeu_si128((__m128i*)out, first);
        _mm_storeu_si128((__m128i*)(out + 8), second);
    }
};
#endif

std::uint32_t SumRows(const std::uint8_t* const* rows, const std::int16_t* weights, int taps, int bytes,
                      std::int16_t* out) {
    const Wide::Type zero = Wide::Zero();
    Wide::Type all = Wide::Number(-1);
    int x = 0;
    for (; x + Wide::Bytes <= bytes; x += Wide::Bytes) {
        Wide::Type sum[4];
        for (auto& s : sum) s = Wide::Number(1 << (RowShift - 1));
        for (int t = 0; t < taps; t += 2) {
            const Wide::Type a = Wide::Load(rows[t] + x), b = Wide::Load(rows[t + 1] + x);
            const Wide::Type pair = Wide::Pair(weights[t], weights[t + 1]);
            all = Wide::And(all, Wide::And(a, b));
            const Wide::Type low = Wide::LowBytes(a, b), high = Wide::HighBytes(a, b);
            sum[0] = Wide::Add(sum[0], Wide::MulAdd(Wide::LowBytes(low, zero), pair));
            sum[1] = Wide::Add(sum[1], Wide::MulAdd(Wide::HighBytes(low, zero), pair));
            sum[2] = Wide::Add(sum[2], Wide::MulAdd(Wide::LowBytes(high, zero), pair));
            sum[3] = Wide::Add(sum[3], Wide::MulAdd(Wide::HighBytes(high, zero), pair));
        }
        Wide::Store(out + x, Wide::Narrow(sum[0], sum[1]), Wide::Narrow(sum[2], sum[3]));
    }
    std::uint32_t words[Wide::Bytes / 4];
    __builtin_memcpy(words, &all, sizeof words);
    std::uint32_t result = 0xFFFFFFFFu;
    for (const std::uint32_t word : words) result &= word;
    for (; x < bytes; ++x) {
        int sum = 1 << (RowShift - 1);
        std::uint32_t every = 255;
        for (int t = 0; t < taps; ++t) {
            sum += weights[t] * rows[t][x];
            every &= rows[t][x];
        }
        result &= every << 8 * (x & 3) | ~(255u << 8 * (x & 3));
        out[x] = static_cast<std::int16_t>(sum >> RowShift);
    }
    return result;
}

void SumColumns(const std::int16_t* in, const int* starts, const std::int16_t* weights, int taps, int count,
                std::uint8_t* out) {
    for (int i = 0; i < count; ++i, weights += taps) {
        const std::int16_t* from = in + std::ptrdiff_t{4} * starts[i];
        __m128i sum = _mm_set1_epi32(1 << (ColumnShift - 1));
        for (int t = 0; t < taps; t += 2) {
            const __m128i two = _mm_loadu_si128((const __m128i*)(from + 4 * t));
            int pair;
            __builtin_memcpy(&pair, weights + t, sizeof pair);
            const __m128i mixed = _mm_unpacklo_epi16(two, _mm_unpackhi_epi64(two, two));
            sum = _mm_add_epi32(sum, _mm_madd_epi16(mixed, _mm_set1_epi32(pair)));
        }
        const __m128i levels = _mm_packs_epi32(_mm_srai_epi32(sum, ColumnShift), sum);
        const int pixel = _mm_cvtsi128_si32(_mm_packus_epi16(levels, levels));
        __builtin_memcpy(out + std::ptrdiff_t{4} * i, &pixel, 4);
    }
}

}  // namespace
