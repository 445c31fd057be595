// SPDX-License-Identifier: GPL-3.0-or-later
#include "Scene.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Bitmap.h"
#include "GuidedLayer.h"
#include "Kernels.h"
#include "Rows.h"
#include "Truncate.h"

namespace {

// Longest sides of the copies that the layers are worked out on. Radii are parts of the copy, never pixels of the
// picture, so that a reduced picture gives the reduced result.
constexpr int FineSide = 1200;
constexpr int BaseSide = 480;
constexpr double FineRadius = 0.0035;
constexpr double BaseRadius = 0.04;
constexpr float FineNoise = 9.0f;
constexpr float BaseNoise = 28.0f;
constexpr int Slack = 16;  // a kernel reads whole groups behind the end of a row

PixelView ViewOf(const Bitmap& bitmap) {
    return {bitmap.Pixels(), bitmap.Width(), bitmap.Height(), bitmap.Stride()};
}

Bitmap ReducedTo(const PixelView& source, int longestSide) {
    const double scale = std::min(1.0, double(longestSide) / std::max(source.width, source.height));
    Bitmap out = Bitmap::Uninitialised(TruncateSide(source.width * scale), TruncateSide(source.height * scale));
    const ResampleTaps columns(source.width, 0, source.width, out.Width(), ResampleFilter::Area);
    const ResampleTaps rows(source.height, 0, source.height, out.Height(), ResampleFilter::Area);
    ResampleInto(source, columns, rows, out.MutablePixels(), {});
    return out;
}

Plane LumaOf(const Bitmap& bitmap, const SceneCurves& curves) {
    Plane luma(bitmap.Width(), bitmap.Height());
    for (int y = 0; y < luma.height; ++y) {
        const std::uint8_t* p = bitmap.Row(y);
        float* row = luma.Row(y);
        for (int x = 0; x < luma.width; ++x, p += 4)
            row[x] = 0.2126f * curves.r[p[2]] + 0.7152f * curves.g[p[1]] + 0.0722f * curves.b[p[0]];
    }
    return luma;
}

Plane SkinOf(const Bitmap& bitmap) {
    Plane skin(bitmap.Width(), bitmap.Height());
    for (int y = 0; y < skin.height; ++y) Kernels().skinRow(bitmap.Row(y), skin.width, skin.Row(y));
    return skin;
}

int RadiusOf(const Bitmap& bitmap, double part) {
    return std::max(1, static_cast<int>(std::lround(part * std::max(bitmap.Width(), bitmap.Height()))));
}

// Where a pixel of the picture lies in a smaller plane: between `index` and the next, at `part` of the way.
struct Position {
    int index;
    float part;

    Position(int x, int size, int planeSize) {
        const double at = std::clamp((x + 0.5) * planeSize / size - 0.5, 0.0, planeSize - 1.0);
        index = std::min(static_cast<int>(at), std::max(0, planeSize - 2));
        part = static_cast<float>(at - index);
    }
};

// The rows of a plane widened to the picture, two at a time, as a band of rows walks down.
class WidenedRows {
  public:
    WidenedRows(const Plane& plane, const std::vector<Position>& columns, int height)
        : m_plane(plane), m_columns(columns), m_height(height) {}

    void MoveTo(int y, const float*& above, const float*& below, float& part) {
        const Position at(y, m_height, m_plane.height);
        above = Row(at.index);
        below = Row(std::min(at.index + 1, m_plane.height - 1));
        part = at.part;
    }

  private:
    const float* Row(int index) {
        std::vector<float>& row = m_rows[index & 1];
        if (m_index[index & 1] != index) {
            m_index[index & 1] = index;
            row.resize(m_columns.size() + Slack);
            const float* in = m_plane.Row(index);
            const int next = m_plane.width > 1;
            for (std::size_t x = 0; x < m_columns.size(); ++x) {
                const float* at = in + m_columns[x].index;
                row[x] = at[0] + (at[next] - at[0]) * m_columns[x].part;
            }
        }
        return row.data();
    }

    const Plane& m_plane;
    const std::vector<Position>& m_columns;
    int m_height;
    std::vector<float> m_rows[2];
    int m_index[2] = {-1, -1};
};

std::vector<Position> PositionsOf(int size, int planeSize) {
    std::vector<Position> positions;
    positions.reserve(size);
    for (int x = 0; x < size; ++x) positions.emplace_back(x, size, planeSize);
    return positions;
}

SceneRow RowOf(const SceneRecipe& recipe, const SceneCurves& curves, const PointCurve& tone) {
    SceneRow row;
    row.curveR = curves.r.data();
    row.curveG = curves.g.data();
    row.curveB = curves.b.data();
    row.tone = &tone;
    row.baseDetail = recipe.baseDetail;
    row.fineDetail = recipe.fineDetail;
    row.skinBase = recipe.skinBase;
    row.skinFine = recipe.skinFine;
    row.saturation = recipe.saturation;
    row.skinSaturation = recipe.skinSaturation;
    row.sky = recipe.sky;
    row.foliage = recipe.foliage;
    row.warm = recipe.warm;
    row.skinWarm = recipe.skinWarm;
    row.neutral = recipe.neutral;
    return row;
}

}  // namespace

bool BeautifyScene(std::uint8_t* pixels, int width, int height, std::ptrdiff_t stride, const SceneRecipe& recipe,
                   const ProgressSpan& span) {
    const auto [judging, layering, finishing] = Split<3>(span, {1, 1, 4});
    if (!judging.CanContinue()) return false;
    const Bitmap fineCopy = ReducedTo({pixels, width, height, stride}, FineSide);
    const Bitmap baseCopy = ReducedTo(ViewOf(fineCopy), BaseSide);
    const SceneCurves curves(SceneStatistics(ViewOf(baseCopy)), recipe);
    const PointCurve tone = SceneTone(recipe);
    judging.Report(1, 1);

    if (!layering.CanContinue()) return false;
    const GuidedLayer base(LumaOf(baseCopy, curves), RadiusOf(baseCopy, BaseRadius), BaseNoise);
    const GuidedLayer fine(LumaOf(fineCopy, curves), RadiusOf(fineCopy, FineRadius), FineNoise);
    const Plane skin = BoxMean(SkinOf(fineCopy), RadiusOf(fineCopy, FineRadius));
    layering.Report(1, 1);

    const std::vector<Position> baseColumns = PositionsOf(width, baseCopy.Width());
    const std::vector<Position> fineColumns = PositionsOf(width, fineCopy.Width());
    return RunRows(finishing, height, std::max(16, GrainOf(width)), [&](int first, int last) {
        WidenedRows maps[SceneRow::Maps] = {{base.slope, baseColumns, height},
                                            {base.offset, baseColumns, height},
                                            {fine.slope, fineColumns, height},
                                            {fine.offset, fineColumns, height},
                                            {skin, fineColumns, height}};
        SceneRow row = RowOf(recipe, curves, tone);
        for (int y = first; y < last; ++y) {
            for (int m = 0; m < SceneRow::Maps; ++m) maps[m].MoveTo(y, row.above[m], row.below[m], row.part[m]);
            Kernels().sceneRow(pixels + y * stride, width, row);
        }
    });
}
