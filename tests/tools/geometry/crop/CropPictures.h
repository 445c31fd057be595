// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPoint>

#include "TestPictures.h"

// A picture whose every pixel says where it lies; sides up to 4096.
inline Bitmap Coordinates(int width, int height) {
    Bitmap picture = Bitmap::Uninitialised(width, height);
    auto* words = reinterpret_cast<std::uint32_t*>(picture.MutablePixels());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) *words++ = 0xFF000000u | static_cast<std::uint32_t>(y << 12 | x);
    return picture;
}

// Where the pixel at (x, y) lay in the picture of Coordinates.
inline QPoint PlaceOf(const Bitmap& picture, int x, int y) {
    const std::uint32_t pixel = TestPictures::PixelAt(picture, x, y);
    return QPoint(static_cast<int>(pixel & 0xFFF), static_cast<int>(pixel >> 12 & 0xFFF));
}
