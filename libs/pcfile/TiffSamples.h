// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

// What the bits of a TIFF sample are. Signed numbers are black at their most negative. Float: black at 0, white at 1.
// Index: a place in a palette.
enum class TiffSample { Unsigned, Signed, Float, Index };

// True for the sizes that can be unpacked: whole numbers of 1 to 32 bits, floating point of 16, 32 and 64.
bool CanUnpackTiff(TiffSample kind, int bits);

// Unpacks `count` samples that lie without gaps in a row of bytes (parts of a byte from its upper end, whole bytes in
// the machine's order, as libtiff gives them) to `out`, `step` apart: the full range of 16 bits, or an index as it is.
void UnpackTiff(TiffSample kind, int bits, const std::uint8_t* in, std::size_t count, std::uint16_t* out,
                std::size_t step);
