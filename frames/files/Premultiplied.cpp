// SPDX-License-Identifier: GPL-3.0-or-later
#include "Premultiplied.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "Rows.h"

namespace {

std::uint32_t Load(const std::uint8_t* pixel) {
    std::uint32_t word;
    std::memcpy(&word, pixel, 4);
    return word;
}

// v * factor / 255, rounded, in the first and third byte.
inline std::uint32_t Scaled(std::uint32_t v, std::uint32_t factor) {
    const std::uint32_t product = v * factor + 0x00800080u;
    return (product + (product >> 8 & 0x00FF00FFu)) >> 8 & 0x00FF00FFu;
}

inline std::uint32_t ScaledPixel(std::uint32_t pixel, std::uint32_t factor) {
    return Scaled(pixel & 0x00FF00FFu, factor) | Scaled(pixel >> 8 & 0x00FF00FFu, factor) << 8;
}

constexpr std::uint32_t Opaque = 240;

// By what each alpha brings its pixel back to full range, in 1/128.
constexpr std::array<std::uint32_t, 256> Factors = [] {
    std::array<std::uint32_t, 256> factors{};
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha) factors[alpha] = 255 * 128 / (alpha > Opaque ? alpha : Opaque);
    return factors;
}();

inline std::uint32_t Held(std::uint32_t over) {
    const std::uint32_t alpha = over >> 24;
    const std::uint32_t blue = std::min(over & 255, alpha), green = std::min(over >> 8 & 255, alpha);
    const std::uint32_t red = std::min(over >> 16 & 255, alpha);
    return alpha << 24 | red << 16 | green << 8 | blue;
}

// The pixel in full range, colours not above their alpha.
inline std::uint32_t Full(std::uint32_t over) {
    const std::uint32_t held = Held(over), factor = Factors[held >> 24];
    const auto raised = [=](std::uint32_t v) { return (v * factor + 0x00400040u) >> 7 & 0x00FF00FFu; };
    const std::uint32_t full = raised(held & 0x00FF00FFu) | raised(held >> 8 & 0x00FF00FFu) << 8;
    return held >> 24 >= Opaque ? full | 0xFF000000u : full;
}

bool AllOpaque(const std::uint8_t* pixels, int count) {
    std::uint32_t all = 0xFFFFFFFFu;
    for (int i = 0; i < count; ++i) all &= Load(pixels + std::ptrdiff_t{4} * i);
    return all >> 24 == 255;
}

// Over a translucent pixel: what both make together, divided by the alpha of both together.
std::uint32_t OverTranslucent(std::uint32_t below, std::uint32_t over) {
    const float rest = static_cast<float>(255 - (over >> 24)) * static_cast<float>(below >> 24) / 255.0f;
    const float whole = static_cast<float>(over >> 24) + rest;
    std::uint32_t result = static_cast<std::uint32_t>(std::lround(whole)) << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        const float mixed =
            static_cast<float>(over >> shift & 255) * 255.0f + static_cast<float>(below >> shift & 255) * rest;
        result |= static_cast<std::uint32_t>(std::min(255L, std::lround(mixed / whole))) << shift;
    }
    return result;
}

}  // namespace

Bitmap Premultiplied(const Bitmap& straight) {
    Bitmap result = Bitmap::Uninitialised(straight.Width(), straight.Height());
    std::uint8_t* out = result.MutablePixels();
    ForEachBand(straight.Height(), GrainOf(straight.Width()), [&](int first, int last) {
        const std::ptrdiff_t end = last * straight.Stride();
        for (std::ptrdiff_t i = first * straight.Stride(); i < end; i += 4) {
            const std::uint32_t pixel = Load(straight.Pixels() + i), alpha = pixel >> 24;
            const std::uint32_t scaled = (alpha * Opaque + 127) / 255;
            const std::uint32_t word = (ScaledPixel(pixel, scaled) & 0x00FFFFFFu) | scaled << 24;
            std::memcpy(out + i, &word, 4);
        }
    });
    return result;
}

void DrawPremultipliedOver(std::uint8_t* pixels, const std::uint8_t* over, int count) {
    const bool opaque = AllOpaque(pixels, count);
    for (int i = 0; i < count; ++i) {
        const std::ptrdiff_t at = std::ptrdiff_t{4} * i;
        const std::uint32_t above = Load(over + at);
        if (above >> 24 == 0) continue;
        const std::uint32_t full = Full(above), below = Load(pixels + at);
        const std::uint32_t word =
            opaque ? full + ScaledPixel(below, 255 - (full >> 24)) : OverTranslucent(below, full);
        std::memcpy(pixels + at, &word, 4);
    }
}
