// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "PictureFolder.h"

// Picture files written byte by byte from their formats' descriptions, so that the readers are tested against something
// other than the library's own writers.
namespace HandMade {

void Put16(Bytes& bytes, std::uint32_t value);  // little-endian
void Put32(Bytes& bytes, std::uint32_t value);
void PutBig32(Bytes& bytes, std::uint32_t value);
void PutText(Bytes& bytes, const char* text);

// Two pixels: opaque 0x112233 and half transparent 0x445566, from a palette.
Bytes PalettePng();
// 4 × 2, two frames; the first is a red 2 × 2 square at (1, 0).
Bytes TwoFrameGif();
constexpr std::size_t GifFirstFrameEnd = 43;
// 24-bit, three planes, run-length coded.
Bytes Pcx(const Bitmap& bitmap);
// Sun raster, 24-bit.
Bytes Ras(const Bitmap& bitmap);
// Truevision, true colour of 24 or 32 bits, top-down, plain or in runs.
Bytes Tga(const Bitmap& bitmap, int bits, bool runs);
// P1 to P6; grey kinds take the green channel, bit kinds its upper bit.
Bytes Pnm(const Bitmap& bitmap, int kind, int most);
// The green channel as PGX.
Bytes Pgx(const Bitmap& bitmap, int bits, bool negative, bool bigEndian);
// A placeable metafile.
Bytes Wmf();

}  // namespace HandMade
