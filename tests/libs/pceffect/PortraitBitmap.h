// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"
#include "Portrait.h"

// The sample portrait as a bitmap.
inline Bitmap PortraitBitmap(int width, std::uint32_t skin = PortraitSkin) {
    const PortraitPixels painted = PaintPortrait(width, skin);
    Bitmap bitmap(painted.width, painted.height);
    std::uint8_t* to = bitmap.MutablePixels();
    for (std::size_t i = 0; i < painted.rgb.size(); i += 3, to += 4) {
        for (int c = 0; c < 3; ++c) to[2 - c] = painted.rgb[i + c];
        to[3] = 255;
    }
    return bitmap;
}
