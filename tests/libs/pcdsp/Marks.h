// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>

#include "PcDspTypes.h"
#include "TestPictures.h"

// Skin to repair, and marks on it.

inline constexpr int SpotColour = static_cast<int>(0xFF38EEFF);

inline void SetPixel(Bitmap& bitmap, int x, int y, int r, int g, int b, int a = 255) {
    std::uint8_t* const p = bitmap.MutablePixels() + 4 * (std::ptrdiff_t{bitmap.Width()} * y + x);
    const int levels[] = {b, g, r, a};
    for (int c = 0; c < 4; ++c) p[c] = static_cast<std::uint8_t>(std::clamp(levels[c], 0, 255));
}

// Calls body(x, y) for the pixels of a disc that lie in the bitmap.
template <class Body>
void ForDisc(const Bitmap& bitmap, double x, double y, double radius, const Body& body) {
    for (int v = 0; v < bitmap.Height(); ++v)
        for (int u = 0; u < bitmap.Width(); ++u)
            if (std::hypot(u - x, v - y) <= radius) body(u, v);
}

inline void MarkDisc(Bitmap& mask, int x, int y, int radius) {
    ForDisc(mask, x, y, radius, [&](int u, int v) { SetPixel(mask, u, v, 0x38, 0xEE, 0xFF); });
}

inline void MarkBox(Bitmap& mask, const PixelRect& box) {
    const PixelRect part = box.Within({0, 0, mask.Width(), mask.Height()});
    for (int y = part.top; y < part.bottom; ++y)
        for (int x = part.left; x < part.right; ++x) SetPixel(mask, x, y, 0x38, 0xEE, 0xFF);
}

// Skin with a run of light and grain of up to `grain` levels either way.
inline Bitmap Skin(int width, int height, int grain, int r = 206, int g = 158, int b = 132) {
    Bitmap bitmap = TestPictures::Noise(width, height, 11);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int noise = bitmap.Row(y)[4 * x] % (2 * grain + 1) - grain;
            const int light = 24 * x / width + 12 * y / height - 18 + noise;
            SetPixel(bitmap, x, y, r + light, g + light, b + light);
        }
    return bitmap;
}
