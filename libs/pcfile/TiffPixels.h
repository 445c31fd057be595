// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "TiffSamples.h"

enum class TiffAlpha { None, Straight, Multiplied };

// How the pixels of a TIFF picture lie in its strips or tiles, as far as they are converted here.
struct TiffLayout {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    TiffSample sample = TiffSample::Unsigned;
    int bits = 1;
    int samples = 1;      // of a pixel
    bool planes = false;  // each sample of a pixel in a plane of its own
    int photometric = 1;
    int inkSet = 1;
    TiffAlpha alpha = TiffAlpha::None;
    bool direct = false;                 // converted here; else by the TIFF library
    const std::uint16_t* red = nullptr;  // palette of 2^bits entries, 16 bits each
    const std::uint16_t* green = nullptr;
    const std::uint16_t* blue = nullptr;

    // True for grey, palette, RGB and CMYK of the sample sizes that can be unpacked.
    bool Understood() const;
    bool IsGrey() const;
    bool IsPalette() const;
    bool IsInk() const;
    // Samples of a pixel that make its colour, and those that are read: alpha as well.
    int ColourSamples() const;
    int UsedSamples() const;
    bool HasAlpha() const;
    // True when rows can be converted as they lie in the file: whole samples of 8 or 16 bits side by side.
    bool Converts() const;
    // The layout of rows of other kinds after they were unpacked: the samples of a pixel side by side, 16 bits each.
    TiffLayout Unpacked() const;
    // Bytes of a row of `columns` pixels, of one plane when there are planes.
    std::size_t RowBytes(std::size_t columns) const;
};

// Converts `count` pixels of a layout that Converts: to four bytes (blue, green, red, straight alpha; ink for CMYK), or
// to four 16-bit values (red, green, blue, straight alpha).
void ConvertTiffRow(const TiffLayout& layout, const std::uint8_t* in, std::size_t count, std::uint8_t* out);
void ConvertTiffRowDeep(const TiffLayout& layout, const std::uint8_t* in, std::size_t count, std::uint16_t* out);
