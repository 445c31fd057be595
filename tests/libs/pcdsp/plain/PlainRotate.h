// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"
#include "TestPictures.h"

// Turns by quarters clockwise, code % 4 times, then mirrors for codes from 4 on: pixel by pixel.
inline Bitmap PlainRotate(const Bitmap& source, int code) {
    const auto build = [](int width, int height, auto pixel) {
        Bitmap out(width, height);
        auto* words = reinterpret_cast<std::uint32_t*>(out.MutablePixels());
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) *words++ = pixel(x, y);
        return out;
    };
    Bitmap result = source;
    for (int turn = 0; turn < code % 4; ++turn) {
        const Bitmap before = result;
        const int height = before.Height();
        result = build(height, before.Width(),
                       [&](int x, int y) { return TestPictures::PixelAt(before, y, height - 1 - x); });
    }
    if (code < 4) return result;
    const Bitmap before = result;
    const int width = before.Width();
    return build(width, before.Height(), [&](int x, int y) { return TestPictures::PixelAt(before, width - 1 - x, y); });
}
