// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "Bitmap.h"
#include "ProgressSpan.h"

// A rectangle of a picture in its place of a frame, repeated side by side: `across` times to the right and `down` times
// downwards, each at its own size.
struct FramePiece {
    Bitmap pixels;
    int left = 0, top = 0, width = 0, height = 0;  // of `pixels`, and inside it
    std::int64_t x = 0, y = 0;                     // in the frame
    std::int64_t across = 1, down = 1;
};

// A simple frame around a picture, ready to be drawn: the pieces, and where picture and frame lie in the result.
struct FramePlan {
    // In drawing order; a piece replaces what lies below it, its transparent pixels too. What sticks out of the frame
    // is cut off.
    std::vector<FramePiece> pieces;
    // The frame in its own pixels, and the result that it is stretched to; all sides are those of a Bitmap.
    int width = 0, height = 0;
    int resultWidth = 0, resultHeight = 0;
    // The picture's upper left corner in the result, which it may stick out of.
    int pictureX = 0, pictureY = 0;
    // The picture replaces what of the frame lies over it.
    bool pictureOnTop = false;
    // Repeated over the whole ground from the upper left corner on; null leaves it clear.
    Bitmap texture;
};

// Ground, picture and frame, one over the other by their alpha; where the frame is clear the picture keeps its bytes
// (over a texture where it is opaque). Null when `span` stopped it.
Bitmap DrawFramePlan(const FramePlan& plan, const Bitmap& picture, const ProgressSpan& span);

// Draws `count` pixels over as many by their alpha. Clear ones change nothing, opaque ones replace.
void DrawPixelsOver(std::uint8_t* pixels, const std::uint8_t* over, int count);
