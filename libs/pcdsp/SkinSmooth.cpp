// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinSmooth.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "Kernels.h"
#include "MapReader.h"
#include "RangeGrid.h"
#include "ReducedCopy.h"
#include "Rows.h"

// How skin is smoothed. All work happens on a reduced copy, and what comes out is a smooth correction that is added to
// the picture; the finest grain is therefore never touched.
//
//   fine    the copy after a Gaussian that takes out the grain
//   even    mean of `fine` over a neighbourhood of some hundredths of the face, over pixels of like value only
//           (RangeGrid): other pixels of the same skin, not the lashes beside it
//   change  strength * flat * (even - fine), and a part of (fine - copy) to soften the shadows of pores; `flat` falls
//   to
//           0 where the picture has contrast within a short way: edges of features
//   correction = change - its mean over a tenth of the face, so that light and shade and the colour of the face stay
//
// Lengths follow the face, whose width is judged from how much of the picture has the colour of skin.

namespace {

constexpr int MostCells = 1100000;
// Cells of place in a grid: more would cost time that a reduced copy was made to save.
constexpr double MostPlaces = 60000.0;
constexpr int MaxHalf = 16;

// Lengths in face widths: the deviation of the Gaussian that takes out grain, the cells of the grid of like values,
// those of the grid of light and shade, and how far contrast is looked for.
constexpr double FinePart = 0.0024, EvenPart = 0.05, ShadePart = 0.05, ReachPart = 0.0105;
// Levels at level 180: pixels within about LikeLevels count as like; contrast of EdgeLevels halves the change, and more
// with sigma. A line of pixels across which the contrast is equal counts by Line.
constexpr float LikeLevels = 40.0f, LikeRise = 1.5f, EdgeLevels = 34.0f, EdgeRise = 12.0f, Line = 0.25f;
// What has not the colour of skin counts this much in the mean of like pixels: nothing beside skin, all where no skin
// is.
constexpr float OtherShare = 0.02f;
// Skin under gloss keeps PalePart of its redness; below NeutralRedness redness is noise.
constexpr float PalePart = 0.4f, NeutralRedness = 0.02f;
// Differences of colour beyond this part of the light, with Knee levels added to it, are another material.
constexpr float ColourPart = 34.0f / 220.0f, Knee = 40.0f;
// Strength is Top (1 - exp(-Rise sigma)): 0.95 at 1, 1.32 at 3. A little more than 1 makes up for what the borders of
// the band take away. Pores is the part of it for what is finer than `fine` and coarser than the copy.
constexpr float Top = 1.36f, Rise = 1.2f, Pores = 0.2f;

struct Gaussian {
    int half = 1;
    std::array<float, MaxHalf + 1> weights{};

    explicit Gaussian(double sigma) : half(std::clamp(static_cast<int>(std::ceil(2.6 * sigma)), 1, MaxHalf)) {
        double sum = 0.0;
        for (int i = 0; i <= half; ++i) sum += (i ? 2.0 : 1.0) * std::exp(-0.5 * i * i / (sigma * sigma));
        for (int i = 0; i <= half; ++i) weights[i] = static_cast<float>(std::exp(-0.5 * i * i / (sigma * sigma)) / sum);
    }
};

// Levels of green, which shows blood and edges best, to numbers whose equal steps look equal: a blotch is a part of the
// light that falls on it. One is `levels` levels at level 180.
class GuideScale {
  public:
    explicit GuideScale(float levels) {
        for (int i = 0; i < Steps; ++i)
            m_values[i] = (180.0f + Knee) / levels * std::log(1.0f + 0.25f * static_cast<float>(i) / Knee);
    }
    float Of(float level) const { return m_values[static_cast<int>(std::clamp(level, 0.0f, 255.0f) * 4.0f + 0.5f)]; }
    float Range() const { return m_values[Steps - 1]; }

  private:
    static constexpr int Steps = 1021;
    std::array<float, Steps> m_values;
};

// How much redder than green a colour is, in parts of its red: 0 for what is neutral or cool.
float Redness(float red, float green) {
    return std::max(0.0f, (red - green) / std::max(red, 1.0f));
}

// 1 for what is about as red as its like, or has no red like; 0 for what is neutral among skin.
float Kinship(float redness, float ofItsLike) {
    const float part = std::min(1.0f, (NeutralRedness + redness) / (NeutralRedness + PalePart * ofItsLike));
    return part * part;
}

}  // namespace

class SkinCorrection::Smoother {
  public:
    Smoother(const std::uint8_t* pixels, int width, int height, float sigma)
        : m_sigma(sigma),
          m_binLevels(LikeLevels + LikeRise * sigma),
          m_scale(m_binLevels),
          m_copy(pixels, width, height, MostCells),
          m_columns(m_copy.Columns()),
          m_rows(m_copy.Rows()),
          m_face(m_copy.FaceWidth()),
          m_fine(Colours + 1, m_columns, m_rows) {}

    // In this order; the last leaves the correction in the copy's cells.
    void MakeFine();
    void MakeChange();
    void KeepShading();

    ReducedCopy& Correction() { return m_copy; }
    const Planes& Fine() const { return m_fine; }
    double FaceWidth() const { return m_face; }
    float Strength() const { return Top * (1.0f - std::exp(-Rise * m_sigma)); }

  private:
    static constexpr int Colours = ReducedCopy::Colours;
    static constexpr int Guide = Colours;  // the plane of m_fine behind its colours

    // A grid with cells of `part` of the face, not more than are sensible.
    RangeGrid GridOf(double part, float range) const {
        const double least = std::sqrt(double(m_columns) * m_rows / MostPlaces);
        return RangeGrid(m_columns, m_rows, static_cast<float>(std::max({part * m_face, least, 1.0})), range);
    }
    template <class Row>
    void AddRows(RangeGrid& grid, Row row) const {
        ForEachBand(grid.CellRows(), 1, [&](int first, int last) {
            for (int cells = first; cells < last; ++cells)
                for (int y = grid.FirstRowOf(cells); y < grid.FirstRowOf(cells + 1); ++y) row(cells, y);
        });
        grid.Blur();
    }

    float m_sigma;
    float m_binLevels;
    GuideScale m_scale;
    ReducedCopy m_copy;
    int m_columns, m_rows;
    double m_face;
    Planes m_fine;
};

void SkinCorrection::Smoother::MakeFine() {
    const Gaussian blur(std::max(0.3, FinePart * m_face));
    const int half = blur.half;
    ForEachBand(m_rows, GrainOf(m_columns), [&](int first, int last) {
        std::vector<float> line(m_columns + 2 * half + Planes::Slack);
        float* const middle = line.data() + half;
        std::array<const float*, 2 * MaxHalf + 1> rows;
        const GaussianTaps taps{rows.data(), blur.weights.data(), half};
        for (int y = first; y < last; ++y) {
            for (int c = 0; c < Colours; ++c) {
                for (int k = -half; k <= half; ++k) rows[k + half] = m_copy.Row(c, std::clamp(y + k, 0, m_rows - 1));
                Kernels().gaussianRow(taps, m_columns, middle);
                std::fill(line.data(), middle, middle[0]);
                std::fill(middle + m_columns, middle + m_columns + half, middle[m_columns - 1]);
                for (int k = -half; k <= half; ++k) rows[k + half] = middle + k;
                Kernels().gaussianRow(taps, m_columns, m_fine.Row(c, y));
            }
            const float* const green = m_fine.Row(1, y);
            float* const guide = m_fine.Row(Guide, y);
            for (int x = 0; x < m_columns; ++x) guide[x] = m_scale.Of(green[x]);
        }
    });
}

void SkinCorrection::Smoother::MakeChange() {
    RangeGrid grid = GridOf(EvenPart, m_scale.Range());
    AddRows(grid, [&](int cells, int y) {
        std::vector<float> skin(m_columns);
        m_copy.SkinOfRow(y, 1, skin.data());
        for (float& share : skin) share = OtherShare + share * share;
        grid.Add(cells, skin.data(), m_fine.Row(Guide, y), m_fine.Row(0, y), m_fine.Row(1, y), m_fine.Row(2, y));
    });
    const float strength = Strength();
    const float pores = strength * Pores;
    const int reach = std::max(1, static_cast<int>(std::lround(ReachPart * m_face)));
    const float edge = m_binLevels / (EdgeLevels + EdgeRise * m_sigma);
    ForEachBand(m_rows, GrainOf(m_columns), [&](int first, int last) {
        RangeGrid::Row mean(grid);
        for (int y = first; y < last; ++y) {
            mean.MoveTo(y);
            const float* const guide = m_fine.Row(Guide, y);
            const float* const above = m_fine.Row(Guide, std::max(y - reach, 0));
            const float* const below = m_fine.Row(Guide, std::min(y + reach, m_rows - 1));
            for (int x = 0; x < m_columns; ++x) {
                const float here = guide[x];
                const float right = guide[std::min(x + reach, m_columns - 1)], left = guide[std::max(x - reach, 0)];
                const float across = right - left, down = below[x] - above[x];
                const float ridge = right + left - 2.0f * here, bar = above[x] + below[x] - 2.0f * here;
                const float steep = (across * across + down * down + Line * (ridge * ridge + bar * bar)) * edge * edge;
                const float flat = 1.0f / (1.0f + steep * steep * steep * steep);
                const RangeGrid::Cell even = mean.Read(x, guide[x]);
                const float scale = 1.0f / even[0];
                float away[Colours];
                for (int c = 0; c < Colours; ++c) away[c] = even[c + 1] * scale - m_fine.Row(c, y)[x];
                // What differs in colour by more than a blotch does is not the same skin: teeth, lips. Nor is what is
                // grey among skin: the white of an eye, a pupil, grey hair.
                const float red = away[0] - away[1], blue = away[2] - away[1];
                const float most = ColourPart * (m_fine.Row(1, y)[x] + Knee);
                const float other = (red * red + blue * blue) / (most * most);
                const float akin = Kinship(Redness(m_fine.Row(0, y)[x], m_fine.Row(1, y)[x]),
                                           Redness(even[1] * scale, even[2] * scale));
                const float share = strength * flat * akin / (1.0f + other * other * other);
                for (int c = 0; c < Colours; ++c) {
                    float& copy = m_copy.Row(c, y)[x];
                    copy = share * away[c] + flat * pores * (m_fine.Row(c, y)[x] - copy);
                }
            }
        }
    });
}

void SkinCorrection::Smoother::KeepShading() {
    RangeGrid grid = GridOf(ShadePart, 0.0f);
    const std::vector<float> once(m_columns, 1.0f), nothing(m_columns);
    AddRows(grid, [&](int cells, int y) {
        grid.Add(cells, once.data(), nothing.data(), m_copy.Row(0, y), m_copy.Row(1, y), m_copy.Row(2, y));
    });
    ForEachBand(m_rows, GrainOf(m_columns), [&](int first, int last) {
        RangeGrid::Row mean(grid);
        for (int y = first; y < last; ++y) {
            mean.MoveTo(y);
            for (int x = 0; x < m_columns; ++x) {
                const RangeGrid::Cell low = mean.Read(x, 0.0f);
                const float scale = 1.0f / low[0];
                for (int c = 0; c < Colours; ++c) m_copy.Row(c, y)[x] -= low[c + 1] * scale;
            }
        }
    });
}

SkinCorrection::SkinCorrection(const std::uint8_t* pixels, int width, int height, float sigma)
    : m_smoother(std::make_unique<Smoother>(pixels, width, height, sigma)) {}

SkinCorrection::~SkinCorrection() = default;

bool SkinCorrection::Work(const ProgressSpan& span) {
    const auto [fining, changing, keeping] = Split<3>(span, {4, 3, 2});
    if (!fining.CanContinue()) return false;
    m_smoother->MakeFine();
    fining.Report(1, 1);
    if (!changing.CanContinue()) return false;
    m_smoother->MakeChange();
    changing.Report(1, 1);
    if (!keeping.CanContinue()) return false;
    m_smoother->KeepShading();
    keeping.Report(1, 1);
    return true;
}

ReducedCopy& SkinCorrection::Cells() {
    return m_smoother->Correction();
}

const ReducedCopy& SkinCorrection::Cells() const {
    return m_smoother->Correction();
}

const float* SkinCorrection::FineRow(int colour, int y) const {
    return m_smoother->Fine().Row(colour, y);
}

double SkinCorrection::FaceWidth() const {
    return m_smoother->FaceWidth();
}

float SkinCorrection::Strength() const {
    return m_smoother->Strength();
}

bool SmoothSkin(std::uint8_t* pixels, int width, int height, float sigma, const std::uint8_t* mask,
                const ProgressSpan& span) {
    const auto [working, correcting] = Split<2>(span, {9, 3});
    if (!working.CanContinue()) return false;
    SkinCorrection smoothing(pixels, width, height, sigma);
    if (!smoothing.Work(working)) return false;
    ReducedCopy& correction = smoothing.Cells();
    MapReader::CloseRows(correction.Cells(), ReducedCopy::Colours);
    const MapColumns columns(width, correction.Factor(), correction.Columns());
    return RunRows(correcting, height, std::max(GrainOf(width), 4 * correction.Factor()), [&](int first, int last) {
        MapReader reader(correction.Cells(), ReducedCopy::Colours, columns, width, correction.Factor());
        MappedRow row;
        for (int y = first; y < last; ++y) {
            reader.MoveTo(y, row.above, row.below, &row.part);
            row.mask = mask ? mask + std::ptrdiff_t{width} * y : nullptr;
            Kernels().correctRow(pixels + std::ptrdiff_t{4} * width * y, width, row);
        }
    });
}
