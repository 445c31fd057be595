// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinTint.h"

#include <algorithm>
#include <cmath>

#include "Kernels.h"
#include "MapReader.h"
#include "ReducedCopy.h"
#include "Rows.h"
#include "SkinMap.h"

namespace {

constexpr int MostCells = 200000;
// In face widths: how far a cell's surroundings tell whether it lies in skin or in hair, and how far colours are mixed
// before they are judged, pores and spots being skin as well.
constexpr double Around = 0.045, Near = 0.01;

float Soft(float v, float zeroAt, float oneAt) {
    const float t = std::clamp((v - zeroAt) / (oneAt - zeroAt), 0.0f, 1.0f);
    return t * t * (3.0f - 2.0f * t);
}

int RadiusOf(double part, double face) {
    return std::max(1, static_cast<int>(std::lround(part * face)));
}

// The share of the tint for each cell, into the first plane of the copy.
void MakeShares(ReducedCopy& copy) {
    const double face = copy.FaceWidth();
    const SkinMaps maps(copy, face);
    // Two boxes make soft borders.
    const Plane around = BoxMean(BoxMean(maps.even, RadiusOf(Around, face)), RadiusOf(Around / 2, face));
    const Plane near = BoxMean(BoxMean(maps.colour, RadiusOf(Near, face)), RadiusOf(Near, face));
    ForEachBand(copy.Rows(), GrainOf(copy.Columns()), [&](int first, int last) {
        for (int y = first; y < last; ++y)
            for (int x = 0; x < copy.Columns(); ++x)
                copy.Row(0, y)[x] = Soft(around.Row(y)[x], 0.18f, 0.5f) * Soft(near.Row(y)[x], 0.25f, 0.75f);
    });
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
