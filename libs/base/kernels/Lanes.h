// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers side by side, as many as the instruction set that this file is compiled for holds in one register.
//
// Everything below a folder kernels/ is compiled once per instruction set into a namespace of its own and has internal
// linkage; it includes no standard header with inline functions, since the linker could pick the copy that was compiled
// for the widest set and the program would fail on a machine without it.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace {

#if defined(__AVX512F__)
constexpr int Lanes = 16;
#elif defined(__AVX2__)
constexpr int Lanes = 8;
#else
constexpr int Lanes = 4;
#endif

typedef float Floats __attribute__((vector_size(Lanes * 4)));
typedef int Ints __attribute__((vector_size(Lanes * 4)));
typedef unsigned Words __attribute__((vector_size(Lanes * 4)));

#define QUINCE_INLINE [[gnu::always_inline]] static inline

// Loads and stores at any address.
QUINCE_INLINE Floats LoadFloats(const float* from) {
    Floats v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}
QUINCE_INLINE void StoreFloats(float* to, Floats v) {
    __builtin_memcpy(to, &v, sizeof v);
}
QUINCE_INLINE Words LoadWords(const std::uint8_t* from) {
    Words v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}
QUINCE_INLINE void StoreWords(std::uint8_t* to, Words v) {
    __builtin_memcpy(to, &v, sizeof v);
}

QUINCE_INLINE Floats Spread(float value) {
    return Floats{} + value;
}
QUINCE_INLINE Floats ToFloats(Ints v) {
    return __builtin_convertvector(v, Floats);
}
// Towards zero.
QUINCE_INLINE Ints ToInts(Floats v) {
    return __builtin_convertvector(v, Ints);
}

#if defined(__AVX512F__)
QUINCE_INLINE Floats Min(Floats a, Floats b) {
    return (Floats)_mm512_min_ps((__m512)a, (__m512)b);
}
QUINCE_INLINE Floats Max(Floats a, Floats b) {
    return (Floats)_mm512_max_ps((__m512)a, (__m512)b);
}
QUINCE_INLINE Floats Sqrt(Floats a) {
    return (Floats)_mm512_sqrt_ps((__m512)a);
}
QUINCE_INLINE Floats Gather(const float* table, Ints index) {
    return (Floats)_mm512_i32gather_ps((__m512i)index, table, 4);
}
QUINCE_INLINE Words Gather(const std::uint32_t* table, Ints index) {
    return (Words)_mm512_i32gather_epi32((__m512i)index, table, 4);
}
#elif defined(__AVX2__)
QUINCE_INLINE Floats Min(Floats a, Floats b) {
    return (Floats)_mm256_min_ps((__m256)a, (__m256)b);
}
QUINCE_INLINE Floats Max(Floats a, Floats b) {
    return (Floats)_mm256_max_ps((__m256)a, (__m256)b);
}
QUINCE_INLINE Floats Sqrt(Floats a) {
    return (Floats)_mm256_sqrt_ps((__m256)a);
}
QUINCE_INLINE Floats Gather(const float* table, Ints index) {
    return (Floats)_mm256_i32gather_ps(table, (__m256i)index, 4);
}
QUINCE_INLINE Words Gather(const std::uint32_t* table, Ints index) {
    return (Words)_mm256_i32gather_epi32((const int*)table, (__m256i)index, 4);
}
#else
QUINCE_INLINE Floats Min(Floats a, Floats b) {
    return (Floats)_mm_min_ps((__m128)a, (__m128)b);
}
QUINCE_INLINE Floats Max(Floats a, Floats b) {
    return (Floats)_mm_max_ps((__m128)a, (__m128)b);
}
QUINCE_INLINE Floats Sqrt(Floats a) {
    return (Floats)_mm_sqrt_ps((__m128)a);
}
QUINCE_INLINE Floats Gather(const float* table, Ints index) {
    return Floats{table[index[0]], table[index[1]], table[index[2]], table[index[3]]};
}
QUINCE_INLINE Words Gather(const std::uint32_t* table, Ints index) {
    return Words{table[index[0]], table[index[1]], table[index[2]], table[index[3]]};
}
#endif

// The exact instructions: a guess refined by a step of Newton's was measured slower, since the machine overlaps these.
QUINCE_INLINE Floats Inverse(Floats a) {
    return 1.0f / a;
}
// 0 for what is not above 0.
QUINCE_INLINE Floats Root(Floats a) {
    return Sqrt(Max(a, Spread(0.0f)));
}

QUINCE_INLINE Floats Max3(Floats a, Floats b, Floats c) {
    return Max(Max(a, b), c);
}
QUINCE_INLINE Floats Min3(Floats a, Floats b, Floats c) {
    return Min(Min(a, b), c);
}
QUINCE_INLINE Floats Clamp(Floats v, float low, float high) {
    return Min(Max(v, Spread(low)), Spread(high));
}
QUINCE_INLINE Floats Absolute(Floats v) {
    return Max(v, -v);
}

// Three channels of as many pixels as there are lanes, in levels 0 to 255.
struct Colours {
    Floats r, g, b;
};

QUINCE_INLINE Floats Channel(Words pixels, int shift) {
    return ToFloats((Ints)((pixels >> shift) & 255u));
}
QUINCE_INLINE Colours Unpack(Words pixels) {
    return {Channel(pixels, 16), Channel(pixels, 8), Channel(pixels, 0)};
}
// Rounds to the nearest level, holds it within 0 to 255, and keeps the alpha of `pixels`. The only place where a kernel
// rounds. Levels stay far below 2^31.
#if defined(__AVX512BW__)
QUINCE_INLINE Words Pack(const Colours& c, Words pixels) {
    const auto level = [](Floats v) __attribute__((always_inline)) {
        return (__m512i)ToInts(v + 0.5f);
    };
    const __m512i words = _mm512_packus_epi16(_mm512_packs_epi32(level(c.b), level(c.g)),
                                              _mm512_packs_epi32(level(c.r), (__m512i)(pixels >> 24)));
    return (Words)_mm512_shuffle_epi8(
        words, _mm512_broadcast_i32x4(_mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15)));
}
#elif defined(__AVX2__)
QUINCE_INLINE Words Pack(const Colours& c, Words pixels) {
    const auto level = [](Floats v) __attribute__((always_inline)) {
        return (__m256i)ToInts(v + 0.5f);
    };
    const __m256i words = _mm256_packus_epi16(_mm256_packs_epi32(level(c.b), level(c.g)),
                                              _mm256_packs_epi32(level(c.r), (__m256i)(pixels >> 24)));
    return (Words)_mm256_shuffle_epi8(
        words, _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15)));
}
#else
QUINCE_INLINE Words Pack(const Colours& c, Words pixels) {
    const auto level = [](Floats v) __attribute__((always_inline)) {
        return (Words)ToInts(Clamp(v + 0.5f, 0.0f, 255.0f));
    };
    return (pixels & 0xFF000000u) | level(c.r) << 16 | level(c.g) << 8 | level(c.b);
}
#endif

// Weights of red, green and blue in luminance (ITU-R BT.709).
constexpr float WeightR = 0.2126f, WeightG = 0.7152f, WeightB = 0.0722f;

QUINCE_INLINE Floats Weighted(const Colours& c) {
    return c.r * WeightR + c.g * WeightG + c.b * WeightB;
}

// Calls body(byte pointer, index of the first pixel) on whole groups of pixels of a row; the last ones, which do not
// fill a group, pass through a buffer, so that nothing outside the row is touched.
template <class Body>
QUINCE_INLINE void ForPixelGroups(std::uint8_t* pixels, int count, const Body& body) {
    int i = 0;
    for (; i + Lanes <= count; i += Lanes) body(pixels + std::ptrdiff_t{4} * i, i);
    if (i == count) return;
    std::uint8_t rest[Lanes * 4] = {};
    __builtin_memcpy(rest, pixels + std::ptrdiff_t{4} * i, std::size_t(count - i) * 4);
    body(rest, i);
    __builtin_memcpy(pixels + std::ptrdiff_t{4} * i, rest, std::size_t(count - i) * 4);
}

// The same for rows that are read and written apart: calls body(index of the first pixel, how many) for whole groups
// and for what is left, which it loads and stores with the two functions below.
template <class Body>
QUINCE_INLINE void ForGroups(int count, const Body& body) {
    int i = 0;
    for (; i + Lanes <= count; i += Lanes) body(i, Lanes);
    if (i < count) body(i, count - i);
}
QUINCE_INLINE Words LoadGroup(const std::uint8_t* pixels, int i, int count) {
    if (count == Lanes) return LoadWords(pixels + std::ptrdiff_t{4} * i);
    Words group = {};
    __builtin_memcpy(&group, pixels + std::ptrdiff_t{4} * i, std::size_t{4} * count);
    return group;
}
QUINCE_INLINE void StoreGroup(std::uint8_t* pixels, int i, int count, Words group) {
    __builtin_memcpy(pixels + std::ptrdiff_t{4} * i, &group, std::size_t{4} * count);
}

}  // namespace
