// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "Bitmap.h"
#include "ProgressSpan.h"

// The encoders inside the library: a bitmap to the whole bytes of a file, in memory.

using ByteVector = std::vector<std::uint8_t>;

enum class Chroma { Full, Halved };

// JPEG, baseline, with Huffman tables made for the picture. `segments` are whole application segments (marker, length,
// content) that follow the file header. Translucent pixels are laid on white. Large pictures are coded in strips
// between restart markers on all cores; the pixels are those of one piece, and the bytes do not depend on the number of
// threads. False when a side is above 65500 or the sink cancelled.
bool EncodeJpeg(const Bitmap& bitmap, int quality, Chroma chroma, const ByteVector& segments, const ProgressSpan& span,
                ByteVector& file);

// PNG of 8 bits, RGB or (when any pixel is translucent) RGBA, with an sRGB chunk. `chunks` are whole chunks (length,
// type, content, check) that stand before the pixels. Strips are filtered and deflated on all cores; the bytes do not
// depend on the number of threads. False when the sink cancelled.
bool EncodePng(const Bitmap& bitmap, const ByteVector& chunks, const ProgressSpan& span, ByteVector& file);

// BMP with a version 4 header that says sRGB: 24 bits, or 32 with alpha when any pixel is translucent.
ByteVector EncodeBmp(const Bitmap& bitmap);

// The parts in which metadata and the sRGB profile go into a JPEG: appends an ICC profile as APP2 segments.
void AppendProfileSegments(const ByteVector& profile, ByteVector& segments);

// Writes the bytes to `path` through WholeFile.
bool WriteWhole(const std::filesystem::path& path, const ByteVector& bytes);
