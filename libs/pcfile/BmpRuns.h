// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BmpPixels.h"

// The run-length forms of BMP (4, 8 and 24 bits), drawn into `out`, which has the picture's whole rows of 32-bit
// pixels. Pixels that the codes skip get the first colour (black for 24 bits), and codes that leave a row are cut at
// its end. False when the codes end before the mark of the end and before the last row is full.
bool DrawBmpRuns(const BmpHeader& header, const BmpPalette& palette, const std::uint8_t* data, std::size_t size,
                 std::uint8_t* out);
