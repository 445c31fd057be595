// SPDX-License-Identifier: GPL-3.0-or-later
#include "TeethWhiten.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Kernels.h"
#include "MapReader.h"
#include "ReducedCopy.h"
#include "Rows.h"
#include "SkinMap.h"

// What a tooth is, is a question of the skin beside it: in warm light teeth are as yellow as skin in daylight, but
// always less red than the same person's skin. With p and q of kernels/SkinTone.h, redness and yellowness, the likeness
// of a pixel is p / p of the skin + 0.3 q / q of the skin: 1.3 for the skin itself, more for lips and gums, 0.4 to 1
// for teeth. Where q is negative, as gloss on painted lips has it, it counts twice. A map on a reduced copy says where
// whole patches look like teeth, light and between lips, which a beard, bright skin and most gloss on lips are not.

namespace {

constexpr int MostCells = 265000;
// In face widths.
constexpr double Tooth = 0.013, Spot = 0.02, Apart = 0.22, Row = 0.12, Mouths = 0.2;
constexpr float SkinBetween = 8.0f;
constexpr float Lift = 1.8f;  // slope at black of the curve that lightens: +5 to +8 L* of teeth

float Soft(float v, float zeroAt, float oneAt) {
    return std::clamp((v - zeroAt) / (oneAt - zeroAt), 0.0f, 1.0f);
}

struct Cell {
    float p, q, luma;
    Cell(float r, float g, float b)
        : p((r - g) / std::max(r, 1.0f)),
          q((g - b) / std::max(r, 1.0f)),
          luma(0.2126f * r + 0.7152f * g + 0.0722f * b) {}
};

// 1 where lips stand both above and below, less with their distance, which counts `fall` a cell, and more across skin:
// behind skin lies not the other lip but a shadow as red as one.
Plane Between(const Plane& lips, const Plane& skin, float fall) {
    Plane above = lips, below = lips;
    ForEachBand(lips.width, 64, [&](int first, int last) {
        const auto carry = [&](Plane& to, int y, int from) {
            for (int x = first; x < last; ++x)
                to.Row(y)[x] = std::max(lips.Row(y)[x], to.Row(from)[x] - fall * (1.0f + SkinBetween * skin.Row(y)[x]));
        };
        for (int y = 1; y < lips.height; ++y) carry(above, y, y - 1);
        for (int y = lips.height - 2; y >= 0; --y) carry(below, y, y + 1);
        for (int y = 0; y < lips.height; ++y)
            for (int x = first; x < last; ++x)
                above.Row(y)[x] = Soft(std::min(above.Row(y)[x], below.Row(y)[x]), 0.05f, 0.35f);
    });
    return above;
}

// Cells of a map that hang together.
struct Patch {
    std::vector<int> cells;  // row times width plus column
    int top, bottom, left, right;

    Patch(Plane& rest, int from);
    // In cells, along the axis on which they are farther apart; 0 or less when they overlap.
    int GapTo(const Patch& other) const {
        return std::max(std::max(top - other.bottom, other.top - bottom),
                        std::max(left - other.right, other.left - right));
    }
};

// Takes the patch that holds the cell out of the map.
Patch::Patch(Plane& rest, int from)
    : cells{from}, top(from / rest.width), bottom(top), left(from % rest.width), right(left) {
    const auto take = [&](int x, int y) {
        if (x < 0 || y < 0 || x >= rest.width || y >= rest.height || rest.Row(y)[x] <= 0.0f) return;
        rest.Row(y)[x] = 0.0f;
        cells.push_back(y * rest.width + x);
        top = std::min(top, y), bottom = std::max(bottom, y), left = std::min(left, x), right = std::max(right, x);
    };
    rest.Row(top)[left] = 0.0f;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const int x = cells[i] % rest.width, y = cells[i] / rest.width;
        take(x - 1, y), take(x + 1, y), take(x, y - 1), take(x, y + 1);
    }
}

// Teeth stand in a row: takes away what lies above or below a larger patch within `reach` cells, such as the gloss
// between nose and lip.
void KeepRows(Plane& patches, int reach) {
    Plane rest = patches;
    std::vector<Patch> found;
    for (int y = 0; y < rest.height; ++y)
        for (int x = 0; x < rest.width; ++x)
            if (rest.Row(y)[x] > 0.0f) found.emplace_back(rest, y * rest.width + x);
    for (const Patch& patch : found)
        for (const Patch& row : found) {
            const bool apart = patch.bottom < row.top || patch.top > row.bottom;
            if (!apart || patch.GapTo(row) > reach || patch.cells.size() * 2 > row.cells.size()) continue;
            for (const int cell : patch.cells) patches.Row(cell / patches.width)[cell % patches.width] = 0.0f;
            break;
        }
}

// What the kernel needs: a map that is 1 where teeth may be, and 1 / p and 0.3 / q of the skin.
struct Mouth {
    Plane patches;
    float perP, perQ;

    explicit Mouth(const ReducedCopy& copy);
};

Mouth::Mouth(const ReducedCopy& copy) : patches(copy.Columns(), copy.Rows()) {
    const double face = copy.FaceWidth();
    const auto radiusOf = [face](double part) { return std::max(1, static_cast<int>(std::lround(part * face))); };
    const SkinMaps skin(copy, face);
    perP = 1.0f / std::max(0.06f, skin.meanP);
    perQ = 0.3f / std::max(0.05f, skin.meanQ);
    const auto forCells = [&](auto body) {
        ForEachBand(copy.Rows(), GrainOf(copy.Columns()), [&](int first, int last) {
            for (int y = first; y < last; ++y)
                for (int x = 0; x < copy.Columns(); ++x)
                    body(x, y, Cell(copy.Row(0, y)[x], copy.Row(1, y)[x], copy.Row(2, y)[x]));
        });
    };
    Plane lips = patches, flesh = patches;
    forCells([&](int x, int y, const Cell& cell) {
        const float p = cell.p * perP, q = cell.q * perQ;
        patches.Row(y)[x] = Soft(p + std::max(q, -2.0f * q), 1.26f, 1.05f) *
                            Soft(cell.luma, 0.55f * skin.meanLuma, 0.85f * skin.meanLuma);
        lips.Row(y)[x] = Soft(p - q * (1.0f / 0.3f), 0.3f, 0.8f) * Soft(p, 0.7f, 0.9f);
        flesh.Row(y)[x] = (1.0f - lips.Row(y)[x]) * Soft(p + std::max(q, -2.0f * q), 1.05f, 1.26f) *
                          Soft(cell.luma, 0.3f * skin.meanLuma, 0.5f * skin.meanLuma);
    });
    patches = BoxMean(patches, radiusOf(Tooth));
    // A spot is as red as lips, but small.
    const Plane solid = BoxMean(lips, radiusOf(Spot));
    forCells([&](int x, int y, const Cell&) { lips.Row(y)[x] *= Soft(solid.Row(y)[x], 0.25f, 0.5f); });
    const Plane between = Between(lips, flesh, static_cast<float>(1.0 / (Apart * face)));
    // Gloss on a lip is as pale as a tooth, but darker than the teeth beside it. Means are of light, weighed by light.
    Plane sum = patches, squares = patches;
    forCells([&](int x, int y, const Cell& cell) {
        float& patch = patches.Row(y)[x];
        patch = Soft(patch, 0.3f, 0.55f) * between.Row(y)[x];
        sum.Row(y)[x] = patch * cell.luma;
        squares.Row(y)[x] = patch * cell.luma * cell.luma;
    });
    sum = BoxMean(sum, radiusOf(Row));
    squares = BoxMean(squares, radiusOf(Row));
    forCells([&](int x, int y, const Cell& cell) {
        const float ofTeeth = squares.Row(y)[x] / std::max(sum.Row(y)[x], 1e-3f);
        patches.Row(y)[x] *= Soft(cell.luma, 0.55f * ofTeeth, 0.8f * ofTeeth + 1e-3f);
    });
    KeepRows(patches, radiusOf(Mouths));
}

}  // namespace

bool WhitenTeeth(std::uint8_t* pixels, int width, int height, const ProgressSpan& span) {
    const auto [judging, whitening] = Split<2>(span, {1, 2});
    if (!judging.CanContinue()) return false;
    ReducedCopy copy(pixels, width, height, MostCells);
    const Mouth mouth(copy);
    for (int y = 0; y < copy.Rows(); ++y) std::copy_n(mouth.patches.Row(y), copy.Columns(), copy.Row(0, y));
    MapReader::CloseRows(copy.Cells(), 1);
    judging.Report(1, 1);
    const MapColumns columns(width, copy.Factor(), copy.Columns());
    return RunRows(whitening, height, std::max(GrainOf(width), 4 * copy.Factor()), [&](int first, int last) {
        MapReader reader(copy.Cells(), 1, columns, width, copy.Factor());
        MappedRow row;
        row.lift = Lift;
        row.perP = mouth.perP;
        row.perQ = mouth.perQ;
        for (int y = first; y < last; ++y) {
            reader.MoveTo(y, row.above, row.below, &row.part);
            Kernels().teethRow(pixels + std::ptrdiff_t{4} * width * y, width, row);
        }
    });
}
