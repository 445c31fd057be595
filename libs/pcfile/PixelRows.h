// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

// Small moves on rows of pixels that several readers need.

// Red, green, blue, alpha to blue, green, red, alpha; `in` may be `out`.
inline void RgbaToBgra(const std::uint8_t* in, int width, std::uint8_t* out) {
    for (std::ptrdiff_t i = 0; i < std::ptrdiff_t{4} * width; i += 4) {
        const std::uint8_t red = in[i], green = in[i + 1], blue = in[i + 2], alpha = in[i + 3];
        out[i] = blue;
        out[i + 1] = green;
        out[i + 2] = red;
        out[i + 3] = alpha;
    }
}

// Red, green, blue to opaque blue, green, red, alpha.
inline void RgbToBgra(const std::uint8_t* in, int width, std::uint8_t* out) {
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        out[4 * x] = in[3 * x + 2];
        out[4 * x + 1] = in[3 * x + 1];
        out[4 * x + 2] = in[3 * x];
        out[4 * x + 3] = 255;
    }
}

// Alpha that the colours were multiplied with, taken out of them.
inline void Unpremultiply(std::uint8_t* row, int width) {
    for (std::ptrdiff_t i = 0; i < std::ptrdiff_t{4} * width; i += 4) {
        const int alpha = row[i + 3];
        if (alpha == 0 || alpha == 255) continue;
        for (int c = 0; c < 3; ++c)
            row[i + c] = static_cast<std::uint8_t>(std::min(255, (row[i + c] * 255 + alpha / 2) / alpha));
    }
}
