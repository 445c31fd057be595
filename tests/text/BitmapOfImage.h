// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstring>
#include <QtGui/QImage>

#include "Bitmap.h"

// A copy of an image's pixels.
inline Bitmap BitmapOfImage(const QImage& image) {
    Bitmap bitmap = Bitmap::Uninitialised(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(bitmap.MutablePixels() + y * bitmap.Stride(), image.constScanLine(y),
                    static_cast<std::size_t>(bitmap.Stride()));
    return bitmap;
}
