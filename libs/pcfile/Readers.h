// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "PictureFormat.h"
#include "PictureTarget.h"

// The readers inside the library. Each takes the whole file in memory and answers whether the picture arrived whole; a
// file that is cut in its pixel data, or whose stated size cannot be true, is refused. None throws but std::bad_alloc.

// Baseline, progressive and arithmetic JPEG in grey, YCC, RGB, CMYK and YCCK, through libjpeg-turbo.
bool ReadJpeg(const std::uint8_t* data, std::size_t size, PictureTarget& target);

// PNG of every kind, through libpng; of an animated one the default picture.
bool ReadPng(const std::uint8_t* data, std::size_t size, PictureTarget& target);

// BMP of every kind of header: see BmpHeader.h.
bool ReadBmp(const std::uint8_t* data, std::size_t size, PictureTarget& target);

// The first frame of a GIF on its screen, which shows through where the frame does not cover it. What a frame has
// outside the screen is not shown.
bool ReadGif(const std::uint8_t* data, std::size_t size, PictureTarget& target);

// ICO and WBMP through Qt's plug-ins.
bool ReadByQt(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target);
