// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rotate.h"

#include <algorithm>
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "Parallel.h"
#include "Rows.h"

namespace {

// Squares of this side keep the rows that are read and the rows that are written both in the first cache.
constexpr int Tile = 64;

// Results from this size on are written past the caches, which they would only sweep clean: half the traffic.
constexpr std::size_t StreamedBytes = std::size_t{16} << 20;

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

// Copies `count` pixels, whole 16 bytes past the caches.
void StreamPixels(std::uint32_t* out, const std::uint32_t* in, int count) {
#ifdef __SSE2__
    for (; count > 0 && reinterpret_cast<std::uintptr_t>(out) % 16 != 0; --count) *out++ = *in++;
    for (; count >= 4; count -= 4, out += 4, in += 4)
        _mm_stream_si128(reinterpret_cast<__m128i*>(out), _mm_loadu_si128(reinterpret_cast<const __m128i*>(in)));
#endif
    std::copy_n(in, count, out);
}

// The result rows first to last - 1 of a quarter turn.
void TurnRows(const std::uint32_t* in, const Walk& walk, std::uint32_t* out, int width, int first, int last,
              bool streamed) {
    alignas(64) std::uint32_t tile[Tile * Tile];
    for (int y = first; y < last; y += Tile)
        for (int x = 0; x < width; x += Tile) {
            const int columns = std::min(Tile, width - x), rows = std::min(Tile, last - y);
            const std::uint32_t* from = in + x * walk.stepX + y * walk.stepY;
            std::uint32_t* to = out + x + std::ptrdiff_t{width} * y;
            if (!streamed) {
                CopyTile(from, walk, to, width, columns, rows);
                continue;
            }
            CopyTile(from, walk, tile, Tile, columns, rows);
            for (int row = 0; row < rows; ++row)
                StreamPixels(to + std::ptrdiff_t{width} * row, tile + Tile * row, columns);
        }
#ifdef __SSE2__
    _mm_sfence();
#endif
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
    const bool streamed = result.ByteCount() >= StreamedBytes;
    ForEachBand(height, quarter ? Tile : GrainOf(width), [&](int first, int last) {
        if (quarter)
            TurnRows(in, walk, out, width, first, last, streamed);
        else
            CopyTile(in + first * walk.stepY, walk, out + std::ptrdiff_t{width} * first, width, width, last - first);
    });
    return result;
}
