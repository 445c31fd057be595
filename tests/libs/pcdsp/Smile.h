// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>

#include "TestPictures.h"

// A mouth that shows its teeth on a patch of skin, for retouches that look for such things. The mouth is in the middle;
// its teeth reach from 0.46 to 0.54 of the height and over the middle 0.4 of the width.
inline Bitmap Smile(int width, int height, bool opaque = true) {
    Bitmap bitmap = TestPictures::Noise(width, height, 3, opaque);
    std::uint8_t* p = bitmap.MutablePixels();
    const auto put = [](std::uint8_t* to, int r, int g, int b) {
        // What noise there was stays as grain of up to four levels.
        to[2] = static_cast<std::uint8_t>(r + to[2] % 5 - 2);
        to[1] = static_cast<std::uint8_t>(g + to[1] % 5 - 2);
        to[0] = static_cast<std::uint8_t>(b + to[0] % 5 - 2);
    };
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, p += 4) {
            const double u = (x + 0.5) / width - 0.5, v = (y + 0.5) / height - 0.5;
            if (std::abs(u) < 0.2 && std::abs(v) < 0.04)
                put(p, 226, 210, 178);
            else if (std::abs(u) < 0.26 && std::abs(v) < 0.12)
                put(p, 186, 96, 98);
            else
                put(p, 222, 176, 150);
        }
    return bitmap;
}
