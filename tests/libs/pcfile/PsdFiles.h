// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PictureFolder.h"

// Layered files, byte by byte: only what stands around the merged picture, and the picture itself as planes.
struct PsdFile {
    enum Mode { Bitmap = 0, Grey = 1, Indexed = 2, Rgb = 3, Ink = 4, Duotone = 8, Lab = 9 };

    int version = 1;
    Mode mode = Rgb;
    int bits = 8;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<Bytes> planes;  // the rows of each channel, most significant byte first
    bool runs = false;
    bool transparent = false;  // the channel behind the colours is the merged picture's transparency
    Bytes palette;
    Bytes profile;

    Bytes Write() const;
};
