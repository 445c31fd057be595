// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExifOrientation.h"

#include <algorithm>
#include <cstring>

#include "ByteReader.h"
#include "Parallel.h"

int ExifOrientation(const std::uint8_t* data, std::size_t size) {
    if (size >= 6 && std::memcmp(data, "Exif\0\0", 6) == 0) {
        data += 6;
        size -= 6;
    }
    if (size < 14) return 1;
    const bool little = data[0] == 'I';
    const auto two = [&](std::size_t at) { return little ? LittleEndian16(data + at) : BigEndian16(data + at); };
    const auto four = [&](std::size_t at) { return little ? LittleEndian32(data + at) : BigEndian32(data + at); };
    if (data[0] != data[1] || (data[0] != 'I' && data[0] != 'M') || two(2) != 42) return 1;
    const std::size_t directory = four(4);
    if (directory > size - 2) return 1;
    const std::size_t entries = two(directory);
    for (std::size_t i = 0; i < entries; ++i) {
        const std::size_t entry = directory + 2 + 12 * i;
        if (entry + 12 > size) return 1;
        if (two(entry) != 0x0112 || two(entry + 2) != 3) continue;
        const std::uint32_t value = two(entry + 8);
        return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
    }
    return 1;
}

Bitmap ApplyOrientation(const Bitmap& source, int orientation) {
    if (!source || orientation < 2 || orientation > 8) return source;
    // The three moves that make up every orientation, in this order: transpose, then mirror across, then mirror down.
    const bool transpose = orientation >= 5;
    const bool across = orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    const bool down = orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    const int width = transpose ? source.Height() : source.Width();
    const int height = transpose ? source.Width() : source.Height();
    Bitmap result = Bitmap::Uninitialised(width, height);
    auto* to = reinterpret_cast<std::uint32_t*>(result.MutablePixels());
    const auto* from = reinterpret_cast<const std::uint32_t*>(source.Pixels());
    const std::ptrdiff_t pitch = source.Width();
    const std::ptrdiff_t step = (transpose ? pitch : 1) * (across ? -1 : 1);
    constexpr int tile = 32;  // a square of this side stays in cache while its rows are read as columns
    ForEachBand((height + tile - 1) / tile, std::max(1, 65536 / width / tile), [&](int first, int last) {
        const int end = std::min(height, last * tile);
        for (int top = first * tile; top < end; top += tile)
            for (int left = 0; left < width; left += tile)
                for (int y = top; y < std::min(end, top + tile); ++y) {
                    const std::ptrdiff_t sy = down ? height - 1 - y : y;
                    const std::ptrdiff_t sx = across ? width - 1 - left : left;
                    const std::uint32_t* in = transpose ? from + sx * pitch + sy : from + sy * pitch + sx;
                    std::uint32_t* out = to + std::ptrdiff_t{y} * width + left;
                    const int count = std::min(tile, width - left);
                    for (int x = 0; x < count; ++x) out[x] = in[x * step];
                }
    });
    return result;
}
