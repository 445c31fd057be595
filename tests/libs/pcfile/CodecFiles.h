// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PictureFolder.h"

// Files of the less common formats, written with the libraries that define them. Empty when the library cannot.

Bytes MakeWebp(const Bitmap& bitmap, bool exact);
Bytes MakeWebpAnimation(const Bitmap& first, const Bitmap& second);

enum class HeifKind { Hevc, Av1 };
Bytes MakeHeif(const Bitmap& bitmap, HeifKind kind);

Bytes MakeJxl(const Bitmap& bitmap, int bits, const Bytes& profile = {});

enum class TiffKind { Rgb, Rgba, Grey, WhiteIsZero, Palette, Ink, Bilevel };
enum class TiffPacking { None, Lzw, Deflate, PackBits };
Bytes MakeTiff(const Bitmap& bitmap, TiffKind kind, int bits, TiffPacking packing, bool tiled, int orientation = 1,
               const Bytes& profile = {});
// A camera raw: an evenly lit mosaic of 16 bits.
Bytes MakeDng(int width, int height);

Bytes MakeJbig(const Bitmap& bitmap);
Bytes MakeByMagick(const Bitmap& bitmap, const char* format);
// Exact; a file with boxes or a bare code stream.
Bytes MakeJpeg2000(const Bitmap& bitmap, bool stream);
