// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

enum class TiffAlpha { None, Straight, Multiplied };

// How the pixels of a TIFF picture lie in its strips, as far as they are converted here.
struct TiffLayout {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int bits = 1;
    int samples = 1;
    int photometric = 1;
    int inkSet = 1;
    TiffAlpha alpha = TiffAlpha::None;
    bool direct = false;                 // converted here; else by the TIFF library
    const std::uint16_t* red = nullptr;  // palette of 2^bits entries, 16 bits each
    const std::uint16_t* green = nullptr;
    const std::uint16_t* blue = nullptr;

    // True for 8 and 16 bits of grey, palette (8), RGB and CMYK with whole samples side by side.
    bool Understood() const;
    bool IsGrey() const;
    bool IsPalette() const;
    bool IsInk() const;
    std::size_t PixelBytes() const { return static_cast<std::size_t>(samples) * (bits / 8); }
};

// Converts `count` pixels: to four bytes (blue, green, red, straight alpha; ink for CMYK), or to four 16-bit values
// (red, green, blue, straight alpha).
void ConvertTiffRow(const TiffLayout& layout, const std::uint8_t* in, std::size_t count, std::uint8_t* out);
void ConvertTiffRowDeep(const TiffLayout& layout, const std::uint8_t* in, std::size_t count, std::uint16_t* out);
