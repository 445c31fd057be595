// SPDX-License-Identifier: GPL-3.0-or-later
#include "CircleSkin.h"

#include <cmath>
#include <utility>

#include "MapReader.h"
#include "Rows.h"
#include "SoftFall.h"

namespace {

constexpr int Colours = CircleSkin::Colours;
constexpr float LowSigma = 0.15f;                 // of the mark's thickness: what is finer is texture
constexpr float BandFrom = 0.15f, BandTo = 1.0f;  // the cheek, in thicknesses below the mark
constexpr float Along = 0.05f;                    // of the mark's width within which the cheek's colour is a mean
// Of a cell, in parts of the usual skin's: luma between which it counts less and less as skin, below and above; warmth,
// which is red less blue in parts of red, likewise.
constexpr float ShadeFrom = 0.545f, ShadeTo = 0.42f, DeepSkin = 20.0f, GlossFrom = 1.5f, GlossTo = 1.9f;
constexpr float ColdFrom = 0.57f, ColdTo = 0.33f, RedFrom = 1.8f, RedTo = 2.6f, LeastWarmth = 0.06f;
// Likewise of the cheek: of what its light, and what its colour is taken from.
constexpr float AimFrom = 1.3f, AimTo = 1.6f, DullFrom = 1.1f, DullTo = 1.35f;
constexpr float UsualPart = 0.35f;  // of the cells are darker than usual skin: circle, eye, lashes

// Dark skin has deeper shadows in parts of its luma.
float LightOf(const float* colour, const float* usual) {
    return (LumaOf(colour) + DeepSkin) / (LumaOf(usual) + DeepSkin);
}

float WarmthOf(const float* bgr) {
    return (bgr[2] - bgr[0]) / std::max(bgr[2], 1.0f);
}

// How much of a colour is skin, by what skin is here: lashes and pupils are far darker than a shadow on it, the white
// of an eye and gloss are lighter, or have less of its warmth, which also shadows that look blue keep the most of.
float ShareOfSkin(const float* colour, const float* usual) {
    const float light = LightOf(colour, usual);
    const float share = Rise(light, ShadeTo, ShadeFrom) * Fall(light, GlossFrom, GlossTo);
    // A picture without colour has none to tell by.
    if (WarmthOf(usual) < LeastWarmth) return share;
    const float warm = WarmthOf(colour) / WarmthOf(usual);
    return share * Rise(warm, ColdTo, ColdFrom) * Fall(warm, RedFrom, RedTo);
}

// Of the cheek's cells, by how much gloss they have at most: that of the light to aim at, since gloss is no skin, and
// that of the colour, which is spoiled by less of it: it would lie on the skin as grey.
struct CheekSums {
    float bright[Colours + 1] = {}, dull[Colours + 1] = {};

    void Add(const float* colour, const float* usual, float weight) {
        const float light = LightOf(colour, usual);
        AddTo(bright, colour, weight * (1e-3f + Fall(light, AimFrom, AimTo)));
        AddTo(dull, colour, weight * (1e-3f + Fall(light, DullFrom, DullTo)));
    }
    void Add(const CheekSums& other, float share) {
        for (int i = 0; i <= Colours; ++i) {
            bright[i] += share * other.bright[i];
            dull[i] += share * other.dull[i];
        }
    }
    float Weight() const { return bright[Colours]; }
    // The colour of the dull ones in the light of the brighter ones.
    void Mean(float* colour) const {
        const float light = LumaOf(bright) / bright[Colours], dullLight = LumaOf(dull) / dull[Colours];
        for (int c = 0; c < Colours; ++c) colour[c] = dull[c] / dull[Colours] * light / std::max(1.0f, dullLight);
    }

  private:
    static void AddTo(float* sums, const float* colour, float weight) {
        sums[Colours] += weight;
        for (int c = 0; c < Colours; ++c) sums[c] += weight * colour[c];
    }
};

}  // namespace

CircleSkin::CircleSkin(const std::uint8_t* pixels, int width, const PixelRect& area, const MarkGroup& group, int factor,
                       const Pace& pace)
    : m_factor(factor),
      m_markedColumns(std::max(1, group.box.Width() / factor)),
      m_cells(Colours, (area.Width() + factor - 1) / factor, (area.Height() + factor - 1) / factor),
      m_low(Colours, m_cells.Width(), m_cells.Height()),
      m_marked(std::size_t(m_cells.Width()) * m_cells.Height(), 0.0f),
      m_weights(m_marked.size(), 1.0f),
      m_shares(1, m_cells.Width(), m_cells.Height()) {
    pace.ForRows(m_cells.Height(), std::max(1, GrainOf(area.Width()) / factor), [&](int first, int last) {
        for (int y = first; y < last; ++y)
            for (int x = 0; x < m_cells.Width(); ++x) {
                const PixelRect cell =
                    PixelRect{0, 0, factor, factor}.Moved(area.left + x * factor, area.top + y * factor).Within(area);
                int sums[Colours] = {};
                for (int v = cell.top; v < cell.bottom; ++v) {
                    const std::uint8_t* p = pixels + 4 * (std::ptrdiff_t{width} * v + cell.left);
                    for (int u = cell.left; u < cell.right; ++u, p += 4)
                        for (int c = 0; c < Colours; ++c) sums[c] += p[c];
                }
                const float per = 1.0f / static_cast<float>(cell.Width() * cell.Height());
                for (int c = 0; c < Colours; ++c) m_cells.Row(c, y)[x] = per * static_cast<float>(sums[c]);
            }
    });
    const float per = 1.0f / static_cast<float>(factor * factor);
    for (const MarkRun& run : group.runs)
        for (int x = run.left; x < run.right; ++x)
            m_marked[IndexOf((x - area.left) / factor, (run.y - area.top) / factor)] += per;
}

// The mark, and what lies below it as far as the cheek is looked at.
void CircleSkin::FindSkin(float thickness) {
    m_skin.assign(m_marked.size(), 0);
    const int below = std::max(1, static_cast<int>(BandTo * thickness));
    for (int x = 0; x < m_cells.Width(); ++x) {
        int left = 0;
        for (int y = 0; y < m_cells.Height(); ++y) {
            left = IsMarked(x, y) ? below + 1 : left - 1;
            m_skin[IndexOf(x, y)] = left > 0;
        }
    }
}

// The cell of a usual luma in the mark and the cheek below it, or else all round it: a gloss on the cheek alone would
// make skin in its shadow look like no skin at all.
void CircleSkin::FindUsual(float thickness) {
    std::vector<std::pair<float, std::size_t>> cells;
    const auto add = [&](int x, int y) { cells.emplace_back(LumaOf(ColourAt(x, y).data()), IndexOf(x, y)); };
    ForCheek(thickness, add);
    const bool hasCheek = !cells.empty();
    ForCells([&](int x, int y) {
        const float marked = m_marked[IndexOf(x, y)];
        if (marked > 0.5f || (!hasCheek && marked == 0.0f)) add(x, y);
    });
    if (cells.empty()) return;
    const auto middle = cells.begin() + static_cast<std::ptrdiff_t>(UsualPart * static_cast<float>(cells.size()));
    std::nth_element(cells.begin(), middle, cells.end());
    const auto columns = static_cast<std::size_t>(m_cells.Width());
    m_usual = ColourAt(static_cast<int>(middle->second % columns), static_cast<int>(middle->second / columns));
}

void CircleSkin::WeighSkin() {
    ForCells([&](int x, int y) {
        m_shares.Row(0, y)[x] = ShareOfSkin(ColourAt(x, y).data(), m_usual.data());
        Weight(x, y) = IsSkin(x, y) ? m_shares.Row(0, y)[x] : 0.0f;
    });
}

// A Gaussian of the cells by their weights.
void CircleSkin::SmoothSkin(float sigma, const Pace& pace) {
    const int width = m_cells.Width(), height = m_cells.Height(), half = static_cast<int>(std::ceil(2.5f * sigma));
    std::vector<float> taps(half + 1);
    for (int i = 0; i <= half; ++i) taps[i] = std::exp(-0.5f * static_cast<float>(i * i) / (sigma * sigma));
    Planes across(Colours + 1, width, height);
    const auto forCells = [&](const auto& body) {
        pace.ForRows(height, GrainOf(width * half), [&](int first, int last) {
            for (int y = first; y < last; ++y)
                for (int x = 0; x < width; ++x) body(x, y);
        });
    };
    forCells([&](int x, int y) {
        float sums[Colours + 1] = {};
        for (int u = std::max(0, x - half); u <= std::min(width - 1, x + half); ++u) {
            const float share = taps[std::abs(u - x)] * (Weight(u, y) + 1e-4f);
            sums[Colours] += share;
            for (int c = 0; c < Colours; ++c) sums[c] += share * m_cells.Row(c, y)[u];
        }
        for (int c = 0; c <= Colours; ++c) across.Row(c, y)[x] = sums[c];
    });
    forCells([&](int x, int y) {
        float sums[Colours + 1] = {};
        for (int v = std::max(0, y - half); v <= std::min(height - 1, y + half); ++v)
            for (int c = 0; c <= Colours; ++c) sums[c] += taps[std::abs(v - y)] * across.Row(c, v)[x];
        for (int c = 0; c < Colours; ++c) m_low.Row(c, y)[x] = sums[c] / sums[Colours];
    });
}

template <class Body>
void CircleSkin::ForCheek(float thickness, const Body& body) const {
    const auto from = static_cast<int>(BandFrom * thickness),
               to = std::max(from + 1, static_cast<int>(BandTo * thickness));
    for (int x = 0; x < m_cells.Width(); ++x) {
        int bottom = m_cells.Height() - 1;
        while (bottom >= 0 && !IsMarked(x, bottom)) --bottom;
        if (bottom < 0) continue;
        for (int y = bottom + 1 + from; y < std::min(m_cells.Height(), bottom + 1 + to); ++y) body(x, y);
    }
}

bool CircleSkin::FindCheek(float thickness) {
    const int width = m_cells.Width();
    std::vector<CheekSums> columns(width);
    ForCheek(thickness, [&](int x, int y) { columns[x].Add(ColourAt(x, y).data(), m_usual.data(), Weight(x, y)); });
    float total = 0.0f;
    for (const CheekSums& column : columns) total += column.Weight();
    // Without a cheek in the picture the skin around has to do.
    if (total < 0.5f)
        ForCells([&](int x, int y) {
            if (m_marked[IndexOf(x, y)] == 0.0f) columns[x].Add(ColourAt(x, y).data(), m_usual.data(), 1.0f);
        });
    const float sigma = std::max(1.0f, Along * static_cast<float>(m_markedColumns));
    m_cheek.assign(std::size_t(Colours) * width, 0.0f);
    bool any = false;
    for (int x = 0; x < width; ++x) {
        CheekSums near;
        for (int u = 0; u < width; ++u) {
            const float d = static_cast<float>(u - x) / sigma;
            near.Add(columns[u], std::exp(-0.5f * d * d) + 1e-4f);
        }
        if (near.Weight() <= 0.0f) continue;
        any = true;
        near.Mean(&m_cheek[std::size_t(Colours) * x]);
    }
    return any;
}

bool CircleSkin::Measure(float thickness, const Pace& pace) {
    const float cells = thickness / static_cast<float>(m_factor), sigma = std::max(0.7f, LowSigma * cells);
    if (!pace.GoesOn()) return false;
    FindSkin(cells);
    FindUsual(cells);
    WeighSkin();
    SmoothSkin(sigma, pace);
    if (!FindCheek(cells) || !pace.GoesOn()) return false;
    MapReader::CloseRows(m_low, Colours);
    MapReader::CloseRows(m_shares, 1);
    return true;
}

float CircleSkin::UsualGap() const {
    float sum = 0.0f, count = 0.0f;
    ForCells([&](int x, int y) {
        if (!IsMarked(x, y)) return;
        const float low[] = {m_low.Row(0, y)[x], m_low.Row(1, y)[x], m_low.Row(2, y)[x]};
        sum += std::abs(LumaOf(Cheek(x)) - LumaOf(low));
        ++count;
    });
    return std::max(1.0f, sum / std::max(1.0f, count));
}
