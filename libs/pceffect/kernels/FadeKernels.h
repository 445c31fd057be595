// SPDX-License-Identifier: GPL-3.0-or-later
// The mix of two pictures.
#pragma once

#include "EffectKernels.h"
#include "Shorts.h"

namespace {

QUINCE_INLINE std::uint8_t Faded(int target, int other, int weight) {
    return static_cast<std::uint8_t>(target + (((other - target) * weight + (1 << 19)) >> 20));
}

void FadeRow(std::uint8_t* target, const std::uint8_t* other, std::size_t bytes, int weight) {
    // difference * weight with a weight of 21 bits from products of 16: 64 x difference with its upper part,
    // difference with its lower.
    const Shorts pair = (Shorts)(Words{} + (unsigned(weight >> 6) << 16 | unsigned(weight & 63)));
    const Register zero = (Register)Words{};
    const auto half = [&](Shorts to, Shorts from) __attribute__((always_inline)) {
        const Shorts way = from - to, more = way << 6;
        const Words low = PairProducts((Shorts)QUINCE_WIDE(unpacklo_epi16)((Register)way, (Register)more), pair);
        const Words high = PairProducts((Shorts)QUINCE_WIDE(unpackhi_epi16)((Register)way, (Register)more), pair);
        const Ints lowStep = (Ints)(low + (1u << 19)) >> 20, highStep = (Ints)(high + (1u << 19)) >> 20;
        return to + (Shorts)QUINCE_WIDE(packs_epi32)((Register)lowStep, (Register)highStep);
    };
    std::size_t i = 0;
    for (; i + Lanes * 4 <= bytes; i += Lanes * 4) {
        const Register to = (Register)LoadWords(target + i), from = (Register)LoadWords(other + i);
        const Shorts low =
            half((Shorts)QUINCE_WIDE(unpacklo_epi8)(to, zero), (Shorts)QUINCE_WIDE(unpacklo_epi8)(from, zero));
        const Shorts high =
            half((Shorts)QUINCE_WIDE(unpackhi_epi8)(to, zero), (Shorts)QUINCE_WIDE(unpackhi_epi8)(from, zero));
        StoreWords(target + i, PackBytes(low, high));
    }
    for (; i < bytes; ++i) target[i] = Faded(target[i], other[i], weight);
}

}  // namespace
