// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"

// The sides of the bounds of a turned picture: whole numbers, of any size.
struct RotatedBounds {
    double width, height;
};
RotatedBounds BoundsOf(int width, int height, int degrees);

// `source` turned clockwise by `degrees`, which is no multiple of 90; see PC_Dsp::MultiRotate. `source` is not null.
// Null when the result would be larger than a bitmap may be.
Bitmap FreelyRotated(const Bitmap& source, int degrees);
// The same about the middle of a picture of width x height, an allowed size, whose pixels are as large as `scale`
// source pixels.
Bitmap FreelyRotated(const Bitmap& source, int degrees, double scale, int width, int height);
