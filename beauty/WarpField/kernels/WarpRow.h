// SPDX-License-Identifier: GPL-3.0-or-later
// One row of a displacement step, in double precision as the formula has it. Included once by each of the
// WarpKernels*.cpp, which name the table. What is a function of the pixel is worked out for several pixels side by
// side; the two bilinear reads, whose places are anywhere, for the four numbers of one pixel side by side.
#pragma once

#include "Lanes.h"
#include "WarpKernels.h"

namespace {

constexpr int Wide = Lanes / 2;
typedef double Doubles __attribute__((vector_size(Wide * 8)));
typedef int WideInts __attribute__((vector_size(Wide * 4)));
typedef float WideFloats __attribute__((vector_size(Wide * 4)));
typedef double Two __attribute__((vector_size(16)));
// Handed on by reference: without AVX there is no register for it, and no agreed way to return one.
typedef double Four __attribute__((vector_size(32)));
typedef float FourFloats __attribute__((vector_size(16)));

// Pixels that are worked on before the next stage follows; their numbers stay in the first cache.
constexpr int Stretch = 64;

struct Places {
    alignas(64) double vx[Stretch];  // displacement of this step
    alignas(64) double vy[Stretch];
    alignas(64) int column[Stretch];  // what is read lies between this pixel and the next, each way
    alignas(64) int row[Stretch];
    alignas(64) double across[Stretch];  // how far between
    alignas(64) double down[Stretch];
    alignas(64) double fx[Stretch];  // the field as it was
    alignas(64) double fy[Stretch];
};

QUINCE_INLINE Doubles LoadDoubles(const double* from) {
    Doubles v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}
template <class Vector, class Number>
QUINCE_INLINE void Store(Number* to, Vector v) {
    __builtin_memcpy(to, &v, sizeof v);
}
QUINCE_INLINE Doubles SpreadDouble(double value) {
    return Doubles{} + value;
}
// first, first + 1, ...
QUINCE_INLINE Doubles Counted(int first) {
#if defined(__AVX512F__)
    const Doubles steps = {0, 1, 2, 3, 4, 5, 6, 7};
#elif defined(__AVX2__)
    const Doubles steps = {0, 1, 2, 3};
#else
    const Doubles steps = {0, 1};
#endif
    return steps + static_cast<double>(first);
}
// x and y in turn.
QUINCE_INLINE Floats Interleaved(WideFloats x, WideFloats y) {
#if defined(__AVX512F__)
    return __builtin_shufflevector(x, y, 0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15);
#elif defined(__AVX2__)
    return __builtin_shufflevector(x, y, 0, 4, 1, 5, 2, 6, 3, 7);
#else
    return Floats{x[0], y[0], x[1], y[1]};
#endif
}
QUINCE_INLINE Doubles ReadTable(const double* table, WideInts index) {
#if defined(__AVX512F__)
    return (Doubles)_mm512_i32gather_pd((__m256i)index, table, 8);
#elif defined(__AVX2__)
    // With a mask, since the plain form starts from an undefined register and warns of it.
    const __m256d all = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));
    return (Doubles)_mm256_mask_i32gather_pd(_mm256_setzero_pd(), table, (__m128i)index, all, 8);
#else
    return Doubles{table[index[0]], table[index[1]]};
#endif
}
QUINCE_INLINE Doubles Smaller(Doubles a, Doubles b) {
    return b < a ? b : a;
}

// The numbers of one step that do not change along a row.
struct RowPlan {
    double yi, y;
    double first, second;   // the factors of the fall-off, in their order
    double fixedX, fixedY;  // of a move
    double alongX, alongY;  // what of xi goes into x and y
    bool fades;

    RowPlan(const WarpStep& step, int row) : yi(row), y(step.y + row), first(0.1), second(step.amount) {
        fixedX = fixedY = alongX = alongY = 0.0;
        if (step.mode == 2 || step.mode > 3) {
            first = step.amount;
            second = step.mode == 2 ? 1.0 : 0.5;
        }
        switch (step.mode) {
            case 0:
                alongX = -1.0, fixedY = -yi;
                break;
            case 1:
                alongX = 1.0, fixedY = yi;
                break;
            case 2:
                fixedX = step.dx, fixedY = step.dy;
                break;
            case 4:
                fixedX = -yi, alongY = 1.0;
                break;
            default:
                fixedX = yi, alongY = -1.0;
                break;
        }
        fades = y < step.border || step.height - 1 - y < step.border;
    }
};

QUINCE_INLINE Doubles FallOffAt(const WarpStep& step, Doubles xi, double yi) {
    // Both products are whole and below 2^53, so that the quotient has the whole part of the exact one.
    const Doubles k = (xi * xi + yi * yi) * step.length / step.square;
    return ReadTable(step.fallOff, __builtin_convertvector(k, WideInts));
}

// Displacements and where the field is to be read for them. Columns are negative where that is not in the field.
QUINCE_INLINE void Displace(const WarpStep& step, const RowPlan& plan, int first, int count, Places& out) {
    const double right = step.width - 1, bottom = step.height - 1;
    const bool fades = plan.fades || step.x + first < step.border || right - (step.x + first + count - 1) < step.border;
    for (int i = 0; i < count; i += Wide) {
        const Doubles xi = Counted(first + i), p = xi + static_cast<double>(step.x);
        const Doubles f = FallOffAt(step, Smaller(xi, SpreadDouble(first + count - 1)), plan.yi);
        const Doubles d = f * plan.first * plan.second;
        Doubles vx = (xi * plan.alongX + plan.fixedX) * d, vy = (xi * plan.alongY + plan.fixedY) * d;
        if (fades) {
            const double ends = (plan.y < bottom - plan.y ? plan.y : bottom - plan.y) / step.border;
            const Doubles sides = Smaller(p, right - p) / step.border;
            const Doubles fade = Smaller(Smaller(sides, SpreadDouble(ends)), SpreadDouble(1.0));
            vx *= fade;
            vy *= fade;
        }
        const Doubles x = p + vx, y = plan.y + vy;
        const auto inside = (x >= 0.0) & (x < right) & (y >= 0.0) & (y < bottom);
        const Doubles heldX = inside ? x : Doubles{}, heldY = inside ? y : Doubles{};
        const WideInts column = __builtin_convertvector(heldX, WideInts),
                       row = __builtin_convertvector(heldY, WideInts);
        const Doubles outside = inside ? Doubles{} : SpreadDouble(-1.0);
        Store(out.vx + i, vx);
        Store(out.vy + i, vy);
        Store(out.across + i, heldX - __builtin_convertvector(column, Doubles));
        Store(out.down + i, heldY - __builtin_convertvector(row, Doubles));
        Store(out.column + i, column + __builtin_convertvector(outside, WideInts));
        Store(out.row + i, row);
    }
}

QUINCE_INLINE void FourDoubles(const float* from, Four& out) {
    FourFloats v;
    __builtin_memcpy(&v, from, sizeof v);
#if defined(__AVX2__)
    out = (Four)_mm256_cvtps_pd((__m128)v);
#else
    out = Four{v[0], v[1], v[2], v[3]};
#endif
}

// The bilinear mix of two rows of two pairs each, first across, then down.
QUINCE_INLINE Two MixPairs(const float* upper, const float* lower, double across, double down) {
    Four a, b;
    FourDoubles(upper, a);
    FourDoubles(lower, b);
    const Four left = __builtin_shufflevector(a, b, 0, 1, 4, 5), right = __builtin_shufflevector(a, b, 2, 3, 6, 7);
    const Four mixed = (right - left) * across + left;
    const Two top = __builtin_shufflevector(mixed, mixed, 0, 1), bottom = __builtin_shufflevector(mixed, mixed, 2, 3);
    return (bottom - top) * down + top;
}

QUINCE_INLINE void ReadField(const WarpFieldView& field, int count, Places& places) {
    constexpr int last = WarpTileSide - 1;
    for (int i = 0; i < count; ++i) {
        const int x = places.column[i], y = places.row[i];
        Two pair{};
        if (x < 0) {
            // Outside of the field there is no displacement.
        } else if ((x & last) != last && (y & last) != last) {
            const float* const at = field.At(x, y);
            pair = MixPairs(at, at + 2 * WarpTileSide, places.across[i], places.down[i]);
        } else {
            float rows[2][4];
            for (int k = 0; k < 2; ++k) {
                __builtin_memcpy(rows[k], field.At(x, y + k), 2 * sizeof(float));
                __builtin_memcpy(rows[k] + 2, field.At(x + 1, y + k), 2 * sizeof(float));
            }
            pair = MixPairs(rows[0], rows[1], places.across[i], places.down[i]);
        }
        places.fx[i] = pair[0];
        places.fy[i] = pair[1];
    }
}

// Displacement of the step and of the field together, held so that what is read lies in the picture.
QUINCE_INLINE Doubles Held(Doubles field, Doubles step, Doubles place, double most) {
    const Doubles sum = field + step, at = place + sum;
    const Doubles above = at > most ? most - place : sum;
    return at < 0.0 ? 0.0 - place : above;
}

// Where the source is to be read for new pairs of the field, as columns and rows: negative where it can't be.
QUINCE_INLINE void FindSource(Doubles p, double q, WideFloats dx, WideFloats dy, int at, Places& out) {
    const Doubles x = __builtin_convertvector(dx, Doubles) + p, y = __builtin_convertvector(dy, Doubles) + q;
    // Towards zero; beyond the range of int the instruction gives the smallest one.
    const WideInts column = __builtin_convertvector(x, WideInts), row = __builtin_convertvector(y, WideInts);
    Store(out.across + at, x - __builtin_convertvector(column, Doubles));
    Store(out.down + at, y - __builtin_convertvector(row, Doubles));
    Store(out.column + at, column);
    Store(out.row + at, row);
}

// The new pairs of the field, and where they point to.
QUINCE_INLINE void JoinPairs(const WarpStep& step, const RowPlan& plan, int first, int count, Places& places,
                             float* pairs) {
    for (int i = 0; i < count; i += Wide) {
        const Doubles p = Counted(step.x + first + i), q = SpreadDouble(plan.y);
        const WideFloats x = __builtin_convertvector(
            Held(LoadDoubles(places.fx + i), LoadDoubles(places.vx + i), p, step.width - 1), WideFloats);
        const WideFloats y = __builtin_convertvector(
            Held(LoadDoubles(places.fy + i), LoadDoubles(places.vy + i), q, step.height - 1), WideFloats);
        FindSource(p, plan.y, x, y, i, places);
        const Floats both = Interleaved(x, y);
        if (count - i >= Wide)
            Store(pairs + std::ptrdiff_t{2} * i, both);
        else
            __builtin_memcpy(pairs + std::ptrdiff_t{2} * i, &both, std::size_t(count - i) * 2 * sizeof(float));
    }
}

// Where the pairs of `count` pixels from (x, y) on point to.
QUINCE_INLINE void FindSources(int x, int y, int count, const float* pairs, Places& places) {
    for (int i = 0; i < count; ++i) {
        places.vx[i] = pairs[2 * i];
        places.vy[i] = pairs[2 * i + 1];
    }
    for (int i = 0; i < count; i += Wide)
        FindSource(Counted(x + i), y, __builtin_convertvector(LoadDoubles(places.vx + i), WideFloats),
                   __builtin_convertvector(LoadDoubles(places.vy + i), WideFloats), i, places);
}

// The same of a removal: the field as it was, less of it.
QUINCE_INLINE void FadePairs(const WarpStep& step, const RowPlan& plan, int first, int count, Places& places,
                             float* pairs) {
    for (int i = 0; i < count; ++i) {
        const double xi = first + i;
        const auto k = static_cast<std::ptrdiff_t>((xi * xi + plan.yi * plan.yi) * step.length / step.square);
        const double rest = 1.0 - 0.5 * step.amount * step.fallOff[k];
        const float* const old = step.field.At(step.x + first + i, static_cast<int>(plan.y));
        pairs[2 * i] = static_cast<float>(rest * old[0]);
        pairs[2 * i + 1] = static_cast<float>(rest * old[1]);
    }
    FindSources(step.x + first, step.y + static_cast<int>(plan.yi), count, pairs, places);
}

// Whether a pixel and its next ones, which a bilinear read takes, lie in the picture.
QUINCE_INLINE bool IsReadable(const WarpStep& step, int column, int row) {
    return (static_cast<unsigned>(column) < static_cast<unsigned>(step.width - 1)) &
           (static_cast<unsigned>(row) < static_cast<unsigned>(step.height - 1));
}

QUINCE_INLINE void LevelsAt(const std::uint8_t* pixel, Four& out) {
    int word;
    __builtin_memcpy(&word, pixel, sizeof word);
#if defined(__AVX2__)
    out = (Four)_mm256_cvtepi32_pd(_mm_cvtepu8_epi32(_mm_cvtsi32_si128(word)));
#else
    out = Four{double(word & 255), double(word >> 8 & 255), double(word >> 16 & 255), double(word >> 24 & 255)};
#endif
}

// Whole levels, towards zero and held within a byte.
QUINCE_INLINE std::uint32_t Word(const Four& levels) {
#if defined(__AVX2__)
    const __m128i whole = _mm256_cvttpd_epi32((__m256d)levels);
#else
    const __m128i whole = _mm_setr_epi32(int(levels[0]), int(levels[1]), int(levels[2]), int(levels[3]));
#endif
    const __m128i shorts = _mm_packs_epi32(whole, whole);
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(shorts, shorts)));
}

QUINCE_INLINE void ReadSource(const WarpStep& step, int y, int first, int count, const Places& places) {
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * step.width;
    std::uint8_t* const to = step.output + y * stride + std::ptrdiff_t{4} * (step.x + first);
    for (int i = 0; i < count; ++i) {
        const int column = places.column[i], row = places.row[i];
        if (!IsReadable(step, column, row)) continue;
        const std::uint8_t* const at = step.source + row * stride + std::ptrdiff_t{4} * column;
        std::uint32_t colour, old;
        if (step.bilinear) {
            Four p00, p01, p10, p11;
            LevelsAt(at, p00);
            LevelsAt(at + 4, p01);
            LevelsAt(at + stride, p10);
            LevelsAt(at + stride + 4, p11);
            const Four top = (p01 - p00) * places.across[i] + p00, bottom = (p11 - p10) * places.across[i] + p10;
            colour = Word((bottom - top) * places.down[i] + top);
        } else {
            __builtin_memcpy(&colour, at, sizeof colour);
        }
        __builtin_memcpy(&old, to + std::ptrdiff_t{4} * i, sizeof old);
        colour = (old & 0xFF000000u) | (colour & 0x00FFFFFFu);
        __builtin_memcpy(to + std::ptrdiff_t{4} * i, &colour, sizeof colour);
    }
}

// A pixel that points to nothing keeps its colour; where that is still to be read, the pair that it had tells.
QUINCE_INLINE void ReadFormer(const WarpStep& step, int y, int first, int count, const Places& places) {
    bool all = true;
    for (int i = 0; i < count; ++i) all &= IsReadable(step, places.column[i], places.row[i]);
    if (all) return;
    for (int i = 0; i < count; ++i) {
        if (IsReadable(step, places.column[i], places.row[i])) continue;
        Places former;
        const int x = step.x + first + i;
        FindSources(x, y, 1, step.field.At(x, y), former);
        ReadSource(step, y, first + i, 1, former);
    }
}

// How many pixels of row y may be written from column x on: all but those of the last row and column.
QUINCE_INLINE int Writable(const WarpStep& step, int y, int x) {
    return y + 1 < step.height ? step.width - 1 - x : 0;
}

void WarpRow(const WarpStep& step, int yi, int first, int last, float* pairs) {
    const RowPlan plan(step, yi);
    const int y = step.y + yi, writable = first + Writable(step, y, step.x + first);
    Places places;
    for (int from = first; from <= last; from += Stretch, pairs += std::ptrdiff_t{2} * Stretch) {
        const int count = last - from + 1 < Stretch ? last - from + 1 : Stretch;
        if (step.mode == 3) {
            FadePairs(step, plan, from, count, places, pairs);
        } else {
            Displace(step, plan, from, count, places);
            ReadField(step.field, count, places);
            JoinPairs(step, plan, from, count, places, pairs);
        }
        const int shown = writable - from < count ? writable - from : count;
        if (shown <= 0) continue;
        if (step.deferred)
            ReadFormer(step, y, from, shown, places);
        else
            ReadSource(step, y, from, shown, places);
    }
}

void SampleRow(const WarpStep& step, int y, int x, int count) {
    const int writable = Writable(step, y, x), end = x + (writable < count ? writable : count);
    Places places;
    for (int from = x; from < end; from += Stretch) {
        const int here = end - from < Stretch ? end - from : Stretch;
        FindSources(from, y, here, step.field.At(from, y), places);
        ReadSource(step, y, from - step.x, here, places);
    }
}

}  // namespace

extern const WarpKernels QUINCE_KERNEL_TABLE;
const WarpKernels QUINCE_KERNEL_TABLE = {QUINCE_KERNEL_NAME, WarpRow, SampleRow};
