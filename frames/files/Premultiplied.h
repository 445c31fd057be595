// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "Bitmap.h"

// Pixels whose colours are multiplied by their alpha, which can be stretched channel by channel. Opaque ones have an
// alpha of 240, not 255: the room above takes up what stretching overshoots at an edge, which would else be cut off and
// leave its colour too light.

// A copy of straight pixels.
Bitmap Premultiplied(const Bitmap& straight);

// Draws `count` of them over the straight pixels `below`, into `out`, which may be these. Clear ones change nothing.
// Colours above their alpha, which stretching may leave, count as their alpha, and alphas above 240 as opaque.
void DrawPremultipliedOver(const std::uint8_t* below, const std::uint8_t* over, int count, std::uint8_t* out);
