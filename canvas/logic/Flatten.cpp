// SPDX-License-Identifier: GPL-3.0-or-later
#include "Flatten.h"

#include "Rows.h"

void FlattenOnWhite(Bitmap& picture) {
    if (picture.IsOpaque()) return;
    std::uint8_t* pixels = picture.MutablePixels();
    const std::ptrdiff_t stride = picture.Stride();
    ForEachBand(picture.Height(), GrainOf(picture.Width()), [&](int first, int last) {
        for (std::uint8_t *pixel = pixels + first * stride, *end = pixels + last * stride; pixel != end; pixel += 4) {
            const int alpha = pixel[3];
            for (int i = 0; i < 3; ++i) pixel[i] = static_cast<std::uint8_t>(255 + (pixel[i] - 255) * alpha / 255);
            pixel[3] = 255;
        }
    });
}
