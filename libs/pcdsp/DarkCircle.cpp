// SPDX-License-Identifier: GPL-3.0-or-later
#include "DarkCircle.h"

#include <cmath>
#include <utility>
#include <vector>

#include "MapReader.h"
#include "MarkGroups.h"
#include "Pace.h"
#include "Planes.h"
#include "Rows.h"

// What is moved is the skin's low frequencies, from a reduced copy in which what is not this skin (lashes, the eye,
// gloss) hardly counts: towards the colour of a band of cheek below the mark, column by column, since the light falls
// from one side. The same number is added to a pixel and to its neighbours, so that texture stays as it is. Pixels that
// stand out from the skin as lashes and the eye do get nothing, and at the mark's border the change begins with 0. What
// is far darker than the rest of the mark is the shade of a lid or of the nose, and is not lifted as far as that.

namespace {

constexpr int Colours = 3;
constexpr float MostClosed = 0.7f;  // of the gap at the greatest strength
constexpr int StrengthSteps = 10;
constexpr float CellsToMark = 20.0f;              // cells across the thinner side of a mark
constexpr float LowSigma = 0.15f;                 // of that side: what is finer is texture
constexpr float BandFrom = 0.15f, BandTo = 1.0f;  // the cheek, in thinner sides below the mark
constexpr float Along = 0.05f;                    // of the mark's width within which the cheek's colour is a mean
// What the soft border lacks is made up for inside by no more than this: light up to the whole gap, colour less, since
// it is seen sooner.
constexpr float MostLightRaised = 1.43f, MostColourRaised = 1.3f;
constexpr float Feather = 0.4f;  // of the brush's radius
constexpr float MostGap = 2.3f;  // times the usual gap: what is darker is no circle
constexpr float Ends = 0.18f;    // of the mark's width: there skin turns away, and lies in other light
constexpr float Usual = 150.0f;  // the luma at which the next limits hold; they go with the light
// Of a cell, in parts of the usual skin's: luma between which it counts less and less as skin, below and above; warmth,
// which is red less blue in parts of red, likewise.
constexpr float ShadeFrom = 0.545f, ShadeTo = 0.42f, DeepSkin = 20.0f, GlossFrom = 1.5f, GlossTo = 1.9f;
constexpr float ColdFrom = 0.57f, ColdTo = 0.33f, RedFrom = 1.8f, RedTo = 2.6f, LeastWarmth = 0.06f;
constexpr float AimFrom = 1.3f, AimTo = 1.6f;  // likewise, of the cheek
constexpr float UsualPart = 0.35f;             // of the cells are darker than usual skin: circle, eye, lashes
// Of a pixel, in levels at that luma, from the skin of its cells.
constexpr float DarkFrom = 40.0f, DarkTo = 100.0f;     // lashes: levels below the skin
constexpr float LightFrom = 34.0f, LightTo = 70.0f;    // gloss and the white of the eye: above it
constexpr float ColourFrom = 30.0f, ColourTo = 60.0f;  // the eye: red less blue

float Luma(const float* c) {
    return 0.0722f * c[0] + 0.7152f * c[1] + 0.2126f * c[2];
}

// 1 up to `from`, 0 from `to` on.
float Fall(float v, float from, float to) {
    const float t = std::clamp((v - from) / (to - from), 0.0f, 1.0f);
    return 1.0f - t * t * (3.0f - 2.0f * t);
}

std::vector<MarkRun> RunsOf(const std::uint8_t* mask, int width, const PixelRect& marks) {
    std::vector<MarkRun> runs;
    for (int y = marks.top; y < marks.bottom; ++y) {
        const std::uint8_t* const alpha = mask + std::ptrdiff_t{4} * width * y + 3;
        for (int x = marks.left; x < marks.right; ++x) {
            if (!alpha[std::ptrdiff_t{4} * x]) continue;
            const int left = x;
            while (x < marks.right && alpha[std::ptrdiff_t{4} * x]) ++x;
            runs.push_back({y, left, x});
        }
    }
    return runs;
}

// How much of the change each pixel of a mark gets: 0 outside, rising to 1 on the way inwards. The picture's own border
// is none of the mark's.
class Softness {
  public:
    Softness(const MarkGroup& group, const PixelRect& picture)
        : m_box(group.box.Grown(1)), m_ways(std::size_t(m_box.Width()) * m_box.Height(), 0.0f) {
        for (const MarkRun& run : group.runs) std::fill_n(&m_ways[IndexOf(run.left, run.y)], run.right - run.left, Far);
        const PixelRect seen = m_box.Within(picture);
        for (int y = m_box.top; y < m_box.bottom; ++y)
            for (int x = m_box.left; x < m_box.right; ++x)
                if (x < seen.left || x >= seen.right || y < seen.top || y >= seen.bottom) m_ways[IndexOf(x, y)] = Far;
        // The way to the nearest pixel outside in steps along rows, columns and diagonals, there and back (Borgefors
        // 1986).
        for (int y = m_box.top + 1; y < m_box.bottom; ++y)
            for (int x = m_box.left + 1; x + 1 < m_box.right; ++x) Near(x, y, -1);
        for (int y = m_box.bottom - 2; y >= m_box.top; --y)
            for (int x = m_box.right - 2; x > m_box.left; --x) Near(x, y, 1);
        // On a mark that leaves no border in the picture every way is far.
        for (const MarkRun& run : group.runs)
            for (int x = run.left; x < run.right; ++x) m_most = std::max(m_most, m_ways[IndexOf(x, run.y)]);
        m_most = std::min(m_most, 0.5f * static_cast<float>(std::min(group.box.Width(), group.box.Height())));
    }

    // Twice the longest way: the mark's thickness in pixels.
    float Thickness() const { return std::max(1.0f, 2.0f * m_most); }
    // Turns ways into shares, 1 from `feather` on, and `ends` away from the mark's left and right end.
    void Soften(float feather, float ends) {
        m_along.resize(m_box.Width());
        for (int x = 0; x < m_box.Width(); ++x)
            m_along[x] = 1.0f - Fall(static_cast<float>(std::min(x, m_box.Width() - 1 - x)), 0.5f, 0.5f + ends);
        for (int y = 0; y < m_box.Height(); ++y)
            for (int x = 0; x < m_box.Width(); ++x) {
                float& way = m_ways[std::size_t(m_box.Width()) * y + x];
                way = m_along[x] * (1.0f - Fall(way, 0.5f, 0.5f + feather));
            }
    }

    float At(int x, int y) const { return m_ways[IndexOf(x, y)]; }
    // The share by the ends alone.
    float Along(int x) const { return m_along[x - m_box.left]; }

  private:
    static constexpr float Far = 1e6f;
    std::size_t IndexOf(int x, int y) const { return std::size_t(m_box.Width()) * (y - m_box.top) + (x - m_box.left); }
    void Near(int x, int y, int side) {
        float& way = m_ways[IndexOf(x, y)];
        way = std::min({way, m_ways[IndexOf(x + side, y)] + 1.0f, m_ways[IndexOf(x, y + side)] + 1.0f,
                        m_ways[IndexOf(x - 1, y + side)] + 1.41f, m_ways[IndexOf(x + 1, y + side)] + 1.41f});
    }

    PixelRect m_box;
    std::vector<float> m_ways, m_along;
    float m_most = 0.0f;
};

// How much of a colour is skin, by what skin is here: lashes and pupils are far darker than a shadow on it, the white
// of an eye and gloss are lighter, or have less of its warmth, which also shadows that look blue keep the most of.
float ShareOfSkin(const float* colour, const float* usual) {
    const auto warmth = [](const float* c) { return (c[2] - c[0]) / std::max(c[2], 1.0f); };
    // Dark skin has deeper shadows in parts of its luma.
    const float light = (Luma(colour) + DeepSkin) / (Luma(usual) + DeepSkin);
    const float share = Fall(-light, -ShadeFrom, -ShadeTo) * Fall(light, GlossFrom, GlossTo);
    // A picture without colour has none to tell by.
    if (warmth(usual) < LeastWarmth) return share;
    const float warm = warmth(colour) / warmth(usual);
    return share * Fall(-warm, -ColdFrom, -ColdTo) * Fall(warm, RedFrom, RedTo);
}

// A gloss on the cheek is nothing to aim at: it would lie on the skin as grey.
float ShareWithoutGloss(const float* colour, const float* usual) {
    const float light = (Luma(colour) + DeepSkin) / (Luma(usual) + DeepSkin);
    return 1e-3f + Fall(light, AimFrom, AimTo);
}

// The skin round one mark in cells, and the cheek's colour for each column of them.
class Skin {
  public:
    Skin(const std::uint8_t* pixels, int width, const PixelRect& area, const MarkGroup& group, int factor,
         const Pace& pace);

    // False when there is no cheek to go by, or when it was stopped.
    bool Measure(float thickness, const Pace& pace);
    // The mean gap between the marked skin and the cheek, in levels of luma; at least 1.
    float UsualGap() const;
    const Planes& Low() const { return m_low; }
    const float* Cheek(int column) const { return &m_cheek[std::size_t(Colours) * column]; }
    int Factor() const { return m_factor; }
    int Columns() const { return m_cells.Width(); }
    const Planes& Shares() const { return m_shares; }
    void CloseRows() {
        MapReader::CloseRows(m_low, Colours);
        MapReader::CloseRows(m_shares, 1);
    }

  private:
    template <class Body>
    void ForCells(const Body& body) const {
        for (int y = 0; y < m_cells.Height(); ++y)
            for (int x = 0; x < m_cells.Width(); ++x) body(x, y);
    }
    float& Weight(int x, int y) { return m_weights[std::size_t(m_cells.Width()) * y + x]; }
    bool IsMarked(int x, int y) const { return m_marked[std::size_t(m_cells.Width()) * y + x] > 0.5f; }
    bool IsSkin(int x, int y) const { return m_skin[std::size_t(m_cells.Width()) * y + x]; }
    void FindSkin(float thickness);
    // Calls body(x, y) for the cells of the cheek below the mark.
    template <class Body>
    void ForCheek(float thickness, const Body& body) const;
    void FindUsual(float thickness);
    void WeighSkin();
    void SmoothSkin(float sigma, const Pace& pace);
    bool FindCheek(float thickness);

    PixelRect m_area;
    int m_factor, m_markedColumns;
    Planes m_cells, m_low;
    std::vector<std::uint8_t> m_skin;  // the mark and the cheek below it
    std::vector<float> m_marked, m_weights, m_cheek;
    Planes m_shares;           // of skin in a cell
    float m_usual[Colours]{};  // the skin's colour
};

Skin::Skin(const std::uint8_t* pixels, int width, const PixelRect& area, const MarkGroup& group, int factor,
           const Pace& pace)
    : m_area(area),
      m_factor(factor),
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
            m_marked[std::size_t(m_cells.Width()) * ((run.y - area.top) / factor) + (x - area.left) / factor] += per;
}

// The mark, and what lies below it as far as the cheek is looked at.
void Skin::FindSkin(float thickness) {
    m_skin.assign(m_marked.size(), 0);
    const int below = std::max(1, static_cast<int>(BandTo * thickness));
    for (int x = 0; x < m_cells.Width(); ++x) {
        int left = 0;
        for (int y = 0; y < m_cells.Height(); ++y) {
            left = IsMarked(x, y) ? below + 1 : left - 1;
            m_skin[std::size_t(m_cells.Width()) * y + x] = left > 0;
        }
    }
}

// The cell of a usual luma in the mark and the cheek below it, or else all round it: a gloss on the cheek alone would
// make skin in its shadow look like no skin at all.
void Skin::FindUsual(float thickness) {
    std::vector<std::pair<float, std::ptrdiff_t>> cells;
    const auto add = [&](int x, int y) {
        const float colour[] = {m_cells.Row(0, y)[x], m_cells.Row(1, y)[x], m_cells.Row(2, y)[x]};
        cells.emplace_back(Luma(colour), std::ptrdiff_t{m_cells.Width()} * y + x);
    };
    ForCheek(thickness, add);
    const bool hasCheek = !cells.empty();
    ForCells([&](int x, int y) {
        const float marked = m_marked[std::size_t(m_cells.Width()) * y + x];
        if (marked > 0.5f || (!hasCheek && marked == 0.0f)) add(x, y);
    });
    if (cells.empty()) return;
    const auto middle = cells.begin() + static_cast<std::ptrdiff_t>(UsualPart * static_cast<float>(cells.size()));
    std::nth_element(cells.begin(), middle, cells.end());
    for (int c = 0; c < Colours; ++c)
        m_usual[c] =
            m_cells.Row(c, static_cast<int>(middle->second / m_cells.Width()))[middle->second % m_cells.Width()];
}

void Skin::WeighSkin() {
    ForCells([&](int x, int y) {
        const float colour[] = {m_cells.Row(0, y)[x], m_cells.Row(1, y)[x], m_cells.Row(2, y)[x]};
        m_shares.Row(0, y)[x] = ShareOfSkin(colour, m_usual);
        Weight(x, y) = IsSkin(x, y) ? m_shares.Row(0, y)[x] : 0.0f;
    });
}

// A Gaussian of the cells by their weights.
void Skin::SmoothSkin(float sigma, const Pace& pace) {
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
void Skin::ForCheek(float thickness, const Body& body) const {
    const auto from = static_cast<int>(BandFrom * thickness),
               to = std::max(from + 1, static_cast<int>(BandTo * thickness));
    for (int x = 0; x < m_cells.Width(); ++x) {
        int bottom = m_cells.Height() - 1;
        while (bottom >= 0 && !IsMarked(x, bottom)) --bottom;
        if (bottom < 0) continue;
        for (int y = bottom + 1 + from; y < std::min(m_cells.Height(), bottom + 1 + to); ++y) body(x, y);
    }
}

bool Skin::FindCheek(float thickness) {
    const int width = m_cells.Width();
    std::vector<float> sums(std::size_t(Colours + 1) * width, 0.0f);
    const auto add = [&](int x, int y) {
        const float colour[] = {m_cells.Row(0, y)[x], m_cells.Row(1, y)[x], m_cells.Row(2, y)[x]};
        const float weight = Weight(x, y) * ShareWithoutGloss(colour, m_usual);
        sums[std::size_t(Colours + 1) * x + Colours] += weight;
        for (int c = 0; c < Colours; ++c) sums[std::size_t(Colours + 1) * x + c] += weight * m_cells.Row(c, y)[x];
    };
    ForCheek(thickness, add);
    float total = 0.0f;
    for (int x = 0; x < width; ++x) total += sums[std::size_t(Colours + 1) * x + Colours];
    // Without a cheek in the picture the skin around has to do.
    if (total < 0.5f)
        ForCells([&](int x, int y) {
            if (m_marked[std::size_t(width) * y + x] > 0.0f) return;
            Weight(x, y) = 1.0f;
            add(x, y);
        });
    const float sigma = std::max(1.0f, Along * static_cast<float>(m_markedColumns));
    m_cheek.assign(std::size_t(Colours) * width, 0.0f);
    bool any = false;
    for (int x = 0; x < width; ++x) {
        float weights = 0.0f, means[Colours] = {};
        for (int u = 0; u < width; ++u) {
            const float d = static_cast<float>(u - x) / sigma, share = std::exp(-0.5f * d * d) + 1e-4f;
            weights += share * sums[std::size_t(Colours + 1) * u + Colours];
            for (int c = 0; c < Colours; ++c) means[c] += share * sums[std::size_t(Colours + 1) * u + c];
        }
        if (weights <= 0.0f) continue;
        any = true;
        for (int c = 0; c < Colours; ++c) m_cheek[std::size_t(Colours) * x + c] = means[c] / weights;
    }
    return any;
}

bool Skin::Measure(float thickness, const Pace& pace) {
    const float cells = thickness / static_cast<float>(m_factor), sigma = std::max(0.7f, LowSigma * cells);
    if (!pace.GoesOn()) return false;
    FindSkin(cells);
    FindUsual(cells);
    WeighSkin();
    SmoothSkin(sigma, pace);
    return FindCheek(cells) && pace.GoesOn();
}

float Skin::UsualGap() const {
    float sum = 0.0f, count = 0.0f;
    ForCells([&](int x, int y) {
        if (!IsMarked(x, y)) return;
        const float low[] = {m_low.Row(0, y)[x], m_low.Row(1, y)[x], m_low.Row(2, y)[x]};
        sum += std::abs(Luma(Cheek(x)) - Luma(low));
        ++count;
    });
    return std::max(1.0f, sum / std::max(1.0f, count));
}

// Whether a pixel belongs to the skin that a map cell shows: lashes and the eye don't.
float Likeness(const std::uint8_t* p, const float* low) {
    const float colour[] = {float(p[0]), float(p[1]), float(p[2])};
    const float luma = Luma(low), limit = (luma + 40.0f) / (Usual + 40.0f);
    const float above = (Luma(colour) - luma) / limit;
    const float red = std::abs((colour[2] - colour[0]) - (low[2] - low[0])) / limit;
    return Fall(-above, DarkFrom, DarkTo) * Fall(above, LightFrom, LightTo) * Fall(red, ColourFrom, ColourTo);
}

// What is asked for and what is done in one run of a mark.
struct Sums {
    double gap[Colours] = {}, closed[Colours] = {};
};

// Parts of the gap: in luma, and in what is left without it.
struct Parts {
    float light, colour;
};

float RaiseOf(float gap, float closed, float most) {
    return closed > 0.0f ? std::clamp(gap / closed, 1.0f, most) : 1.0f;
}

class Repair {
  public:
    // Is to close `part` of the gap.
    Repair(std::uint8_t* pixels, int width, int height, const MarkGroup& group, int radius, float part,
           const Pace& pace);
    // Writes; nothing where there is no cheek to go by, or when it was stopped before.
    void Close();

  private:
    // Calls body(run's index, x, pixel, low, cheek, how much of the pixel is skin, softness) for all pixels of the
    // mark.
    template <class Body>
    void ForMarked(const Body& body) const;
    // What must be closed where the share is 1, so that `part` of the gap is closed in the mean of the marked skin, of
    // which the ends count less.
    Parts Raised(float part) const;

    std::uint8_t* m_pixels;
    int m_width;
    const MarkGroup& m_group;
    Softness m_softness;
    float m_thickness;
    PixelRect m_area;
    Skin m_skin;
    bool m_hasCheek;
    float m_mostGap;  // towards which what is closed is held
    Parts m_parts{};
};

PixelRect AreaOf(const MarkGroup& group, float thickness, const PixelRect& picture) {
    const int around = std::max(4, static_cast<int>(thickness));
    PixelRect area = group.box.Grown(around / 2);
    area.bottom += around;
    return area.Within(picture);
}

Repair::Repair(std::uint8_t* pixels, int width, int height, const MarkGroup& group, int radius, float part,
               const Pace& pace)
    : m_pixels(pixels),
      m_width(width),
      m_group(group),
      m_softness(group, {0, 0, width, height}),
      m_thickness(m_softness.Thickness()),
      m_area(AreaOf(group, m_thickness, {0, 0, width, height})),
      m_skin(pixels, width, m_area, group, std::max(1, static_cast<int>(m_thickness / CellsToMark)), pace),
      m_hasCheek(m_skin.Measure(m_thickness, pace)),
      m_mostGap(m_hasCheek ? MostGap * m_skin.UsualGap() : 1.0f) {
    m_softness.Soften(std::max(1.5f, Feather * std::min(static_cast<float>(radius), 0.5f * m_thickness)),
                      Ends * static_cast<float>(group.box.Width()));
    m_skin.CloseRows();
    if (m_hasCheek) m_parts = Raised(part);
}

template <class Body>
void Repair::ForMarked(const Body& body) const {
    const MapColumns columns(m_area.Width(), m_skin.Factor(), m_skin.Columns());
    ForEachBand(static_cast<int>(m_group.runs.size()), GrainOf(m_group.box.Width()), [&](int first, int last) {
        MapReader reader(m_skin.Low(), Colours, columns, m_area.Width(), m_skin.Factor());
        MapReader skin(m_skin.Shares(), 1, columns, m_area.Width(), m_skin.Factor());
        const float *above[Colours], *below[Colours], *skinAbove, *skinBelow;
        float down = 0.0f;
        for (int i = first; i < last; ++i) {
            const MarkRun& run = m_group.runs[i];
            reader.MoveTo(run.y - m_area.top, above, below, &down);
            skin.MoveTo(run.y - m_area.top, &skinAbove, &skinBelow, &down);
            std::uint8_t* p = m_pixels + 4 * (std::ptrdiff_t{m_width} * run.y + run.left);
            for (int x = run.left; x < run.right; ++x, p += 4) {
                const int u = x - m_area.left, column = columns.index[u];
                const float* const here = m_skin.Cheek(column);
                const float* const next = m_skin.Cheek(std::min(column + 1, m_skin.Columns() - 1));
                float low[Colours], cheek[Colours];
                for (int c = 0; c < Colours; ++c) {
                    low[c] = above[c][u] + down * (below[c][u] - above[c][u]);
                    cheek[c] = here[c] + columns.part[u] * (next[c] - here[c]);
                }
                const float times = (Luma(cheek) - Luma(low)) / m_mostGap;
                const float held = 1.0f / std::sqrt(std::sqrt(1.0f + times * times * times * times));
                const float share = skinAbove[u] + down * (skinBelow[u] - skinAbove[u]);
                body(i, x, p, low, cheek, share * Likeness(p, low), held * m_softness.At(x, run.y));
            }
        }
    });
}

Parts Repair::Raised(float part) const {
    std::vector<Sums> runs(m_group.runs.size());
    ForMarked([&](int i, int x, const std::uint8_t* p, const float* low, const float* cheek, float skin, float soft) {
        const double like = m_softness.Along(x) * skin;
        for (int c = 0; c < Colours; ++c) {
            runs[i].gap[c] += like * (cheek[c] - p[c]);
            runs[i].closed[c] += like * soft * (cheek[c] - low[c]);
        }
    });
    float gap[Colours] = {}, closed[Colours] = {};
    for (int c = 0; c < Colours; ++c) {
        double gaps = 0.0, closings = 0.0;
        for (const Sums& run : runs) {
            gaps += run.gap[c];
            closings += run.closed[c];
        }
        gap[c] = static_cast<float>(gaps);
        closed[c] = static_cast<float>(closings);
    }
    const float light = Luma(gap), lightClosed = Luma(closed);
    float colour = 0.0f, colourClosed = 0.0f;
    for (int c = 0; c < Colours; ++c) {
        colour += (gap[c] - light) * (gap[c] - light);
        colourClosed += (gap[c] - light) * (closed[c] - lightClosed);
    }
    return {part * RaiseOf(light * light, light * lightClosed, MostLightRaised),
            part * RaiseOf(colour, colourClosed, MostColourRaised)};
}

void Repair::Close() {
    if (!m_hasCheek) return;
    ForMarked([&](int, int, std::uint8_t* p, const float* low, const float* cheek, float skin, float soft) {
        const float share = skin * soft;
        const float light = Luma(cheek) - Luma(low);
        for (int c = 0; c < Colours; ++c) {
            const float change = m_parts.light * light + m_parts.colour * (cheek[c] - low[c] - light);
            p[c] = static_cast<std::uint8_t>(std::clamp(p[c] + share * change + 0.5f, 0.0f, 255.0f));
        }
    });
}

}  // namespace

bool LightenCircles(std::uint8_t* pixels, int width, int height, const std::uint8_t* mask, int radius, int strength,
                    const PixelRect& marks, const ProgressSpan& span) {
    const std::vector<MarkGroup> groups = GroupsOf(RunsOf(mask, width, marks));
    const float part = MostClosed * static_cast<float>(strength) / StrengthSteps;
    const Pace pace(span);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (!pace.GoesOn()) return false;
        Repair repair(pixels, width, height, groups[i], radius, part, pace);
        // Nothing was written so far.
        if (!pace.GoesOn()) return false;
        repair.Close();
        span.Report(static_cast<double>(i + 1), static_cast<double>(groups.size()));
    }
    return true;
}
