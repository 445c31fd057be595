// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinTint.h"

#include <algorithm>

#include "Kernels.h"
#include "MapReader.h"
#include "ReducedCopy.h"
#include "Rows.h"
#include "SkinMap.h"

namespace {

constexpr int MostCells = 200000;

// The share of the tint for each cell, into the first plane of the copy.
void MakeShares(ReducedCopy& copy) {
    const double face = copy.FaceWidth();
    const Plane shares = SkinShares(SkinMaps(copy, face), face);
    for (int y = 0; y < copy.Rows(); ++y) std::copy_n(shares.Row(y), copy.Columns(), copy.Row(0, y));
    MapReader::CloseRows(copy.Cells(), 1);
}

}  // namespace

bool TintSkin(std::uint8_t* pixels, int width, int height, const ColourRamp& ramp, const ProgressSpan& span) {
    const auto [judging, tinting] = Split<2>(span, {1, 2});
    if (!judging.CanContinue()) return false;
    ReducedCopy copy(pixels, width, height, MostCells);
    MakeShares(copy);
    judging.Report(1, 1);
    const MapColumns columns(width, copy.Factor(), copy.Columns());
    return RunRows(tinting, height, std::max(GrainOf(width), 4 * copy.Factor()), [&](int first, int last) {
        MapReader reader(copy.Cells(), 1, columns, width, copy.Factor());
        MappedRow row;
        row.ramp = ramp.colours;
        for (int y = first; y < last; ++y) {
            reader.MoveTo(y, row.above, row.below, &row.part);
            Kernels().tintRow(pixels + std::ptrdiff_t{4} * width * y, width, row);
        }
    });
}
