// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "Bitmap.h"
#include "BrushTip.h"

// The arithmetic of the brushes written out pixel by pixel, as a twin of what the tools do.
struct PlainBrush {
    Bitmap base, processed, working;
    std::vector<std::uint8_t> mask;
    bool painted = false;

    // A new picture, already opaque.
    void Take(const Bitmap& picture, const Bitmap& effect);
    // A stamp of a disc of that radius with its corner at (x, y). `mask` is written by the mask flavour only.
    void Stamp(BrushTip::Shape shape, int radius, int x, int y, bool erase, double weight, bool intoMask);
    // The working picture out of base, processed and mask.
    Bitmap Composed(double strength) const;
};
