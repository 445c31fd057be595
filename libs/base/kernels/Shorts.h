// SPDX-License-Identifier: GPL-3.0-or-later
// Registers seen as 16-bit numbers. Unpacking and shuffling work inside blocks of 16 bytes.
#pragma once

#include "Lanes.h"

namespace {

typedef unsigned short Shorts __attribute__((vector_size(Lanes * 4)));
typedef short SignedShorts __attribute__((vector_size(Lanes * 4)));

#if defined(__AVX512F__)
#define QUINCE_WIDE(name) _mm512_##name
typedef __m512i Register;
#elif defined(__AVX2__)
#define QUINCE_WIDE(name) _mm256_##name
typedef __m256i Register;
#else
#define QUINCE_WIDE(name) _mm_##name
typedef __m128i Register;
#endif

QUINCE_INLINE Shorts HighProduct(Shorts a, Shorts b) {
    return (Shorts)QUINCE_WIDE(mulhi_epu16)((Register)a, (Register)b);
}
QUINCE_INLINE Shorts HighSignedProduct(Shorts a, Shorts b) {
    return (Shorts)QUINCE_WIDE(mulhi_epi16)((Register)a, (Register)b);
}
QUINCE_INLINE Shorts AddHeld(Shorts a, Shorts b) {
    return (Shorts)QUINCE_WIDE(adds_epu16)((Register)a, (Register)b);
}
QUINCE_INLINE Shorts SubtractHeld(Shorts a, Shorts b) {
    return (Shorts)QUINCE_WIDE(subs_epu16)((Register)a, (Register)b);
}
QUINCE_INLINE Shorts AddSignedHeld(Shorts a, Shorts b) {
    return (Shorts)QUINCE_WIDE(adds_epi16)((Register)a, (Register)b);
}
QUINCE_INLINE Words PairProducts(Shorts a, Shorts b) {
    return (Words)QUINCE_WIDE(madd_epi16)((Register)a, (Register)b);
}
// For b that is the same everywhere and a that is not negative.
QUINCE_INLINE Shorts Lower(Shorts a, Shorts b) {
    return a - SubtractHeld(a, b);
}
QUINCE_INLINE Shorts SpreadShort(int v) {
    return Shorts{} + static_cast<unsigned short>(v);
}
// Words 0 and 1 of each block of four, each beside its partner; and words 2 and 3.
QUINCE_INLINE Words PairLow(Words a, Words b) {
    return (Words)QUINCE_WIDE(unpacklo_epi32)((Register)a, (Register)b);
}
QUINCE_INLINE Words PairHigh(Words a, Words b) {
    return (Words)QUINCE_WIDE(unpackhi_epi32)((Register)a, (Register)b);
}
QUINCE_INLINE Shorts QuadLow(Shorts a, Shorts b) {
    return (Shorts)QUINCE_WIDE(unpacklo_epi64)((Register)a, (Register)b);
}
QUINCE_INLINE Shorts QuadHigh(Shorts a, Shorts b) {
    return (Shorts)QUINCE_WIDE(unpackhi_epi64)((Register)a, (Register)b);
}
QUINCE_INLINE Words PackBytes(Shorts low, Shorts high) {
    return (Words)QUINCE_WIDE(packus_epi16)((Register)low, (Register)high);
}
// Number `At` of each four, four times.
template <int At>
QUINCE_INLINE Shorts Repeat(Shorts v) {
    constexpr int order = At | At << 2 | At << 4 | At << 6;
#if defined(__AVX512F__) || defined(__AVX2__)
    return (Shorts)QUINCE_WIDE(shufflehi_epi16)(QUINCE_WIDE(shufflelo_epi16)((Register)v, order), order);
#else
    return (Shorts)_mm_shufflehi_epi16(_mm_shufflelo_epi16((Register)v, order), order);
#endif
}
QUINCE_INLINE Shorts LoadShorts(const std::int16_t* from) {
    Shorts v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}

// The bytes of pixels as 16-bit numbers: blue and red, green and alpha.
struct Fields {
    Shorts even, odd;
};
QUINCE_INLINE Fields FieldsOf(Words pixels) {
    return {(Shorts)(pixels & 0x00FF00FFu), (Shorts)pixels >> 8};
}
QUINCE_INLINE Words PixelsOf(const Fields& fields) {
    return (Words)(fields.even | fields.odd << 8);
}
// A number in the lower half of each word, in both.
QUINCE_INLINE Shorts InBoth(Words v) {
    return (Shorts)(v | v << 16);
}
// v / 255, rounded, for v up to 255 * 255.
QUINCE_INLINE Shorts DividedBy255(Shorts v) {
    const Shorts raised = v + SpreadShort(128);
    return (raised + (raised >> 8)) >> 8;
}

// Fetches the points of half the lanes: words 0 and 1 of each block of four of `index`, or words 2 and 3.
template <bool High>
QUINCE_INLINE Shorts FetchPoints(const std::uint16_t* points, Words index) {
    const Words wide = High ? PairHigh(index, Words{}) : PairLow(index, Words{});
#if defined(__AVX512F__)
    return (Shorts)_mm512_i64gather_epi64((Register)wide, points, 8);
#elif defined(__AVX2__)
    return (Shorts)_mm256_i64gather_epi64((const long long*)points, (Register)wide, 8);
#else
    Shorts v;
    __builtin_memcpy(&v, points + std::size_t{4} * wide[0], 8);
    __builtin_memcpy((char*)&v + 8, points + std::size_t{4} * wide[2], 8);
    return v;
#endif
}

}  // namespace
