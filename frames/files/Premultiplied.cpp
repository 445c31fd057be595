// SPDX-License-Identifier: GPL-3.0-or-later
#include "Premultiplied.h"

#include "EffectKernels.h"
#include "Rows.h"

Bitmap Premultiplied(const Bitmap& straight) {
    Bitmap result = Bitmap::Uninitialised(straight.Width(), straight.Height());
    std::uint8_t* out = result.MutablePixels();
    ForEachBand(straight.Height(), GrainOf(straight.Width()), [&](int first, int last) {
        for (int y = first; y < last; ++y)
            EffectKernelsInUse().premultiplyRow(straight.Row(y), straight.Width(), out + y * straight.Stride());
    });
    return result;
}

void DrawPremultipliedOver(const std::uint8_t* below, const std::uint8_t* over, int count, std::uint8_t* out) {
    EffectKernelsInUse().overRow(below, over, count, out);
}
