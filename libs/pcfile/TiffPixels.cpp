// SPDX-License-Identifier: GPL-3.0-or-later
#include "TiffPixels.h"

#include <tiff.h>

#include <algorithm>
#include <cstring>

#include "PixelRows.h"

namespace {

std::uint8_t ToByte(unsigned value) {
    return static_cast<std::uint8_t>((value * 255u + 32767u) / 65535u);
}

std::uint16_t Index(const TiffLayout& layout, const std::uint8_t* pixel) {
    std::uint16_t value = pixel[0];
    if (layout.bits == 16) std::memcpy(&value, pixel, 2);
    return value;
}

// Sample `index` of a pixel as 8 bits.
std::uint8_t Sample(const TiffLayout& layout, const std::uint8_t* pixel, int index) {
    if (layout.bits == 8) return pixel[index];
    std::uint16_t value;
    std::memcpy(&value, pixel + 2 * index, 2);
    return ToByte(value);
}

}  // namespace

bool TiffLayout::Understood() const {
    if (!CanUnpackTiff(sample, bits) || samples < ColourSamples() || samples > 32) return false;
    switch (photometric) {
        case PHOTOMETRIC_MINISBLACK:
        case PHOTOMETRIC_MINISWHITE:
        case PHOTOMETRIC_RGB:
        case PHOTOMETRIC_PALETTE:
            return true;
        case PHOTOMETRIC_SEPARATED:
            return inkSet == INKSET_CMYK;
        default:
            return false;
    }
}

int TiffLayout::ColourSamples() const {
    return IsInk() ? 4 : photometric == PHOTOMETRIC_RGB ? 3 : 1;
}

bool TiffLayout::HasAlpha() const {
    return !IsInk() && alpha != TiffAlpha::None && samples > ColourSamples();
}

int TiffLayout::UsedSamples() const {
    return ColourSamples() + HasAlpha();
}

bool TiffLayout::Converts() const {
    return !planes && (sample == TiffSample::Unsigned || sample == TiffSample::Index) && (bits == 8 || bits == 16);
}

TiffLayout TiffLayout::Unpacked() const {
    TiffLayout unpacked = *this;
    unpacked.sample = IsPalette() ? TiffSample::Index : TiffSample::Unsigned;
    unpacked.bits = 16;
    if (planes) unpacked.samples = UsedSamples();
    unpacked.planes = false;
    return unpacked;
}

std::size_t TiffLayout::RowBytes(std::size_t columns) const {
    return (columns * static_cast<std::size_t>(planes ? 1 : samples) * static_cast<std::size_t>(bits) + 7) / 8;
}

bool TiffLayout::IsGrey() const {
    return photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
}

bool TiffLayout::IsPalette() const {
    return photometric == PHOTOMETRIC_PALETTE;
}

bool TiffLayout::IsInk() const {
    return photometric == PHOTOMETRIC_SEPARATED;
}

void ConvertTiffRow(const TiffLayout& layout, const std::uint8_t* in, std::size_t count, std::uint8_t* out) {
    const std::size_t pixel = layout.RowBytes(1);
    const int colours = layout.ColourSamples();
    const bool alpha = layout.HasAlpha();
    std::uint8_t* row = out;
    for (std::size_t i = 0; i < count; ++i, in += pixel, out += 4) {
        if (layout.IsInk()) {
            for (int c = 0; c < 4; ++c) out[c] = Sample(layout, in, c);
            continue;
        }
        if (layout.IsPalette()) {
            const std::uint16_t entry = Index(layout, in);
            out[0] = ToByte(layout.blue[entry]);
            out[1] = ToByte(layout.green[entry]);
            out[2] = ToByte(layout.red[entry]);
        } else if (colours == 3) {
            for (int c = 0; c < 3; ++c) out[2 - c] = Sample(layout, in, c);
        } else {
            const std::uint8_t grey = Sample(layout, in, 0);
            out[0] = out[1] = out[2] = layout.photometric == PHOTOMETRIC_MINISWHITE ? 255 - grey : grey;
        }
        out[3] = alpha ? Sample(layout, in, colours) : 255;
    }
    if (alpha && layout.alpha == TiffAlpha::Multiplied) Unpremultiply(row, static_cast<int>(count));
}

void ConvertTiffRowDeep(const TiffLayout& layout, const std::uint8_t* in, std::size_t count, std::uint16_t* out) {
    const std::size_t pixel = layout.RowBytes(1);
    const int colours = layout.ColourSamples();
    const bool alpha = layout.HasAlpha();
    const auto sample = [](const std::uint8_t* p, int index) {
        std::uint16_t value;
        std::memcpy(&value, p + 2 * index, 2);
        return value;
    };
    for (std::size_t i = 0; i < count; ++i, in += pixel, out += 4) {
        for (int c = 0; c < 3; ++c) out[c] = sample(in, colours == 3 ? c : 0);
        if (layout.photometric == PHOTOMETRIC_MINISWHITE)
            for (int c = 0; c < 3; ++c) out[c] = static_cast<std::uint16_t>(65535 - out[c]);
        out[3] = alpha ? sample(in, colours) : std::uint16_t{65535};
        if (alpha && layout.alpha == TiffAlpha::Multiplied && out[3] > 0)
            for (int c = 0; c < 3; ++c)
                out[c] = static_cast<std::uint16_t>(std::min(65535u, (out[c] * 65535u + out[3] / 2u) / out[3]));
    }
}
