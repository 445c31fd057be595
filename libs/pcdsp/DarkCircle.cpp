// SPDX-License-Identifier: GPL-3.0-or-later
#include "DarkCircle.h"

#include <cmath>
#include <tuple>
#include <vector>

#include "MapReader.h"
#include "MarkGroups.h"
#include "Planes.h"
#include "Rows.h"

// What is moved is the skin's low frequencies, from a reduced copy in which what is not this skin (lashes, the eye,
// gloss) hardly counts: towards the colour of a band of cheek below the mark, column by column, since the light falls
// from one side. The same number is added to a pixel and to its neighbours, so that texture stays as it is. Pixels that
// stand out from the skin as lashes and the eye do get nothing, and at the mark's border the change begins with 0.

namespace {

constexpr int Colours = 3;
constexpr float MostClosed = 0.7f;  // of the gap at the greatest strength
constexpr int StrengthSteps = 10;
constexpr float CellsToMark = 20.0f;              // cells across the thinner side of a mark
constexpr float LowSigma = 0.22f;                 // of that side: what is finer is texture
constexpr float BandFrom = 0.15f, BandTo = 1.0f;  // the cheek, in thinner sides below the mark
constexpr float Along = 0.05f;                    // of the mark's width within which the cheek's colour is a mean
constexpr float MostRaised = 1.35f;   // what the soft border lacks is made up for inside by no more than this
constexpr float Feather = 0.5f;       // of the brush's radius
constexpr float Usual = 150.0f;       // the luma at which the next limits hold; they go with the light
constexpr float LocalSpread = 13.0f;  // levels that halve a cell's weight
constexpr float DarkFrom = 28.0f, DarkTo = 75.0f;      // lashes: levels below the skin
constexpr float LightFrom = 22.0f, LightTo = 48.0f;    // gloss and the white of the eye: above it
constexpr float ColourFrom = 22.0f, ColourTo = 48.0f;  // the eye: red less blue

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
    // Turns ways into shares, 1 from `feather` on.
    void Soften(float feather) {
        for (float& way : m_ways) way = 1.0f - Fall(way, 0.5f, 0.5f + feather);
    }

    float At(int x, int y) const { return m_ways[IndexOf(x, y)]; }

  private:
    static constexpr float Far = 1e6f;
    std::size_t IndexOf(int x, int y) const { return std::size_t(m_box.Width()) * (y - m_box.top) + (x - m_box.left); }
    void Near(int x, int y, int side) {
        float& way = m_ways[IndexOf(x, y)];
        way = std::min({way, m_ways[IndexOf(x + side, y)] + 1.0f, m_ways[IndexOf(x, y + side)] + 1.0f,
                        m_ways[IndexOf(x - 1, y + side)] + 1.41f, m_ways[IndexOf(x + 1, y + side)] + 1.41f});
    }

    PixelRect m_box;
    std::vector<float> m_ways;
    float m_most = 0.0f;
};

// The skin round one mark in cells, and the cheek's colour for each column of them.
class Skin {
  public:
    Skin(const std::uint8_t* pixels, int width, const PixelRect& area, const MarkGroup& group, int factor);

    // False when there is no cheek to go by.
    bool Measure(float thickness);
    // The part of the gap that must be closed where the softness is 1, so that `part` of it is closed in all.
    float Raised(float part, const Softness& softness) const;

    const Planes& Low() const { return m_low; }
    const float* Cheek(int column) const { return &m_cheek[std::size_t(Colours) * column]; }
    int Factor() const { return m_factor; }
    int Columns() const { return m_cells.Width(); }
    void CloseRows() { MapReader::CloseRows(m_low, Colours); }

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
    void TakeMedians(int reach);
    void WeighByLow();
    void SmoothSkin(float sigma);
    bool FindCheek(float thickness);

    PixelRect m_area;
    int m_factor;
    Planes m_cells, m_low;
    std::vector<std::uint8_t> m_skin;  // the mark and the cheek below it
    std::vector<float> m_marked, m_weights, m_cheek;
};

Skin::Skin(const std::uint8_t* pixels, int width, const PixelRect& area, const MarkGroup& group, int factor)
    : m_area(area),
      m_factor(factor),
      m_cells(Colours, (area.Width() + factor - 1) / factor, (area.Height() + factor - 1) / factor),
      m_low(Colours, m_cells.Width(), m_cells.Height()),
      m_marked(std::size_t(m_cells.Width()) * m_cells.Height(), 0.0f),
      m_weights(m_marked.size(), 1.0f) {
    ForEachBand(m_cells.Height(), std::max(1, GrainOf(area.Width()) / factor), [&](int first, int last) {
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

// The colour of the cell of middle luma within `reach` cells.
void Skin::TakeMedians(int reach) {
    const PixelRect bounds{0, 0, m_cells.Width(), m_cells.Height()};
    const int step = 1 + reach / 4;  // every other cell says as much
    ForEachBand(m_cells.Height(), 4, [&](int first, int last) {
        struct Near {
            float luma;
            int x, y;
        };
        std::vector<Near> cells;
        for (int y = first; y < last; ++y)
            for (int x = 0; x < m_cells.Width(); ++x) {
                const PixelRect window = PixelRect{x, y, x + 1, y + 1}.Grown(reach).Within(bounds);
                cells.clear();
                if (IsSkin(x, y))
                    for (int v = window.top; v < window.bottom; v += step)
                        for (int u = window.left; u < window.right; u += step)
                            if (IsSkin(u, v)) {
                                const float colour[] = {m_cells.Row(0, v)[u], m_cells.Row(1, v)[u],
                                                        m_cells.Row(2, v)[u]};
                                cells.push_back({Luma(colour), u, v});
                            }
                if (cells.empty()) cells.push_back({0.0f, x, y});
                const auto middle = cells.begin() + static_cast<std::ptrdiff_t>(cells.size() / 2);
                std::nth_element(cells.begin(), middle, cells.end(), [](const Near& a, const Near& b) {
                    return std::tie(a.luma, a.y, a.x) < std::tie(b.luma, b.y, b.x);
                });
                for (int c = 0; c < Colours; ++c) m_low.Row(c, y)[x] = m_cells.Row(c, middle->y)[middle->x];
            }
    });
}

void Skin::WeighByLow() {
    ForCells([&](int x, int y) {
        const float low[] = {m_low.Row(0, y)[x], m_low.Row(1, y)[x], m_low.Row(2, y)[x]};
        const float limit = LocalSpread * (Luma(low) + 40.0f) / (Usual + 40.0f);
        float away = 0.0f;
        for (int c = 0; c < Colours; ++c) {
            const float d = (m_cells.Row(c, y)[x] - low[c]) / limit;
            away += d * d / Colours;
        }
        Weight(x, y) = IsSkin(x, y) ? 1.0f / (1.0f + away * away) : 0.0f;
    });
}

// A Gaussian of the cells by their weights.
void Skin::SmoothSkin(float sigma) {
    const int width = m_cells.Width(), height = m_cells.Height(), half = static_cast<int>(std::ceil(2.5f * sigma));
    std::vector<float> taps(half + 1);
    for (int i = 0; i <= half; ++i) taps[i] = std::exp(-0.5f * static_cast<float>(i * i) / (sigma * sigma));
    Planes across(Colours + 1, width, height);
    ForCells([&](int x, int y) {
        float sums[Colours + 1] = {};
        for (int u = std::max(0, x - half); u <= std::min(width - 1, x + half); ++u) {
            const float share = taps[std::abs(u - x)] * (Weight(u, y) + 1e-4f);
            sums[Colours] += share;
            for (int c = 0; c < Colours; ++c) sums[c] += share * m_cells.Row(c, y)[u];
        }
        for (int c = 0; c <= Colours; ++c) across.Row(c, y)[x] = sums[c];
    });
    ForCells([&](int x, int y) {
        float sums[Colours + 1] = {};
        for (int v = std::max(0, y - half); v <= std::min(height - 1, y + half); ++v)
            for (int c = 0; c <= Colours; ++c) sums[c] += taps[std::abs(v - y)] * across.Row(c, v)[x];
        for (int c = 0; c < Colours; ++c) m_low.Row(c, y)[x] = sums[c] / sums[Colours];
    });
}

bool Skin::FindCheek(float thickness) {
    const int width = m_cells.Width(), height = m_cells.Height();
    const auto from = static_cast<int>(BandFrom * thickness),
               to = std::max(from + 1, static_cast<int>(BandTo * thickness));
    std::vector<float> sums(std::size_t(Colours + 1) * width, 0.0f);
    const auto add = [&](int x, int y) {
        const float weight = Weight(x, y);
        sums[std::size_t(Colours + 1) * x + Colours] += weight;
        for (int c = 0; c < Colours; ++c) sums[std::size_t(Colours + 1) * x + c] += weight * m_cells.Row(c, y)[x];
    };
    int left = width, right = 0;
    float total = 0.0f;
    for (int x = 0; x < width; ++x) {
        int bottom = height - 1;
        while (bottom >= 0 && !IsMarked(x, bottom)) --bottom;
        if (bottom < 0) continue;
        left = std::min(left, x);
        right = x + 1;
        for (int y = bottom + 1 + from; y < std::min(height, bottom + 1 + to); ++y) add(x, y);
        total += sums[std::size_t(Colours + 1) * x + Colours];
    }
    // Without a cheek in the picture the skin around has to do.
    if (total < 0.5f)
        ForCells([&](int x, int y) {
            if (m_marked[std::size_t(width) * y + x] > 0.0f) return;
            Weight(x, y) = 1.0f;
            add(x, y);
        });
    const float sigma = std::max(1.0f, Along * static_cast<float>(std::max(1, right - left)));
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

bool Skin::Measure(float thickness) {
    const float cells = thickness / static_cast<float>(m_factor), sigma = std::max(0.7f, LowSigma * cells);
    FindSkin(cells);
    TakeMedians(std::max(1, static_cast<int>(std::lround(sigma))));
    WeighByLow();
    SmoothSkin(sigma);
    return FindCheek(cells);
}

float Skin::Raised(float part, const Softness& softness) const {
    double gap[Colours] = {}, all = 0.0, soft = 0.0;
    const auto inMark = [&](const auto& body) {
        ForCells([&](int x, int y) {
            if (!IsMarked(x, y)) return;
            const PixelRect picture{m_area.left, m_area.top, m_area.right, m_area.bottom};
            const int u = std::min(m_area.left + x * m_factor + m_factor / 2, picture.right - 1);
            const int v = std::min(m_area.top + y * m_factor + m_factor / 2, picture.bottom - 1);
            double d[Colours];
            for (int c = 0; c < Colours; ++c) d[c] = Cheek(x)[c] - m_low.Row(c, y)[x];
            body(d, double(softness.At(u, v)));
        });
    };
    inMark([&](const double* d, double) {
        for (int c = 0; c < Colours; ++c) gap[c] += d[c];
    });
    inMark([&](const double* d, double share) {
        const double along = d[0] * gap[0] + d[1] * gap[1] + d[2] * gap[2];
        all += along;
        soft += share * along;
    });
    const double raise = soft > 0.0 ? std::clamp(all / soft, 1.0, double(MostRaised)) : 1.0;
    return std::min(1.0f, part * static_cast<float>(raise));
}

// Whether a pixel belongs to the skin that a map cell shows: lashes and the eye don't.
float Likeness(const std::uint8_t* p, const float* low) {
    const float colour[] = {float(p[0]), float(p[1]), float(p[2])};
    const float luma = Luma(low), limit = (luma + 40.0f) / (Usual + 40.0f);
    const float above = (Luma(colour) - luma) / limit;
    const float red = std::abs((colour[2] - colour[0]) - (low[2] - low[0])) / limit;
    return Fall(-above, DarkFrom, DarkTo) * Fall(above, LightFrom, LightTo) * Fall(red, ColourFrom, ColourTo);
}

bool Repair(std::uint8_t* pixels, int width, int height, const MarkGroup& group, int radius, float part) {
    const PixelRect picture{0, 0, width, height};
    Softness softness(group, picture);
    const float thickness = softness.Thickness();
    const int around = std::max(4, static_cast<int>(thickness));
    PixelRect area = group.box.Grown(around / 2);
    area.bottom += around;
    area = area.Within(picture);
    Skin skin(pixels, width, area, group, std::max(1, static_cast<int>(thickness / CellsToMark)));
    if (!skin.Measure(thickness)) return false;
    softness.Soften(std::max(1.5f, Feather * std::min(static_cast<float>(radius), 0.5f * thickness)));
    const float raised = skin.Raised(part, softness);
    skin.CloseRows();
    const MapColumns columns(area.Width(), skin.Factor(), skin.Columns());
    ForEachBand(static_cast<int>(group.runs.size()), GrainOf(group.box.Width()), [&](int first, int last) {
        MapReader reader(skin.Low(), Colours, columns, area.Width(), skin.Factor());
        const float* above[Colours];
        const float* below[Colours];
        float down = 0.0f;
        for (int i = first; i < last; ++i) {
            const MarkRun& run = group.runs[i];
            reader.MoveTo(run.y - area.top, above, below, &down);
            std::uint8_t* p = pixels + 4 * (std::ptrdiff_t{width} * run.y + run.left);
            for (int x = run.left; x < run.right; ++x, p += 4) {
                const int u = x - area.left, column = columns.index[u];
                const float* const here = skin.Cheek(column);
                const float* const next = skin.Cheek(std::min(column + 1, skin.Columns() - 1));
                float low[Colours];
                for (int c = 0; c < Colours; ++c) low[c] = above[c][u] + down * (below[c][u] - above[c][u]);
                const float share = raised * softness.At(x, run.y) * Likeness(p, low);
                for (int c = 0; c < Colours; ++c) {
                    const float cheek = here[c] + columns.part[u] * (next[c] - here[c]);
                    p[c] = static_cast<std::uint8_t>(std::clamp(p[c] + share * (cheek - low[c]) + 0.5f, 0.0f, 255.0f));
                }
            }
        }
    });
    return true;
}

}  // namespace

bool LightenCircles(std::uint8_t* pixels, int width, int height, const std::uint8_t* mask, int radius, int strength,
                    const PixelRect& marks, const ProgressSpan& span) {
    const std::vector<MarkGroup> groups = GroupsOf(RunsOf(mask, width, marks));
    const float part = MostClosed * static_cast<float>(strength) / StrengthSteps;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (!span.CanContinue()) return false;
        Repair(pixels, width, height, groups[i], radius, part);
        span.Report(static_cast<double>(i + 1), static_cast<double>(groups.size()));
    }
    return true;
}
