// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rotate.h"

#include <algorithm>

#include "Parallel.h"
#include "Rows.h"

namespace {

// Squares of this side keep the rows that are read and the rows that are written both in the first cache.
constexpr int Tile = 32;

// Where the source pixel of a result pixel lies: origin + x * stepX + y * stepY, in pixels.
struct Walk {
    std::ptrdiff_t origin, stepX, stepY;
};

Walk WalkOf(RotateFlipType type, std::ptrdiff_t width, std::ptrdiff_t height) {
    switch (type) {
        case RotateNoneFlipNone:
            return {0, 1, width};
        case Rotate90FlipNone:
            return {(height - 1) * width, -width, 1};
        case Rotate180FlipNone:
            return {height * width - 1, -1, -width};
        case Rotate270FlipNone:
            return {width - 1, width, -1};
        case RotateNoneFlipX:
            return {width - 1, -1, width};
        case Rotate90FlipX:
            return {0, width, 1};
        case RotateNoneFlipY:
            return {(height - 1) * width, 1, -width};
        case Rotate270FlipX:
            return {height * width - 1, -width, -1};
    }
    return {0, 1, width};
}

void CopyTile(const std::uint32_t* in, const Walk& walk, std::uint32_t* out, std::ptrdiff_t pitch, int columns,
              int rows) {
    for (int y = 0; y < rows; ++y, in += walk.stepY, out += pitch)
        for (int x = 0; x < columns; ++x) out[x] = in[x * walk.stepX];
}

}  // namespace

Bitmap Rotated(const Bitmap& source, RotateFlipType type) {
    if (type == RotateNoneFlipNone) return source;
    const bool quarter = type & 1;
    const int width = quarter ? source.Height() : source.Width();
    const int height = quarter ? source.Width() : source.Height();
    Bitmap result = Bitmap::Uninitialised(width, height);
    const Walk walk = WalkOf(type, source.Width(), source.Height());
    const auto* in = reinterpret_cast<const std::uint32_t*>(source.Pixels()) + walk.origin;
    auto* out = reinterpret_cast<std::uint32_t*>(result.MutablePixels());
    // Mirrors read along rows anyway: whole rows are their tiles.
    const int tileWidth = quarter ? Tile : width;
    ForEachBand(height, std::max(Tile, GrainOf(width)), [&](int first, int last) {
        for (int y = first; y < last; y += Tile)
            for (int x = 0; x < width; x += tileWidth)
                CopyTile(in + x * walk.stepX + y * walk.stepY, walk, out + x + std::ptrdiff_t{width} * y, width,
                         std::min(tileWidth, width - x), std::min(Tile, last - y));
    });
    return result;
}
