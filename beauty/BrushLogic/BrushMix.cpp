// SPDX-License-Identifier: GPL-3.0-or-later
#include "BrushMix.h"

#include "BrushKernels.h"
#include "Rows.h"

namespace {

void ForEachRow(const Bitmap& picture, const std::function<void(int)>& body) {
    ForEachBand(picture.Height(), GrainOf(picture.Width()), [&](int first, int last) {
        for (int y = first; y < last; ++y) body(y);
    });
}

// The same for the rows of a stamp, with the alphas of the disc in each.
void ForEachRow(const Stamp& stamp, const std::function<void(int y, const std::uint8_t* alphas)>& body) {
    const int left = stamp.part.x() - stamp.place.x();
    ForEachBand(stamp.part.height(), GrainOf(stamp.part.width()), [&](int first, int last) {
        for (int y = stamp.part.top() + first; y < stamp.part.top() + last; ++y)
            body(y, stamp.tip.Row(y - stamp.place.y()) + left);
    });
}

}  // namespace

void LayStamp(const Stamp& stamp, const Bitmap& base, const Bitmap& processed, double weight, Bitmap& target) {
    std::uint8_t* out = target.MutablePixels();
    const std::ptrdiff_t left = std::ptrdiff_t{4} * stamp.part.x();
    ForEachRow(stamp, [&](int y, const std::uint8_t* alphas) {
        BrushKernelsInUse().stampRow(base.Row(y) + left, processed.Row(y) + left, weight, alphas, stamp.part.width(),
                                     out + y * target.Stride() + left);
    });
}

void LayStamp(const Stamp& stamp, bool white, BrushMask& mask) {
    std::uint8_t* bytes = mask.MutableBytes();
    ForEachRow(stamp, [&](int y, const std::uint8_t* alphas) {
        BrushKernelsInUse().coverRow(white ? 255 : 0, alphas, stamp.part.width(),
                                     bytes + y * mask.Stride() + stamp.part.x());
    });
}

void MixByMask(const Bitmap& base, const Bitmap& processed, const BrushMask& mask, double strength, Bitmap& target) {
    std::uint8_t* out = target.MutablePixels();
    ForEachRow(target, [&](int y) {
        BrushKernelsInUse().mixRow(base.Row(y), processed.Row(y), mask.Row(y), strength / 255.0, target.Width(),
                                   out + y * target.Stride());
    });
}

void MixByMask(const Bitmap& base, const Bitmap& processed, const Bitmap& mask, double strength, Bitmap& target) {
    std::uint8_t* out = target.MutablePixels();
    ForEachRow(target, [&](int y) {
        BrushKernelsInUse().mixRowByGrey(base.Row(y), processed.Row(y), mask.Row(y), strength / 255.0, target.Width(),
                                         out + y * target.Stride());
    });
}
