// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"
#include "Portrait.h"

// The sample portrait as a bitmap, with skin of a colour (0xRRGGBB; 0 for its own).
inline Bitmap PortraitBitmap(int width, std::uint32_t skin = 0) {
    PortraitLook look;
    look.skinColour = skin;
    const PortraitPixels painted = PaintPortrait(width, look);
    Bitmap bitmap(painted.width, painted.height);
    std::uint8_t* to = bitmap.MutablePixels();
    for (std::size_t i = 0; i < painted.rgb.size(); i += 3, to += 4) {
        for (int c = 0; c < 3; ++c) to[2 - c] = painted.rgb[i + c];
        to[3] = 255;
    }
    return bitmap;
}
