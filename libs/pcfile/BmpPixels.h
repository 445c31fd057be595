// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "BmpHeader.h"

// A palette as opaque pixels (0xAARRGGBB); entries that the file lacks are black.
using BmpPalette = std::array<std::uint32_t, 256>;
BmpPalette ReadBmpPalette(const BmpHeader& header, const std::uint8_t* data, std::size_t size);

// One row of a BMP that is not in runs to 32-bit pixels. Channels of any width are spread so that 0 stays 0 and all
// ones are 255; those above 16 bits count by their upper 16. May be used by several threads.
class BmpRows {
  public:
    BmpRows(const BmpHeader& header, const BmpPalette& palette);

    // `in` has header.UsedRowBytes() bytes, `out` room for the row.
    void Convert(const std::uint8_t* in, std::uint8_t* out) const;

  private:
    // A mask's place and the level of each of its values.
    struct Channel {
        std::uint32_t mask = 0;
        int shift = 0;
        std::vector<std::uint8_t> levels;

        Channel() = default;
        Channel(std::uint32_t bits, std::uint8_t without);
        std::uint8_t Level(std::uint32_t pixel) const { return levels[(pixel & mask) >> shift]; }
    };

    void ConvertIndexed(const std::uint8_t* in, std::uint8_t* out) const;
    void ConvertMasked(const std::uint8_t* in, std::uint8_t* out) const;
    void ConvertWords(const std::uint8_t* in, std::uint8_t* out) const;

    const BmpHeader& m_header;
    const BmpPalette& m_palette;
    std::array<Channel, 4> m_channels;  // blue, green, red, alpha
    bool m_asStored = false;            // 32 bits in the order of a bitmap
};
