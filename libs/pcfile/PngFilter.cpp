// SPDX-License-Identifier: GPL-3.0-or-later
#include "PngFilter.h"

#include <cstdlib>
#include <cstring>

namespace {

// The loops are written so that the compiler turns them into vectors; `inline` into one function for each instruction
// set makes that happen for each.
#define QUINCE_INLINE inline __attribute__((always_inline))

// The neighbour that Paeth's predictor takes: of left, above and above-left the one nearest to left + above -
// aboveLeft.
QUINCE_INLINE std::uint8_t Paeth(int left, int above, int aboveLeft) {
    const int toLeft = std::abs(above - aboveLeft);
    const int toAbove = std::abs(left - aboveLeft);
    const int toAboveLeft = std::abs(left + above - 2 * aboveLeft);
    const int aboveOrLeft = toAbove <= toAboveLeft ? above : aboveLeft;
    return static_cast<std::uint8_t>(toLeft <= toAbove && toLeft <= toAboveLeft ? left : aboveOrLeft);
}

template <int filter>
QUINCE_INLINE void Apply(const std::uint8_t* row, const std::uint8_t* above, std::size_t count, std::size_t bpp,
                         std::uint8_t* out) {
    const std::uint8_t* left = row - bpp;
    const std::uint8_t* aboveLeft = above - bpp;
    for (std::size_t i = 0; i < count; ++i) {
        if constexpr (filter == 0) out[i] = row[i];
        if constexpr (filter == 1) out[i] = static_cast<std::uint8_t>(row[i] - left[i]);
        if constexpr (filter == 2) out[i] = static_cast<std::uint8_t>(row[i] - above[i]);
        if constexpr (filter == 3) out[i] = static_cast<std::uint8_t>(row[i] - (left[i] + above[i]) / 2);
        if constexpr (filter == 4) out[i] = static_cast<std::uint8_t>(row[i] - Paeth(left[i], above[i], aboveLeft[i]));
    }
}

QUINCE_INLINE std::uint64_t Cost(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t total = 0;
    // Short inner sums let the compiler stay with narrow lanes.
    for (std::size_t i = 0; i < count;) {
        const std::size_t end = count - i > 256 ? i + 256 : count;
        std::uint16_t part = 0;
        for (; i < end; ++i) {
            const std::uint8_t negative = static_cast<std::uint8_t>(-bytes[i]);
            part = static_cast<std::uint16_t>(part + (bytes[i] < negative ? bytes[i] : negative));
        }
        total += part;
    }
    return total;
}

template <int filter>
QUINCE_INLINE void TryFilter(const std::uint8_t* row, const std::uint8_t* above, std::size_t count, std::size_t bpp,
                             std::uint8_t* out, std::uint8_t* scratch, std::uint64_t& best) {
    Apply<filter>(row, above, count, bpp, scratch);
    const std::uint64_t cost = Cost(scratch, count);
    if (cost >= best) return;
    best = cost;
    out[0] = filter;
    std::memcpy(out + 1, scratch, count);
}

QUINCE_INLINE void ChooseFilter(const std::uint8_t* row, const std::uint8_t* above, std::size_t count, std::size_t bpp,
                                std::uint8_t* out, std::uint8_t* scratch) {
    std::uint64_t best = ~std::uint64_t{0};
    TryFilter<4>(row, above, count, bpp, out, scratch, best);
    TryFilter<1>(row, above, count, bpp, out, scratch, best);
    TryFilter<2>(row, above, count, bpp, out, scratch, best);
    TryFilter<3>(row, above, count, bpp, out, scratch, best);
    TryFilter<0>(row, above, count, bpp, out, scratch, best);
}

__attribute__((target("avx2"))) void ChooseFilterAvx2(const std::uint8_t* row, const std::uint8_t* above,
                                                      std::size_t count, std::size_t bpp, std::uint8_t* out,
                                                      std::uint8_t* scratch) {
    ChooseFilter(row, above, count, bpp, out, scratch);
}

}  // namespace

void FilterPngRow(const std::uint8_t* row, const std::uint8_t* above, std::size_t count, std::size_t pixelBytes,
                  std::uint8_t* out, std::uint8_t* scratch) {
    static const bool avx2 = __builtin_cpu_supports("avx2");
    if (avx2)
        ChooseFilterAvx2(row, above, count, pixelBytes, out, scratch);
    else
        ChooseFilter(row, above, count, pixelBytes, out, scratch);
}
