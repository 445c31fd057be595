// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "Bitmap.h"
#include "Truncate.h"

// The lengths of which a simple frame is made. They are wider than the numbers of a file, so that no sum of those can
// wrap.

// A side of the frame in its own pixels, and of the result in the picture's.
struct FrameSide {
    std::int64_t frame = 0;
    int result = 0;
};

// The side of a frame around a picture whose side is this, before anything is trimmed. `scale` is above 0.
inline std::int64_t FrameSpan(int pictureSide, int extra, double scale) {
    return std::int64_t{Truncate(pictureSide / scale)} + extra;
}

inline FrameSide SideOf(std::int64_t frame, double scale) {
    return {frame, Truncate(static_cast<double>(frame) * scale)};
}

// Frame and result can both be bitmaps.
inline bool AllowedSides(const FrameSide& across, const FrameSide& down) {
    return across.frame > 0 && down.frame > 0 && across.result > 0 && down.result > 0 &&
           Bitmap::Allowed(across.frame, down.frame) && Bitmap::Allowed(across.result, down.result);
}

// How many tiles of `size` a span takes, the last one cut where it must be, and what of that one fits: nothing where
// the span is a whole number of tiles. None for a negative span and without a tile.
struct FrameRun {
    std::int64_t count = 0;
    std::int64_t trim = 0;
};
inline FrameRun RunOf(std::int64_t span, int size) {
    if (span < 0 || size < 1) return {};
    return {(span + size - 1) / size, span % size};
}
