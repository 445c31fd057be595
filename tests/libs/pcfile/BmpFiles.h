// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PictureFolder.h"

// BMP files, byte by byte.

// Values of the header's compression field.
enum class BmpKind : std::uint32_t { Plain, Runs8, Runs4, Masks, Runs24, Png, AlphaMasks, Jpeg = 4 };

struct BmpFile {
    std::uint32_t headerBytes = 40;  // 12, or 16 and more
    int width = 0;
    int height = 0;  // negative: the first row of `pixels` is the top
    int bits = 24;
    BmpKind kind = BmpKind::Plain;
    std::vector<std::uint32_t> masks;    // red, green, blue, alpha; stand at byte 40, in the header or behind it
    std::vector<std::uint32_t> palette;  // 0xRRGGBB
    bool coloursCounted = true;          // the header tells how many entries there are, as far as it can
    Bytes pixels;

    Bytes Write() const;
};

// A row of values of so many bits each, filled up to a multiple of four bytes.
Bytes BmpRow(int bits, const std::vector<std::uint32_t>& values);
// The rows in the order of a file whose first row is the bottom.
Bytes BmpRowsUpwards(const std::vector<Bytes>& rowsFromTop);
Bytes BmpRowsDownwards(const std::vector<Bytes>& rowsFromTop);
