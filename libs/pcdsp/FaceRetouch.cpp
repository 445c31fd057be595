// SPDX-License-Identifier: GPL-3.0-or-later
#include "FaceRetouch.h"

#include <algorithm>
#include <cmath>

#include "Between.h"
#include "GuidedLayer.h"
#include "Kernels.h"
#include "Rows.h"
#include "SkinMap.h"
#include "SkinTexture.h"

// Two copies are worked on. On the coarse one it is settled where skin is (SkinMap.h) and what its colour is nearby. On
// the finer one SkinSmooth says what smoothing adds, and each cell's colour, put right as skin, what else is to be
// added:
//
//   p, q     the ratios of kernels/SkinTone.h of the cell, moved by `even` of the way from their mean over a spot to
//            their mean over a region of the face; less where the way is longer than that of a blotch: lips
//   chroma   turned and scaled as the recipe says
//   light    + 2.5 levels for each L* asked for, at level 128; less towards black and white, where nothing is left
//
// All of it counts by the share of skin, and is added to the picture's pixels, so that what is finer than a cell stays
// as it is. What is not skin gains local contrast: its light less that of a base layer (GuidedLayer.h).

namespace {

constexpr int CoarseCells = 200000;
// In face widths: what a spot of colour is, what a region of the face, and what local contrast.
constexpr double Spot = 0.02, Region = 0.16, Local = 0.07;
// The way in p and q that halves evening.
constexpr float WayP = 0.085f, WayQ = 0.075f;
constexpr float LevelsOfL = 2.5f;
// Mean lumas of dark and of light skin, and the part of a loss of chroma that dark skin bears.
constexpr float DarkLuma = 80.0f, LightLuma = 150.0f;
constexpr double DarkPart = 0.35;
// The part of the way to the end of the scale that light and colour may use.
constexpr float Room = 0.6f;
// Contrast in levels that counts as an edge and not as detail.
constexpr float LocalNoise = 24.0f;

int RadiusOf(double part, double face) {
    return std::max(1, static_cast<int>(std::lround(part * face)));
}

float LumaAt(const ReducedCopy& copy, int x, int y) {
    return 0.2126f * copy.Row(0, y)[x] + 0.7152f * copy.Row(1, y)[x] + 0.0722f * copy.Row(2, y)[x];
}

// Calls body(x, y) for every cell of a copy.
template <class Body>
void ForCells(const ReducedCopy& copy, const Body& body) {
    ForEachBand(copy.Rows(), GrainOf(copy.Columns()), [&](int first, int last) {
        for (int y = first; y < last; ++y)
            for (int x = 0; x < copy.Columns(); ++x) body(x, y);
    });
}

}  // namespace

// Where skin is on the coarse copy, and how far its colour is to move.
struct FaceRetouch::Skin {
    Plane share, moveP, moveQ;
    GuidedLayer base;
    float luma;  // mean of the person's skin, in levels

    Skin(const ReducedCopy& copy, double face, const Recipe::Face& recipe)
        : Skin(copy, SkinMaps(copy, face), face, recipe) {}

  private:
    Skin(const ReducedCopy& copy, const SkinMaps& maps, double face, const Recipe::Face& recipe);
    static GuidedLayer BaseOf(const ReducedCopy& copy, double face, bool wanted) {
        Plane luma(copy.Columns(), copy.Rows());
        if (wanted) ForCells(copy, [&](int x, int y) { luma.Row(y)[x] = LumaAt(copy, x, y); });
        return GuidedLayer(luma, RadiusOf(Local, face), LocalNoise);
    }
};

FaceRetouch::Skin::Skin(const ReducedCopy& copy, const SkinMaps& maps, double face, const Recipe::Face& recipe)
    : share(FaceShares(copy, maps, face)), base(BaseOf(copy, face, recipe.clarity > 0)), luma(maps.meanLuma) {
    // Means over skin alone: sums of what counts by its share, over the sums of the shares.
    Plane p = share, q = share;
    const float usualP = maps.meanP, usualQ = maps.meanQ;
    ForCells(copy, [&](int x, int y) {
        const float red = std::max(copy.Row(0, y)[x], 1.0f), weight = share.Row(y)[x];
        p.Row(y)[x] = weight * ((copy.Row(0, y)[x] - copy.Row(1, y)[x]) / red - usualP);
        q.Row(y)[x] = weight * ((copy.Row(1, y)[x] - copy.Row(2, y)[x]) / red - usualQ);
    });
    const int spot = RadiusOf(Spot, face), region = RadiusOf(Region, face);
    const Plane spotSum = BoxMean(share, spot), regionSum = BoxMean(share, region);
    const Plane spotP = BoxMean(p, spot), spotQ = BoxMean(q, spot);
    const Plane regionP = BoxMean(p, region), regionQ = BoxMean(q, region);
    moveP = std::move(p);
    moveQ = std::move(q);
    const auto even = static_cast<float>(recipe.even * 0.01);
    ForCells(copy, [&](int x, int y) {
        const float ofSpot = 1.0f / (spotSum.Row(y)[x] + 1e-3f), ofRegion = 1.0f / (regionSum.Row(y)[x] + 1e-3f);
        const float wayP = regionP.Row(y)[x] * ofRegion - spotP.Row(y)[x] * ofSpot;
        const float wayQ = regionQ.Row(y)[x] * ofRegion - spotQ.Row(y)[x] * ofSpot;
        const float away = (wayP * wayP) / (WayP * WayP) + (wayQ * wayQ) / (WayQ * WayQ);
        const float part = even / (1.0f + away * away);
        moveP.Row(y)[x] = part * wayP;
        moveQ.Row(y)[x] = part * wayQ;
    });
}

namespace {

// What skin of one colour becomes.
class SkinColour {
  public:
    // `luma` is the mean of the person's skin.
    SkinColour(const Recipe::Face& face, float luma) : m_levels(LevelsOfL * static_cast<float>(face.light)) {
        const double angle = face.turn * 0.017453292519943295, chroma = ChromaOf(face.saturation * 0.01, luma);
        m_cosine = static_cast<float>(std::cos(angle) * chroma);
        m_sine = static_cast<float>(std::sin(angle) * chroma);
    }

    // Adds to `change` what the colour gains where p and q move by so much.
    void Add(const float* colour, float moveP, float moveQ, float share, float* change) const {
        const float red = std::max(colour[0], 1.0f);
        const float luma = 0.2126f * colour[0] + 0.7152f * colour[1] + 0.0722f * colour[2];
        const float p = (red - colour[1]) / red + moveP, q = (colour[1] - colour[2]) / red + moveQ;
        // The colour of the same light with these ratios.
        const float evened = luma / std::max(0.2126f + 0.7152f * (1.0f - p) + 0.0722f * (1.0f - p - q), 0.1f);
        const float light = luma * (255.0f - luma) * (4.0f / (255.0f * 255.0f));
        const float target = luma + m_levels * light;
        const float gain = 0.5f + 0.5f * target / std::max(luma, 1.0f);
        // Chroma in the plane across the grey axis: along red, and from blue to green.
        const float along = evened * (p + 0.5f * q), across = 0.8660254f * evened * q;
        const float a = (along * m_cosine - across * m_sine) * gain, b = (along * m_sine + across * m_cosine) * gain;
        float out[3] = {a * (2.0f / 3.0f), -a / 3.0f + b * 0.5773503f, -a / 3.0f - b * 0.5773503f};
        const float rise = target - (0.2126f * out[0] + 0.7152f * out[1] + 0.0722f * out[2]);
        // Bright skin gains less, so that its texture still has room.
        float asked = 0.0f;
        for (int c = 0; c < 3; ++c) {
            out[c] += rise - colour[c];
            const float room = out[c] > 0.0f ? 255.0f - colour[c] : colour[c];
            asked = std::max(asked, std::abs(out[c]) / (Room * room + 0.5f));
        }
        const float given = share / std::sqrt(1.0f + asked * asked);
        for (int c = 0; c < 3; ++c) change[c] += given * out[c];
    }

  private:
    // Dark skin turns grey with less: it loses a part only of the chroma that light skin does.
    static double ChromaOf(double asked, float luma) {
        const double light = std::clamp((luma - DarkLuma) / (LightLuma - DarkLuma), 0.0f, 1.0f);
        return asked < 1.0 ? 1.0 - (1.0 - asked) * (DarkPart + (1.0 - DarkPart) * light) : asked;
    }

    float m_levels, m_cosine, m_sine;
};

}  // namespace

FaceRetouch::FaceRetouch(const std::uint8_t* pixels, int width, int height, const Recipe::Face& face)
    : m_width(width),
      m_face(face),
      m_smoothing(pixels, width, height, static_cast<float>(face.smooth)),
      m_coarse(pixels, width, height, CoarseCells) {}

FaceRetouch::~FaceRetouch() = default;

bool FaceRetouch::Work(const ProgressSpan& span) {
    const auto [judging, smoothing, joining] = Split<3>(span, {2, 6, 1});
    if (!judging.CanContinue()) return false;
    const ReducedCopy& cells = m_smoothing.Cells();
    const double coarser = double(m_coarse.Factor()) / cells.Factor();
    m_skin = std::make_unique<Skin>(m_coarse, m_smoothing.FaceWidth() / coarser, m_face);
    judging.Report(1, 1);
    if (!m_smoothing.Work(smoothing) || !joining.CanContinue()) return false;
    Join();
    ForCells(m_coarse, [&](int x, int y) {
        m_coarse.Row(0, y)[x] = m_skin->share.Row(y)[x];
        m_coarse.Row(1, y)[x] = m_skin->base.slope.Row(y)[x];
        m_coarse.Row(2, y)[x] = m_skin->base.offset.Row(y)[x];
    });
    MapReader::CloseRows(m_smoothing.Cells().Cells(), ReducedCopy::Colours);
    MapReader::CloseRows(m_coarse.Cells(), ReducedCopy::Colours);
    m_columns = std::make_unique<MapColumns>(m_width, cells.Factor(), cells.Columns());
    m_coarseColumns = std::make_unique<MapColumns>(m_width, m_coarse.Factor(), m_coarse.Columns());
    joining.Report(1, 1);
    return true;
}

void FaceRetouch::Join() {
    ReducedCopy& cells = m_smoothing.Cells();
    const SkinColour toned(m_face, m_skin->luma);
    const SkinTexture texture(m_smoothing, m_skin->share, m_coarse.Factor());
    std::vector<Between> columns, squares;
    for (int x = 0; x < cells.Columns(); ++x) {
        columns.emplace_back(x, cells.Factor(), m_coarse.Factor(), m_coarse.Columns());
        squares.emplace_back(x, 1, texture.Side(), texture.Amount().width);
    }
    ForEachBand(cells.Rows(), GrainOf(cells.Columns()), [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            const Between row(y, cells.Factor(), m_coarse.Factor(), m_coarse.Rows());
            const Between squareRow(y, 1, texture.Side(), texture.Amount().height);
            for (int x = 0; x < cells.Columns(); ++x) {
                const auto read = [&](const Plane& plane) { return ReadBetween(plane, columns[x], row); };
                const float share = read(m_skin->share);
                const float smoothed = share * ReadBetween(texture.Amount(), squares[x], squareRow);
                float change[3], colour[3];
                for (int c = 0; c < 3; ++c) {
                    change[c] = smoothed * cells.Row(c, y)[x];
                    colour[c] = m_smoothing.FineRow(c, y)[x];
                }
                if (share > 0.0f) toned.Add(colour, read(m_skin->moveP), read(m_skin->moveQ), share, change);
                for (int c = 0; c < 3; ++c) cells.Row(c, y)[x] = change[c];
            }
        }
    });
}

int FaceRetouch::Grain() const {
    return std::max(GrainOf(m_width), 4 * m_coarse.Factor());
}

FaceRetouch::Rows::Rows(const FaceRetouch& retouch)
    : m_retouch(retouch),
      m_corrections(retouch.Corrections().Cells(), ReducedCopy::Colours, *retouch.m_columns, retouch.m_width,
                    retouch.Corrections().Factor()),
      m_details(retouch.m_coarse.Cells(), ReducedCopy::Colours, *retouch.m_coarseColumns, retouch.m_width,
                retouch.m_coarse.Factor()) {}

void FaceRetouch::Rows::Apply(std::uint8_t* row, int y) {
    MappedRow corrections, details;
    m_corrections.MoveTo(y, corrections.above, corrections.below, &corrections.part);
    const auto clarity = static_cast<float>(m_retouch.m_face.clarity * 0.01);
    if (clarity > 0.0f) m_details.MoveTo(y, details.above, details.below, &details.part);
    Kernels().faceRow(row, m_retouch.m_width, corrections, details, clarity);
}
