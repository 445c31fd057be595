// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PictureFolder.h"

// Uncompressed TIFF files, byte by byte, little-endian.
struct RawTiff {
    enum Photometric { WhiteIsZero = 0, BlackIsZero = 1, Rgb = 2, Palette = 3, Ink = 5 };
    enum Format { Unsigned = 1, Signed = 2, Float = 3 };

    std::uint32_t width = 0;
    std::uint32_t height = 1;
    std::uint32_t bits = 8;
    std::uint32_t samples = 1;
    Photometric photometric = BlackIsZero;
    Format format = Unsigned;
    bool planes = false;
    std::uint32_t tile = 0;              // side of the tiles; 0: one strip, or one for each plane
    std::vector<std::uint32_t> colours;  // of the palette: all reds, greens and blues, 16 bits each
    std::vector<Bytes> blocks;           // strips or tiles in the order of the file

    Bytes Write() const;
};

// Numbers of so many bits without gaps, from the upper end of a byte; whole bytes little-endian. Fills the last byte.
Bytes TiffRow(int bits, const std::vector<std::uint64_t>& values);
Bytes TiffFloats(const std::vector<float>& values);
