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
// for teeth. Three maps on a reduced copy say what the skin of the neighbourhood is (means weighed by SkinMaps), and
// where whole patches look like teeth, light and between lips, which a beard, bright skin and most gloss on lips are
// not.

namespace {

constexpr int MostCells = 400000;
// In face widths.
constexpr double Around = 0.3, Tooth = 0.013, Spot = 0.02, Apart = 0.22, Row = 0.12;
constexpr float Lift = 1.8f;  // slope at black of the curve that lightens: +5 to +8 L* of teeth
// What stands for skin where there is none, and how much that counts.
constexpr float UsualP = 0.24f, UsualQ = 0.12f, UsualLight = 150.0f, UsualWeight = 0.02f;

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

// 1 where lips stand both above and below, less with their distance, which counts `fall` a cell.
Plane Between(const Plane& lips, float fall) {
    Plane above = lips, below = lips;
    ForEachBand(lips.width, 64, [&](int first, int last) {
        for (int y = 1; y < lips.height; ++y)
            for (int x = first; x < last; ++x) above.Row(y)[x] = std::max(lips.Row(y)[x], above.Row(y - 1)[x] - fall);
        for (int y = lips.height - 2; y >= 0; --y)
            for (int x = first; x < last; ++x) below.Row(y)[x] = std::max(lips.Row(y)[x], below.Row(y + 1)[x] - fall);
        for (int y = 0; y < lips.height; ++y)
            for (int x = first; x < last; ++x)
                above.Row(y)[x] = Soft(std::min(above.Row(y)[x], below.Row(y)[x]), 0.05f, 0.35f);
    });
    return above;
}

struct Mouth {
    Plane perP, perQ;  // 1 / p and 0.3 / q of the skin around
    Plane patches;     // 1 where a patch looks like teeth

    explicit Mouth(const ReducedCopy& copy);
};

Mouth::Mouth(const ReducedCopy& copy) : perP(copy.Columns(), copy.Rows()), perQ(perP), patches(perP) {
    const double face = copy.FaceWidth();
    const int around = std::max(1, static_cast<int>(std::lround(Around * face)));
    const int tooth = std::max(1, static_cast<int>(std::lround(Tooth * face)));
    Plane weight = SkinMaps(copy, face).even, light = perP, lips = perP;
    const auto forCells = [&](auto body) {
        ForEachBand(copy.Rows(), GrainOf(copy.Columns()), [&](int first, int last) {
            for (int y = first; y < last; ++y)
                for (int x = 0; x < copy.Columns(); ++x)
                    body(x, y, Cell(copy.Row(0, y)[x], copy.Row(1, y)[x], copy.Row(2, y)[x]));
        });
    };
    std::vector<float> likely(copy.Columns());
    for (int y = 0; y < copy.Rows(); ++y) {
        copy.SkinOfRow(y, 1, likely.data());
        // A wall is even too, but only faintly of the colour of skin.
        for (int x = 0; x < copy.Columns(); ++x) weight.Row(y)[x] *= likely[x] * likely[x];
    }
    forCells([&](int x, int y, const Cell& cell) {
        const float skin = weight.Row(y)[x];
        perP.Row(y)[x] = skin * cell.p;
        perQ.Row(y)[x] = skin * cell.q;
        light.Row(y)[x] = skin * cell.luma;
    });
    for (Plane* const plane : {&weight, &perP, &perQ, &light}) *plane = BoxMean(*plane, around);
    forCells([&](int x, int y, const Cell& cell) {
        const float scale = 1.0f / (weight.Row(y)[x] + UsualWeight);
        const auto mean = [&](const Plane& plane, float usual) {
            return (plane.Row(y)[x] + UsualWeight * usual) * scale;
        };
        const float p = 1.0f / std::max(0.06f, mean(perP, UsualP));
        const float q = 0.3f / std::max(0.05f, mean(perQ, UsualQ));
        const float luma = mean(light, UsualLight);
        perP.Row(y)[x] = p;
        perQ.Row(y)[x] = q;
        patches.Row(y)[x] = Soft(cell.p * p + std::max(cell.q, 0.0f) * q, 1.15f, 0.95f) *
                            Soft(cell.luma / std::max(luma, 20.0f), 0.55f, 0.85f);
        lips.Row(y)[x] = Soft(cell.p * p - cell.q * q * (1.0f / 0.3f), 0.3f, 0.8f) * Soft(cell.p * p, 0.7f, 0.9f);
    });
    patches = BoxMean(patches, tooth);
    // A spot is as red as lips, but small.
    const Plane solid = BoxMean(lips, std::max(1, static_cast<int>(std::lround(Spot * face))));
    forCells([&](int x, int y, const Cell&) { lips.Row(y)[x] *= Soft(solid.Row(y)[x], 0.25f, 0.5f); });
    const Plane between = Between(lips, static_cast<float>(1.0 / (Apart * face)));
    forCells([&](int x, int y, const Cell&) {
        float& patch = patches.Row(y)[x];
        patch = Soft(patch, 0.3f, 0.55f) * between.Row(y)[x];
    });
    // Gloss on a lip is as pale as a tooth, but darker than the teeth beside it. Means are of light, weighed by light.
    Plane sum = patches, squares = patches;
    forCells([&](int x, int y, const Cell& cell) {
        sum.Row(y)[x] *= cell.luma;
        squares.Row(y)[x] *= cell.luma * cell.luma;
    });
    const int row = std::max(1, static_cast<int>(std::lround(Row * face)));
    sum = BoxMean(sum, row);
    squares = BoxMean(squares, row);
    forCells([&](int x, int y, const Cell& cell) {
        const float ofTeeth = squares.Row(y)[x] / std::max(sum.Row(y)[x], 1e-3f);
        patches.Row(y)[x] *= Soft(cell.luma, 0.5f * ofTeeth, 0.75f * ofTeeth + 1e-3f);
    });
}

}  // namespace

bool WhitenTeeth(std::uint8_t* pixels, int width, int height, const ProgressSpan& span) {
    const auto [judging, whitening] = Split<2>(span, {1, 2});
    if (!judging.CanContinue()) return false;
    ReducedCopy copy(pixels, width, height, MostCells);
    const Mouth mouth(copy);
    const Plane* const maps[] = {&mouth.perP, &mouth.perQ, &mouth.patches};
    for (int i = 0; i < 3; ++i)
        for (int y = 0; y < copy.Rows(); ++y) std::copy_n(maps[i]->Row(y), copy.Columns(), copy.Row(i, y));
    MapReader::CloseRows(copy.Cells(), 3);
    judging.Report(1, 1);
    const MapColumns columns(width, copy.Factor(), copy.Columns());
    return RunRows(whitening, height, std::max(GrainOf(width), 4 * copy.Factor()), [&](int first, int last) {
        MapReader reader(copy.Cells(), 3, columns, width, copy.Factor());
        MappedRow row;
        row.lift = Lift;
        for (int y = first; y < last; ++y) {
            reader.MoveTo(y, row.above, row.below, &row.part);
            Kernels().teethRow(pixels + std::ptrdiff_t{4} * width * y, width, row);
        }
    });
}
