// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinTexture.h"

#include <algorithm>
#include <cmath>

#include "Between.h"
#include "Rows.h"

// Roughness is the root of the mean square of the second difference of green over the width of a line, across and down,
// as a part of the light: light and shade of a round cheek have next to none of it. Edges of features do not count.
// What is taken away at a strength s, s times the roughness, is held below `Borne`.

namespace {

// In face widths: half the width of a line, what is gathered first, and what a region is.
constexpr double LineReach = 0.009, Square = 0.015, Region = 0.04;
constexpr int MostSide = 16;
// Levels at level 180: where a contrast counts half, and how much of a texture may go.
constexpr float EdgeLevels = 45.0f, Borne = 11.0f;
// A region counts as no rougher than this many times the face where it is even.
constexpr float Beyond = 1.1f;
// A level is a part of the light, with Knee levels added to it.
constexpr float Knee = 40.0f, Reference = 180.0f + Knee;

int RadiusOf(double part, double face) {
    return std::max(1, static_cast<int>(std::lround(part * face)));
}

// Sums over squares: of what counts, and of its square of roughness.
struct Sums {
    Plane weight, square;
};

void AddRow(const SkinCorrection& skin, int y, int reach, int side, float* weights, float* squares) {
    const int columns = skin.Cells().Columns(), rows = skin.Cells().Rows();
    const float *const here = skin.FineRow(1, y), *const above = skin.FineRow(1, std::max(y - reach, 0)),
                       *const below = skin.FineRow(1, std::min(y + reach, rows - 1));
    for (int square = 0, first = 0; first < columns; ++square, first += side) {
        float weightSum = 0.0f, squareSum = 0.0f;
        for (int x = first; x < std::min(first + side, columns); ++x) {
            const float right = here[std::min(x + reach, columns - 1)], left = here[std::max(x - reach, 0)];
            const float relative = Reference / (here[x] + Knee), scale = relative * relative;
            const float ridge = left + right - 2.0f * here[x], bar = above[x] + below[x] - 2.0f * here[x];
            const float across = right - left, down = below[x] - above[x];
            const float rough = (ridge * ridge + bar * bar) * scale;
            const float edge = ((across * across + down * down) * scale + rough) * (1.0f / (EdgeLevels * EdgeLevels));
            const float weight = 1.0f / (1.0f + edge * edge);
            weightSum += weight;
            squareSum += weight * rough;
        }
        weights[square] += weightSum;
        squares[square] += squareSum;
    }
}

Sums SumsOf(const SkinCorrection& skin, int side) {
    const int columns = skin.Cells().Columns(), rows = skin.Cells().Rows();
    const int reach = RadiusOf(LineReach, skin.FaceWidth());
    Sums sums{Plane((columns + side - 1) / side, (rows + side - 1) / side), {}};
    sums.square = sums.weight;
    ForEachBand(sums.weight.height, 1, [&](int first, int last) {
        for (int square = first; square < last; ++square)
            for (int y = square * side; y < std::min((square + 1) * side, rows); ++y)
                AddRow(skin, y, reach, side, sums.weight.Row(square), sums.square.Row(square));
    });
    return sums;
}

Plane Spread(const Plane& plane, double face) {
    const int radius = RadiusOf(Region, face);
    return BoxMean(BoxMean(plane, radius), std::max(1, radius / 2));
}

// The square of the roughness of a face where it is even: a mean in which little counts most, since what is rough in a
// few places only is features, shadows and spots.
float OfWholeFace(const Plane& squares, const Plane& weights) {
    double sum = 0.0, inverse = 0.0;
    for (std::size_t i = 0; i < squares.values.size(); ++i) {
        const double weight = double(weights.values[i]) * weights.values[i], square = squares.values[i] + 1.0;
        sum += weight;
        inverse += weight / (square * square);
    }
    return sum > 0.0 ? static_cast<float>(std::sqrt(sum / inverse)) : 0.0f;
}

}  // namespace

SkinTexture::SkinTexture(const SkinCorrection& smoothing, const Plane& share, int shareFactor)
    : m_side(std::min(RadiusOf(Square, smoothing.FaceWidth()), MostSide)) {
    Sums sums = SumsOf(smoothing, m_side);
    const int factor = smoothing.Cells().Factor() * m_side;
    for (int y = 0; y < sums.weight.height; ++y) {
        const Between row(y, factor, shareFactor, share.height);
        for (int x = 0; x < sums.weight.width; ++x) {
            const float skin = ReadBetween(share, Between(x, factor, shareFactor, share.width), row);
            sums.weight.Row(y)[x] *= skin;
            sums.square.Row(y)[x] *= skin;
        }
    }
    const double face = smoothing.FaceWidth() / m_side;
    Plane squares = Spread(sums.square, face);
    m_amount = Spread(sums.weight, face);
    for (std::size_t i = 0; i < squares.values.size(); ++i)
        squares.values[i] = std::max(0.0f, squares.values[i]) / (m_amount.values[i] + 1e-3f);
    const float most = Beyond * Beyond * OfWholeFace(squares, m_amount);
    const float strength = smoothing.Strength() * (1.0f / Borne);
    for (std::size_t i = 0; i < squares.values.size(); ++i) {
        const float asked = std::min(squares.values[i], most) * strength * strength, square = asked * asked;
        m_amount.values[i] = 1.0f / std::sqrt(std::sqrt(std::sqrt(1.0f + square * square)));
    }
}
