// SPDX-License-Identifier: GPL-3.0-or-later
// The two passes of the resampler, in whole numbers: the same bytes from every instruction set.
#pragma once

#include "Kernels.h"
#include "Lanes.h"

namespace {

constexpr int RowShift = 14 - 6;     // weights in 1/16384 to 1/64 level
constexpr int ColumnShift = 14 + 6;  // to whole levels

// A register of bytes with the few operations of the vertical pass. Unpacking works inside halves of 16 bytes.
#if defined(__AVX512BW__)
struct Wide {
    static constexpr int Bytes = 64;
    typedef __m512i Type;
    QUINCE_INLINE Type Load(const std::uint8_t* p) { return _mm512_loadu_si512(p); }
    QUINCE_INLINE Type Pair(std::int16_t a, std::int16_t b) {
        return _mm512_set1_epi32((int)((unsigned)(std::uint16_t)a | (unsigned)(std::uint16_t)b << 16));
    }
    QUINCE_INLINE Type Zero() { return _mm512_setzero_si512(); }
    QUINCE_INLINE Type Number(int v) { return _mm512_set1_epi32(v); }
    QUINCE_INLINE Type And(Type a, Type b) { return _mm512_and_si512(a, b); }
    QUINCE_INLINE Type Add(Type a, Type b) { return _mm512_add_epi32(a, b); }
    QUINCE_INLINE Type MulAdd(Type a, Type b) { return _mm512_madd_epi16(a, b); }
    QUINCE_INLINE Type LowBytes(Type a, Type b) { return _mm512_unpacklo_epi8(a, b); }
    QUINCE_INLINE Type HighBytes(Type a, Type b) { return _mm512_unpackhi_epi8(a, b); }
    QUINCE_INLINE Type Narrow(Type a, Type b) {
        return _mm512_packs_epi32(_mm512_srai_epi32(a, RowShift), _mm512_srai_epi32(b, RowShift));
    }
    QUINCE_INLINE void Store(std::int16_t* out, Type first, Type second) {
        const Type low = _mm512_setr_epi64(0, 1, 8, 9, 2, 3, 10, 11),
                   high = _mm512_setr_epi64(4, 5, 12, 13, 6, 7, 14, 15);
        _mm512_storeu_si512(out, _mm512_permutex2var_epi64(first, low, second));
        _mm512_storeu_si512(out + 32, _mm512_permutex2var_epi64(first, high, second));
    }
};
#elif defined(__AVX2__)
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

// Two pixels of `in` by their two weights, added to the sums of the four channels.
QUINCE_INLINE __m128i AddTwo(__m128i sum, const std::int16_t* in, const std::int16_t* weights) {
    const __m128i two = _mm_loadu_si128((const __m128i*)in);
    int pair;
    __builtin_memcpy(&pair, weights, sizeof pair);
    const __m128i mixed = _mm_unpacklo_epi16(two, _mm_unpackhi_epi64(two, two));
    return _mm_add_epi32(sum, _mm_madd_epi16(mixed, _mm_set1_epi32(pair)));
}

#if defined(__AVX2__)
// The sums over the first taps, four at a time; `t` says how many they were.
QUINCE_INLINE __m128i AddFours(const std::int16_t* in, const std::int16_t* weights, int taps, int& t) {
    const __m256i mix = _mm256_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15, 0, 1, 8, 9, 2, 3, 10, 11,
                                         4, 5, 12, 13, 6, 7, 14, 15);
    const __m256i spread = _mm256_setr_epi8(0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3, 4, 5, 6, 7, 4, 5, 6, 7, 4,
                                            5, 6, 7, 4, 5, 6, 7);
    __m256i sum = _mm256_setzero_si256();
    for (t = 0; t + 4 <= taps; t += 4) {
        long long four;
        __builtin_memcpy(&four, weights + t, sizeof four);
        const __m256i pixels = _mm256_shuffle_epi8(_mm256_loadu_si256((const __m256i*)(in + 4 * t)), mix);
        sum = _mm256_add_epi32(sum, _mm256_madd_epi16(pixels, _mm256_shuffle_epi8(_mm256_set1_epi64x(four), spread)));
    }
    return _mm_add_epi32(_mm256_castsi256_si128(sum), _mm256_extracti128_si256(sum, 1));
}
#else
QUINCE_INLINE __m128i AddFours(const std::int16_t*, const std::int16_t*, int, int& t) {
    t = 0;
    return _mm_setzero_si128();
}
#endif

// Four result pixels of four taps each: enlarging does nothing else, and reducing to a third. The two products of each
// channel of a pixel stand in two blocks of 16 bytes.
#if defined(__AVX512BW__)
QUINCE_INLINE void SumFourByFour(const std::int16_t* in, const int* starts, const std::int16_t* weights,
                                 std::uint8_t* out) {
    const __m512i mix = _mm512_broadcast_i32x4(_mm_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15));
    const __m512i first = _mm512_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3);
    const __m512i pairs = _mm512_castsi256_si512(_mm256_loadu_si256((const __m256i*)weights));
    const auto two = [&](int i, __m512i which) __attribute__((always_inline)) {
        const __m256i a = _mm256_loadu_si256((const __m256i*)(in + std::ptrdiff_t{4} * starts[i]));
        const __m256i b = _mm256_loadu_si256((const __m256i*)(in + std::ptrdiff_t{4} * starts[i + 1]));
        const __m512i pixels = _mm512_shuffle_epi8(_mm512_inserti64x4(_mm512_castsi256_si512(a), b, 1), mix);
        return _mm512_madd_epi16(pixels, _mm512_permutexvar_epi32(which, pairs));
    };
    const __m512i low = two(0, first), high = two(2, _mm512_add_epi32(first, _mm512_set1_epi32(4)));
    const __m512i sum = _mm512_add_epi32(_mm512_shuffle_i32x4(low, high, 0x88), _mm512_shuffle_i32x4(low, high, 0xDD));
    const __m512i levels =
        _mm512_srai_epi32(_mm512_add_epi32(sum, _mm512_set1_epi32(1 << (ColumnShift - 1))), ColumnShift);
    _mm_storeu_si128((__m128i*)out, _mm512_cvtusepi32_epi8(_mm512_max_epi32(levels, _mm512_setzero_si512())));
}
#elif defined(__AVX2__)
QUINCE_INLINE void SumFourByFour(const std::int16_t* in, const int* starts, const std::int16_t* weights,
                                 std::uint8_t* out) {
    const __m256i mix =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15));
    const __m256i spread = _mm256_setr_epi8(0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3, 4, 5, 6, 7, 4, 5, 6, 7, 4,
                                            5, 6, 7, 4, 5, 6, 7);
    const auto one = [&](int i) __attribute__((always_inline)) {
        long long four;
        __builtin_memcpy(&four, weights + 4 * i, sizeof four);
        const __m256i pixels = _mm256_loadu_si256((const __m256i*)(in + std::ptrdiff_t{4} * starts[i]));
        return _mm256_madd_epi16(_mm256_shuffle_epi8(pixels, mix),
                                 _mm256_shuffle_epi8(_mm256_set1_epi64x(four), spread));
    };
    const auto two = [&](int i) __attribute__((always_inline)) {
        const __m256i a = one(i), b = one(i + 1);
        const __m256i sum =
            _mm256_add_epi32(_mm256_permute2x128_si256(a, b, 0x20), _mm256_permute2x128_si256(a, b, 0x31));
        return _mm256_srai_epi32(_mm256_add_epi32(sum, _mm256_set1_epi32(1 << (ColumnShift - 1))), ColumnShift);
    };
    const __m256i words = _mm256_packs_epi32(two(0), two(2)), bytes = _mm256_packus_epi16(words, words);
    _mm_storeu_si128((__m128i*)out,
                     _mm_unpacklo_epi32(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1)));
}
#else
QUINCE_INLINE void SumFourByFour(const std::int16_t* in, const int* starts, const std::int16_t* weights,
                                 std::uint8_t* out) {
    const auto one = [&](int i) __attribute__((always_inline)) {
        const std::int16_t* from = in + std::ptrdiff_t{4} * starts[i];
        const __m128i round = _mm_set1_epi32(1 << (ColumnShift - 1));
        const __m128i sum = AddTwo(AddTwo(round, from, weights + 4 * i), from + 8, weights + 4 * i + 2);
        return _mm_srai_epi32(sum, ColumnShift);
    };
    const __m128i low = _mm_packs_epi32(one(0), one(1)), high = _mm_packs_epi32(one(2), one(3));
    _mm_storeu_si128((__m128i*)out, _mm_packus_epi16(low, high));
}
#endif

void SumColumns(const std::int16_t* in, const int* starts, const std::int16_t* weights, int taps, int count,
                std::uint8_t* out) {
    int i = 0;
    for (; taps == 4 && i + 4 <= count; i += 4, weights += 16)
        SumFourByFour(in, starts + i, weights, out + std::ptrdiff_t{4} * i);
    for (; i < count; ++i, weights += taps) {
        const std::int16_t* from = in + std::ptrdiff_t{4} * starts[i];
        int t;
        __m128i sum = _mm_add_epi32(AddFours(from, weights, taps, t), _mm_set1_epi32(1 << (ColumnShift - 1)));
        for (; t < taps; t += 2) sum = AddTwo(sum, from + 4 * t, weights + t);
        const __m128i levels = _mm_packs_epi32(_mm_srai_epi32(sum, ColumnShift), sum);
        const int pixel = _mm_cvtsi128_si32(_mm_packus_epi16(levels, levels));
        __builtin_memcpy(out + std::ptrdiff_t{4} * i, &pixel, 4);
    }
}

typedef int IntQuad __attribute__((vector_size(16)));
typedef double DoubleQuad __attribute__((vector_size(32)));

// The sums of both passes are whole numbers below 2^53, so that no instruction set rounds them.
void SumRowsByAlpha(const std::uint8_t* const* rows, const std::int16_t* weights, int taps, int count, int* out) {
    for (int x = 0; x < count; ++x, out += 4) {
        IntQuad sum = {};
        for (int t = 0; t < taps; ++t) {
            const std::uint8_t* in = rows[t] + 4 * x;
            if (in[3] != 0) sum += IntQuad{in[0], in[1], in[2], 1} * (in[3] * weights[t]);
        }
        __builtin_memcpy(out, &sum, sizeof sum);
    }
}

void SumColumnsByAlpha(const int* in, const int* starts, const std::int16_t* weights, int taps, int count,
                       std::uint8_t* out) {
    const auto level = [](double v) __attribute__((always_inline)) {
        return static_cast<std::uint8_t>((v < 0.0 ? 0.0 : v > 255.0 ? 255.0 : v) + 0.5);
    };
    for (int i = 0; i < count; ++i, weights += taps, out += 4) {
        const int* from = in + std::ptrdiff_t{4} * starts[i];
        DoubleQuad sum = {};
        for (int t = 0; t < taps; ++t) {
            IntQuad pixel;
            __builtin_memcpy(&pixel, from + 4 * t, sizeof pixel);
            sum += __builtin_convertvector(pixel, DoubleQuad) * double(weights[t]);
        }
        const double alpha = sum[3] / (16384.0 * 16384.0);
        const bool seen = alpha > 1e-4;
        for (int c = 0; c < 3; ++c) out[c] = seen ? level(sum[c] / sum[3]) : 0;
        out[3] = level(alpha);
    }
}

}  // namespace
