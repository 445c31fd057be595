// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "Bitmap.h"

// Pixels as numbers (0xAARRGGBB), for expectations that print well.
using Pixels = std::vector<std::uint32_t>;

// All pixels of a picture, row by row; none of the null bitmap.
inline Pixels Row(const Bitmap& picture) {
    const auto* first = reinterpret_cast<const std::uint32_t*>(picture.Pixels());
    return first ? Pixels(first, first + picture.ByteCount() / 4) : Pixels();
}
