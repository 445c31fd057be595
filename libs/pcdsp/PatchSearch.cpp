// SPDX-License-Identifier: GPL-3.0-or-later
#include "PatchSearch.h"

#include <cmath>
#include <memory>

#include "Rows.h"

// Every place within the planes is tried on a reduced copy in which the hole is a few cells wide; the best ones are
// then sharpened on copies of twice the size each. What is compared is the band of known pixels round the hole: the
// difference less its mean, since the mean is evened out when the patch is blended in, and a little of the mean, since
// near light is better light. A place whose inside stands out from its own band more than the band itself varies is
// another spot, and costs that much more.

namespace {

constexpr int Colours = 3;
constexpr float MeanWeight = 0.05f, InsideWeight = 0.5f;
constexpr std::size_t MostInside = 240, MostBand = 480;  // pixels that are compared
constexpr int SmallHole = 8;                             // half the width in cells at which every place is tried
constexpr int Tries = 48, FineTries = 20;                // places that are sharpened, at first and on the finer copies
constexpr int Band = 3, CoarseBand = 2;                  // width of the band, in pixels and in cells

struct Level {
    Planes colours;
    HoleMap hole;

    Level(int width, int height) : colours(Colours, width, height), hole(width, height) {}
};

// Half the size, rounded up; a cell with any hole is one. An odd last row or column is its own pair.
void HalveRows(const Planes& colours, const HoleMap& hole, Level& half, int from, int to) {
    const int pairs = hole.width / 2, last = hole.width - 1;
    for (int y = from; y < to; ++y) {
        const int above = 2 * y, below = std::min(2 * y + 1, hole.height - 1);
        for (int c = 0; c < Colours; ++c) {
            const float* const a = colours.Row(c, above);
            const float* const b = colours.Row(c, below);
            float* const out = half.colours.Row(c, y);
            for (int x = 0; x < pairs; ++x) out[x] = 0.25f * (a[2 * x] + a[2 * x + 1] + b[2 * x] + b[2 * x + 1]);
            if (2 * pairs == last) out[pairs] = 0.5f * (a[last] + b[last]);
        }
        const std::uint8_t* const a = hole.Row(above);
        const std::uint8_t* const b = hole.Row(below);
        std::uint8_t* const out = half.hole.Row(y);
        for (int x = 0; x < pairs; ++x) out[x] = a[2 * x] | a[2 * x + 1] | b[2 * x] | b[2 * x + 1];
        if (2 * pairs == last) out[pairs] = a[last] | b[last];
    }
}

std::unique_ptr<Level> Halved(const Planes& colours, const HoleMap& hole, const Pace& pace) {
    auto half = std::make_unique<Level>((hole.width + 1) / 2, (hole.height + 1) / 2);
    pace.ForRows(half->hole.height, GrainOf(hole.width),
                 [&](int from, int to) { HalveRows(colours, hole, *half, from, to); });
    return half;
}

PixelRect BoxOf(const HoleMap& hole) {
    PixelRect box{hole.width, hole.height, 0, 0};
    for (int y = 0; y < hole.height; ++y)
        for (int x = 0; x < hole.width; ++x)
            if (hole.Row(y)[x] & HoleMap::Own) {
                box.left = std::min(box.left, x);
                box.right = std::max(box.right, x + 1);
                box.top = std::min(box.top, y);
                box.bottom = y + 1;
            }
    return box;
}

struct Cell {
    std::ptrdiff_t offset;  // from the plane's first value
    float colour[Colours];
};

// The hole at one level, and the known band round it.
class Seeker {
  public:
    Seeker(const Planes& colours, const HoleMap& hole, int band, const Pace& pace)
        : m_colours(colours), m_hole(hole), m_pitch(hole.height > 1 ? colours.Row(0, 1) - colours.Row(0, 0) : 0) {
        const PixelRect inner = BoxOf(hole);
        m_box = inner.Grown(band).Within(hole.Bounds());
        for (int y = m_box.top; y < m_box.bottom && pace.GoesOn(); ++y)
            for (int x = m_box.left; x < m_box.right; ++x)
                if (hole.Row(y)[x] & HoleMap::Own)
                    m_inside.push_back({OffsetOf(x, y), {}});
                else if (!hole.Row(y)[x] && NearHole(x, y, band))
                    m_band.push_back(
                        {OffsetOf(x, y), {colours.Row(0, y)[x], colours.Row(1, y)[x], colours.Row(2, y)[x]}});
        Thin(m_inside, MostInside);
        Thin(m_band, MostBand);
        MakeSums(pace);
    }

    // The ways that keep the box within the planes.
    PixelRect Ways() const {
        return {-m_box.left, -m_box.top, m_hole.width - m_box.right + 1, m_hole.height - m_box.bottom + 1};
    }

    // True where the moved box holds no hole.
    bool IsFree(int dx, int dy) const {
        const PixelRect box = m_box.Moved(dx, dy);
        if (box.left < 0 || box.top < 0 || box.right > m_hole.width || box.bottom > m_hole.height) return false;
        return SumTo(box.right, box.bottom) - SumTo(box.left, box.bottom) - SumTo(box.right, box.top) +
                   SumTo(box.left, box.top) ==
               0;
    }

    float CostOf(int dx, int dy) const {
        const std::ptrdiff_t way = OffsetOf(dx, dy);
        float cost = 0.0f;
        const auto count = static_cast<float>(std::max<std::size_t>(1, m_band.size()));
        for (int c = 0; c < Colours; ++c) {
            const float* const plane = m_colours.Row(c, 0);
            float sum = 0.0f, squares = 0.0f, there = 0.0f, thereSquares = 0.0f;
            for (const Cell& cell : m_band) {
                const float value = plane[cell.offset + way], d = cell.colour[c] - value;
                sum += d;
                squares += d * d;
                there += value;
                thereSquares += value * value;
            }
            const float mean = sum / count, thereMean = there / count;
            cost += squares / count - (1.0f - MeanWeight) * mean * mean;
            float inside = 0.0f;
            for (const Cell& cell : m_inside) {
                const float d = plane[cell.offset + way] - thereMean;
                inside += d * d;
            }
            inside /= static_cast<float>(m_inside.size());
            cost += InsideWeight * std::max(0.0f, inside - (thereSquares / count - thereMean * thereMean));
        }
        return cost;
    }

  private:
    // Keeps every n-th, so that a cost is no dearer on a large mark.
    static void Thin(std::vector<Cell>& cells, std::size_t most) {
        const std::size_t step = (cells.size() + most - 1) / most;
        if (step < 2) return;
        std::size_t kept = 0;
        for (std::size_t i = 0; i < cells.size(); i += step) cells[kept++] = cells[i];
        cells.resize(kept);
    }
    std::ptrdiff_t OffsetOf(int x, int y) const { return m_pitch * y + x; }
    bool NearHole(int x, int y, int band) const {
        const PixelRect near = PixelRect{x, y, x + 1, y + 1}.Grown(band).Within(m_hole.Bounds());
        for (int v = near.top; v < near.bottom; ++v)
            for (int u = near.left; u < near.right; ++u)
                if ((m_hole.Row(v)[u] & HoleMap::Own) && (u - x) * (u - x) + (v - y) * (v - y) <= band * band)
                    return true;
        return false;
    }
    void MakeSums(const Pace& pace) {
        m_sums = std::make_unique_for_overwrite<int[]>(std::size_t(m_hole.width + 1) * (m_hole.height + 1));
        std::fill_n(m_sums.get(), m_hole.width + 1, 0);
        pace.ForRows(m_hole.height, GrainOf(m_hole.width), [&](int first, int last) {
            for (int y = first; y < last; ++y) {
                int* const sums = SumsOf(y + 1);
                sums[0] = 0;
                for (int x = 0; x < m_hole.width; ++x) sums[x + 1] = sums[x] + (m_hole.Row(y)[x] != 0);
            }
        });
        if (!pace.GoesOn()) return;
        for (int y = 1; y <= m_hole.height && (y % 64 != 0 || pace.GoesOn()); ++y) {
            const int* const above = SumsOf(y - 1);
            int* const sums = SumsOf(y);
            for (int x = 1; x <= m_hole.width; ++x) sums[x] += above[x];
        }
    }
    int* SumsOf(int y) const { return m_sums.get() + std::size_t(m_hole.width + 1) * y; }
    int SumTo(int x, int y) const { return SumsOf(y)[x]; }

    const Planes& m_colours;
    const HoleMap& m_hole;
    std::ptrdiff_t m_pitch;
    PixelRect m_box;
    std::vector<Cell> m_band, m_inside;
    std::unique_ptr<int[]> m_sums;
};

// Best first; equal ones in the order of reading, so that the choice is always the same.
void Sort(std::vector<Patch>& patches) {
    std::stable_sort(patches.begin(), patches.end(), [](const Patch& a, const Patch& b) { return a.cost < b.cost; });
}

// Keeps the best, of neighbours only one.
std::vector<Patch> Apart(const std::vector<Patch>& sorted, int most) {
    std::vector<Patch> kept;
    for (const Patch& patch : sorted) {
        if (static_cast<int>(kept.size()) == most) break;
        const bool isNew = std::none_of(kept.begin(), kept.end(), [&](const Patch& other) {
            return std::abs(other.dx - patch.dx) < 2 && std::abs(other.dy - patch.dy) < 2;
        });
        if (isNew) kept.push_back(patch);
    }
    return kept;
}

std::vector<Patch> TryAll(const Seeker& seeker, const Pace& pace) {
    const PixelRect ways = seeker.Ways();
    std::vector<std::vector<Patch>> rows(std::max(0, ways.Height()));
    pace.ForRows(ways.Height(), 4, [&](int first, int last) {
        for (int i = first; i < last; ++i)
            for (int dx = ways.left; dx < ways.right; ++dx)
                if (seeker.IsFree(dx, ways.top + i))
                    rows[i].push_back({dx, ways.top + i, seeker.CostOf(dx, ways.top + i)});
    });
    std::vector<Patch> all;
    for (const std::vector<Patch>& row : rows) all.insert(all.end(), row.begin(), row.end());
    Sort(all);
    return all;
}

// The eight neighbours of twice the way, and the way itself.
std::vector<Patch> Sharpened(const Seeker& seeker, const std::vector<Patch>& coarse) {
    std::vector<Patch> all(coarse.size() * 9);
    ForEachBand(static_cast<int>(coarse.size()), 4, [&](int first, int last) {
        for (int i = first; i < last; ++i)
            for (int k = 0; k < 9; ++k) {
                const int dx = 2 * coarse[i].dx + k % 3 - 1, dy = 2 * coarse[i].dy + k / 3 - 1;
                const bool isFree = seeker.IsFree(dx, dy);
                all[9 * i + k] = {dx, dy, isFree ? seeker.CostOf(dx, dy) : -1.0f};
            }
    });
    std::erase_if(all, [](const Patch& patch) { return patch.cost < 0.0f; });
    Sort(all);
    return all;
}

}  // namespace

std::vector<Patch> FindPatches(const Planes& colours, const HoleMap& hole, int most, const Pace& pace) {
    const PixelRect box = BoxOf(hole);
    if (box.IsEmpty()) return {};
    std::vector<std::unique_ptr<Level>> levels;
    for (int size = std::max(box.Width(), box.Height()) / 2; size > SmallHole; size /= 2)
        levels.push_back(Halved(levels.empty() ? colours : levels.back()->colours,
                                levels.empty() ? hole : levels.back()->hole, pace));
    std::vector<Patch> patches;
    for (int i = static_cast<int>(levels.size()) - 1; i >= -1; --i) {
        if (!pace.GoesOn()) return {};
        const Seeker seeker(i < 0 ? colours : levels[i]->colours, i < 0 ? hole : levels[i]->hole,
                            i < 0 ? Band : CoarseBand, pace);
        if (!pace.GoesOn()) return {};
        const bool isFirst = i == static_cast<int>(levels.size()) - 1;
        patches = Apart(isFirst ? TryAll(seeker, pace) : Sharpened(seeker, patches), i < 0     ? most
                                                                                     : isFirst ? Tries
                                                                                               : FineTries);
    }
    if (!pace.GoesOn()) patches.clear();
    return patches;
}
