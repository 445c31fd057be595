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

constexpr int MostCells = 500000;
constexpr double Around = 0.02;  // in face widths: pores and spots are skin as well

// Likelihood to share: what is half skin for its surroundings is nearly all skin, and a little is none.
float ShareOf(float likelihood) {
    const float t = std::clamp((likelihood - 0.08f) / 0.2f, 0.0f, 1.0f);
    return t * t * (3.0f - 2.0f * t);
}

}  // namespace

bool TintSkin(std::uint8_t* pixels, int width, int height, const ColourRamp& ramp, const ProgressSpan& span) {
    const auto [judging, tinting] = Split<2>(span, {1, 2});
    if (!judging.CanContinue()) return false;
    ReducedCopy copy(pixels, width, height, MostCells);
    const double face = copy.FaceWidth();
    const Plane skin = BoxMean(SkinMap(copy, face), std::max(1, static_cast<int>(std::lround(Around * face))));
    for (int y = 0; y < copy.Rows(); ++y)
        std::transform(skin.Row(y), skin.Row(y) + skin.width, copy.Row(0, y), ShareOf);
    MapReader::CloseRows(copy.Cells(), 1);
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
