// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "Bitmap.h"

// The orientation (1 to 8) in the first directory of an Exif block, which is a TIFF structure with or without
// "Exif\0\0" before it; 1 when there is none or it is damaged. The decoders use this instead of the metadata library,
// so that a picture that library refuses still stands upright.
int ExifOrientation(const std::uint8_t* data, std::size_t size);

// The picture turned and mirrored as an Exif orientation asks, so that its first row is the top. 1 and values outside
// 2 to 8 share the pixels of `source`.
Bitmap ApplyOrientation(const Bitmap& source, int orientation);
