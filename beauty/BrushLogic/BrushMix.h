// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtCore/QPoint>
#include <QtCore/QRect>

#include "Bitmap.h"
#include "BrushMask.h"
#include "BrushTip.h"

// The pixel arithmetic of the brushes. Pictures are opaque and of one size; every value becomes a byte by cutting off
// what is behind the point, except where a disc is laid over something, which rounds to the nearest.

struct Stamp {
    const BrushTip& tip;
    QPoint place;  // of the tip's corner, in picture pixels; may lie outside
    QRect part;    // what of it lies in the picture
};
// Lays the stamp over `target`: between `base` (weight 0) and `processed` (weight 1), with the disc's alpha.
void LayStamp(const Stamp& stamp, const Bitmap& base, const Bitmap& processed, double weight, Bitmap& target);
// Lays the stamp into the mask: white, or black to remove.
void LayStamp(const Stamp& stamp, bool white, BrushMask& mask);

// `target` holds the base: mixes `processed` into it by mask and strength (0 to 1) in every pixel whose mask is not 0.
void MixByMask(const Bitmap& base, const Bitmap& processed, const BrushMask& mask, double strength, Bitmap& target);
// The same where the mask is a grey picture.
void MixByMask(const Bitmap& base, const Bitmap& processed, const Bitmap& mask, double strength, Bitmap& target);
