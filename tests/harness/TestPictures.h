// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "Bitmap.h"

// Pictures that tests make for themselves; the same arguments give the same bytes on every machine.
namespace TestPictures {

// Grey from black at the left to white at the right.
Bitmap Ramp(int width, int height);
// Squares of `side` pixels in two colours (0xAARRGGBB).
Bitmap Checker(int width, int height, int side, std::uint32_t first, std::uint32_t second);
// Independent random bytes in every channel, alpha too unless `opaque`.
Bitmap Noise(int width, int height, std::uint32_t seed, bool opaque = true);
// A head of skin colour with eyes and a mouth on a soft background, with fine texture: smooth enough to stand for a
// photograph where differences of colour are judged.
Bitmap Face(int width, int height, std::uint32_t skin = 0xFFD9A184, std::uint32_t seed = 1);
// One colour.
Bitmap Plain(int width, int height, std::uint32_t argb);

// The largest difference of any byte of two bitmaps of one size; 256 when the sizes differ.
int LargestDifference(const Bitmap& a, const Bitmap& b);
// Pixel as 0xAARRGGBB.
std::uint32_t PixelAt(const Bitmap& bitmap, int x, int y);

}  // namespace TestPictures
