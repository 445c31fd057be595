// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// What the headers of a BMP say, whatever their kind: 12 bytes (OS/2 1, sides of 16 bits), 16 to 64 bytes (OS/2 2, cut
// where the rest is 0), 40 to 124 bytes (Windows, each field counting when the header's length reaches past it). Fields
// stand at the same place in all of them but the first; the masks of bit fields stand at byte 40, whether the header
// holds them or they follow it.
struct BmpHeader {
    enum class Packing { Plain, Runs8, Runs4, Runs24, Jpeg, Png };

    std::int64_t width = 0;
    std::int64_t height = 0;
    bool topDown = false;
    int bits = 0;  // 1, 2, 4, 8, 16, 24 or 32; without meaning for Jpeg and Png
    Packing packing = Packing::Plain;
    std::array<std::uint32_t, 4> masks = {};  // red, green, blue and alpha in a pixel of 16 or 32 bits
    std::size_t pixels = 0;                   // where the pixels start; inside the file
    std::size_t palette = 0;                  // where the palette starts, how many entries it has, and their length
    std::size_t colours = 0;
    std::size_t entryBytes = 4;
    std::size_t profile = 0;  // an embedded ICC profile, inside the file; length 0 for none
    std::size_t profileBytes = 0;

    bool Indexed() const { return packing != Packing::Runs24 && bits <= 8; }
    // Bytes from one row to the next, and of what is read of a row.
    std::uint64_t RowBytes() const { return (static_cast<std::uint64_t>(width) * bits + 31) / 32 * 4; }
    std::uint64_t UsedRowBytes() const { return (static_cast<std::uint64_t>(width) * bits + 7) / 8; }
    // Place in the picture of the row that comes `row`th in the file.
    std::int64_t PictureRow(std::int64_t row) const { return topDown ? row : height - 1 - row; }
};

// False when the file is no BMP that can be read, or its sides are no picture's. Sizes are not compared with the
// pixels' bytes.
bool ParseBmpHeader(const std::uint8_t* data, std::size_t size, BmpHeader& header);
