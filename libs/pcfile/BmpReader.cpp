// SPDX-License-Identifier: GPL-3.0-or-later
#include <atomic>

#include "BmpPixels.h"
#include "BmpRuns.h"
#include "Parallel.h"
#include "Readers.h"

namespace {

using Packing = BmpHeader::Packing;

// A code of two bytes draws up to 255 pixels. Codes may also skip, so small pictures need not be filled.
bool RunsAreEnough(const BmpHeader& header, std::size_t size) {
    constexpr std::uint64_t pixelsPerByte = 128, anyway = 1 << 20;
    const auto pixels = static_cast<std::uint64_t>(header.width * header.height);
    return pixels <= anyway || pixels / pixelsPerByte <= size - header.pixels;
}

// All rows but the padding of the last.
bool RowsAreInside(const BmpHeader& header, std::size_t size) {
    const std::uint64_t needed = header.RowBytes() * (header.height - 1) + header.UsedRowBytes();
    return needed <= size - header.pixels;
}

bool ReadRuns(const BmpHeader& header, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    if (!RunsAreEnough(header, size)) return false;
    std::uint8_t* out = target.Begin(header.width, header.height);
    return out && DrawBmpRuns(header, ReadBmpPalette(header, data, size), data, size, out);
}

// Some programs name an alpha mask and leave the channel empty: a picture that would be invisible is opaque.
bool NothingShows(const std::uint8_t* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        if (pixels[4 * i + 3] != 0) return false;
    return true;
}

bool ReadRows(const BmpHeader& header, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    if (!RowsAreInside(header, size)) return false;
    std::uint8_t* out = target.Begin(header.width, header.height);
    if (!out) return false;
    const BmpPalette palette = ReadBmpPalette(header, data, size);
    const BmpRows rows(header, palette);
    const std::size_t width = static_cast<std::size_t>(header.width), stride = 4 * width;
    std::atomic<bool> invisible{header.masks[3] != 0};
    ForEachBand(static_cast<int>(header.height), 16, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            std::uint8_t* row = out + static_cast<std::size_t>(header.PictureRow(y)) * stride;
            rows.Convert(data + header.pixels + header.RowBytes() * y, row);
            if (invisible && !NothingShows(row, width)) invisible = false;
        }
    });
    if (invisible)
        for (std::size_t i = 3; i < stride * header.height; i += 4) out[i] = 255;
    return true;
}

bool ReadPixels(const BmpHeader& header, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    switch (header.packing) {
        case Packing::Plain:
            return ReadRows(header, data, size, target);
        case Packing::Jpeg:
            return ReadJpeg(data + header.pixels, size - header.pixels, target);
        case Packing::Png:
            return ReadPng(data + header.pixels, size - header.pixels, target);
        default:
            return ReadRuns(header, data, size, target);
    }
}

}  // namespace

bool ReadBmp(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    BmpHeader header;
    if (!ParseBmpHeader(data, size, header) || !ReadPixels(header, data, size, target)) return false;
    if (header.profileBytes > 0) target.SetProfile(data + header.profile, header.profileBytes);
    return target.Report(1);
}
