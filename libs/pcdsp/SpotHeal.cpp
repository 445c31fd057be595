// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpotHeal.h"

#include <cmath>
#include <cstring>

#include "LightPlane.h"
#include "Membrane.h"
#include "PatchMix.h"
#include "PatchSearch.h"
#include "PlaneBlur.h"
#include "SpotPlace.h"

// A group of touching marks is filled with what lies in places whose surroundings look like its own (PatchSearch.h,
// PatchMix.h), brought to the light around it (LightPlane.h) and blended into the border by a membrane (Membrane.h).
//
// A spot is seldom marked to its last trace. Where the border is off the skin around it in the direction in which the
// spot itself is, that part is a trace of the spot: it fades quickly on the way inwards instead of tinting the whole
// disc. What else differs is light, and is carried all through.

namespace {

constexpr int Colours = SpotPlace::Colours;
constexpr int Margin = 8;                               // pixels round the hole in which patches are mixed
constexpr int Most = 12;                                // patches that are mixed
constexpr float GrainSigma = 1.5f;                      // grain is luma less its Gaussian of so many pixels
constexpr float GrainLevel = 0.96f;                     // what is foreseen of a place is less than what is there
constexpr float LeastEvened = 0.5f, MostEvened = 2.0f;  // times its grain that a fill gets
constexpr float Evened = 1.15f;                         // what is added to the finest band is not all of that band
constexpr float Ring = 3.0f;                            // pixels right round the hole whose grain it gets
constexpr float MostSquare = 20.0f;                     // times the middle one: what is grain
constexpr float LeastTold = 5.0f;                  // the radius from which a trace, or grain, is told from features
constexpr float TraceReach = 0.15f;                // radii in which a trace of the spot fades
constexpr float Faint = 3.0f, Strong = 8.0f;       // levels by which a spot is none, and surely one, beside the skin
constexpr float SureTrace = 0.6f, NoTrace = 0.9f;  // parts of the spot itself: more than that is no trace of a spot

// The span of one group of several.
ProgressSpan PartOf(const ProgressSpan& span, std::size_t index, std::size_t count) {
    const auto at = [&](std::size_t i) {
        return span.start + static_cast<int>((span.end - span.start) * double(i) / double(count));
    };
    return {span.sink, at(index), at(index + 1)};
}

// The root of the mean of squares, none of which counts more than some times the middle one, so that a hair is not
// taken for grain. Reorders; 0 for none.
float HeldRoot(std::vector<float>& squares) {
    if (squares.empty()) return 0.0f;
    const auto middle = squares.begin() + static_cast<std::ptrdiff_t>(squares.size() / 2);
    std::nth_element(squares.begin(), middle, squares.end());
    const float most = MostSquare * *middle;
    float sum = 0.0f;
    for (const float square : squares) sum += std::min(square, most);
    return std::sqrt(sum / static_cast<float>(squares.size()));
}

class Healing {
  public:
    Healing(const SpotPlace& place, const Pace& pace)
        : m_place(place),
          m_pace(pace),
          m_box(place.hole.Grown(Margin).Within(place.holes.Bounds())),
          m_fill(Colours, m_box.Width(), m_box.Height()),
          m_lack(Colours, m_box.Width(), m_box.Height()),
          m_holes(m_box.Width(), m_box.Height()) {
        for (int y = 0; y < m_holes.height; ++y)
            std::copy_n(place.holes.Row(m_box.top + y) + m_box.left, m_holes.width, m_holes.Row(y));
    }

    // False where nothing is known, or when it was stopped.
    bool Fill(const ProgressSpan& span) {
        if (std::all_of(m_holes.holes.begin(), m_holes.holes.end(), [](std::uint8_t h) { return h != 0; }))
            return false;
        const std::vector<Patch> patches = FindPatches(m_place.colours, m_place.holes, Most, m_pace);
        span.Report(1, 3);
        if (!m_pace.GoesOn()) return false;
        if (patches.empty()) {
            ForEachRow(m_fill, [&](int c, int y, int width) { std::fill_n(m_fill.Row(c, y), width, 0.0f); });
        } else {
            const PatchMix mix(m_place, patches);
            mix.Fill(m_box, m_fill, m_pace);
            LightPlane(m_place, mix).AddTo(m_place, m_box, m_fill);
        }
        span.Report(2, 3);
        if (!m_pace.GoesOn()) return false;
        Blend(!patches.empty());
        if (!patches.empty() && m_place.radius >= LeastTold) EvenGrain();
        return m_pace.GoesOn();
    }

    void Write(std::uint8_t* pixels, int width, const MarkGroup& group) const {
        const int left = m_place.area.left + m_box.left, top = m_place.area.top + m_box.top;
        for (const MarkRun& run : group.runs) {
            std::uint8_t* to = pixels + 4 * (std::ptrdiff_t{width} * run.y + run.left);
            for (int x = run.left; x < run.right; ++x, to += 4)
                for (int c = 0; c < Colours; ++c)
                    to[c] = static_cast<std::uint8_t>(
                        std::clamp(m_fill.Row(c, run.y - top)[x - left] + 0.5f, 0.0f, 255.0f));
        }
    }

  private:
    void Blend(bool mayShowTraces) {
        ForEachRow(m_lack, [&](int c, int y, int width) {
            const float* const known = m_place.colours.Row(c, m_box.top + y) + m_box.left;
            for (int x = 0; x < width; ++x) m_lack.Row(c, y)[x] = known[x] - m_fill.Row(c, y)[x];
        });
        float trace[Colours] = {};
        if (!m_pace.GoesOn()) return;
        if (mayShowTraces && m_place.radius >= LeastTold) FindTrace(trace);
        ForEachRow(m_lack, [&](int c, int y, int width) {
            for (int x = 0; x < width; ++x) m_lack.Row(c, y)[x] -= trace[c];
        });
        FillWithMembrane(m_lack, Colours, m_holes, 0.0f, m_pace);
        ForEachRow(m_lack, [&](int c, int y, int width) {
            for (int x = 0; x < width; ++x) m_fill.Row(c, y)[x] += m_lack.Row(c, y)[x];
        });
        AddTrace(trace);
    }

    bool IsBorder(int x, int y) const {
        if (m_holes.Row(y)[x]) return false;
        const PixelRect near = PixelRect{x, y, x + 1, y + 1}.Grown(1).Within(m_holes.Bounds());
        for (int v = near.top; v < near.bottom; ++v)
            for (int u = near.left; u < near.right; ++u)
                if (m_holes.Row(v)[u] & HoleMap::Own) return true;
        return false;
    }

    // What the border has of the spot, in levels: the part of its mean that points where the mean of the spot points.
    void FindTrace(float* trace) const {
        double border[Colours] = {}, spot[Colours] = {};
        int borderCount = 0, spotCount = 0;
        for (int y = 0; y < m_holes.height; ++y)
            for (int x = 0; x < m_holes.width; ++x) {
                const bool isSpot = m_holes.Row(y)[x] & HoleMap::Own, isBorder = !isSpot && IsBorder(x, y);
                spotCount += isSpot;
                borderCount += isBorder;
                for (int c = 0; c < Colours; ++c) {
                    if (isSpot) spot[c] += m_lack.Row(c, y)[x];
                    if (isBorder) border[c] += m_lack.Row(c, y)[x];
                }
            }
        double along = 0.0, square = 0.0;
        for (int c = 0; c < Colours; ++c) {
            spot[c] /= std::max(1, spotCount);
            along += spot[c] * border[c] / std::max(1, borderCount);
            square += spot[c] * spot[c];
        }
        if (square <= 0.0) return;
        const auto size = static_cast<float>(std::sqrt(square / Colours)), part = static_cast<float>(along / square);
        const float sure = std::clamp((size - Faint) / (Strong - Faint), 0.0f, 1.0f) *
                           std::clamp((NoTrace - part) / (NoTrace - SureTrace), 0.0f, 1.0f);
        for (int c = 0; c < Colours; ++c) trace[c] = sure * std::max(0.0f, part) * static_cast<float>(spot[c]);
    }

    void AddTrace(const float* trace) {
        if (trace[0] == 0.0f && trace[1] == 0.0f && trace[2] == 0.0f) return;
        Planes fading(1, m_holes.width, m_holes.height);
        for (int y = 0; y < m_holes.height; ++y) std::fill_n(fading.Row(0, y), m_holes.width, 1.0f);
        FillWithMembrane(fading, 1, m_holes, TraceReach * m_place.radius, m_pace);
        ForEachRow(m_fill, [&](int c, int y, int width) {
            for (int x = 0; x < width; ++x) m_fill.Row(c, y)[x] += trace[c] * fading.Row(0, y)[x];
        });
    }

    // Neither is grain alike everywhere nor does blending leave it as it was: brings it to the strength that it has
    // right around, in the whole picture.
    void EvenGrain() {
        Planes all(Colours, m_holes.width, m_holes.height), soft(Colours, m_holes.width, m_holes.height);
        ForEachRow(all, [&](int c, int y, int width) {
            const float* const known = m_place.colours.Row(c, m_box.top + y) + m_box.left;
            for (int x = 0; x < width; ++x)
                all.Row(c, y)[x] = soft.Row(c, y)[x] =
                    m_holes.Row(y)[x] & HoleMap::Own ? m_fill.Row(c, y)[x] : known[x];
        });
        BlurPlanes(soft, GrainSigma, m_pace);
        if (!m_pace.GoesOn()) return;
        const float more = MoreGrain(all, soft);
        ForEachRow(m_fill, [&](int c, int y, int width) {
            for (int x = 0; x < width; ++x) m_fill.Row(c, y)[x] += more * (all.Row(c, y)[x] - soft.Row(c, y)[x]);
        });
    }

    // What the fill's grain, which is `all` less `soft`, needs more of itself to be as strong as that of the ring right
    // round the hole; 0 where nothing is known there.
    float MoreGrain(const Planes& all, const Planes& soft) const {
        std::vector<float> filled, around;
        const PixelRect hole = m_place.hole.Moved(-m_box.left, -m_box.top);
        const float middleX = 0.5f * static_cast<float>(hole.left + hole.right - 1),
                    middleY = 0.5f * static_cast<float>(hole.top + hole.bottom - 1);
        for (int y = 0; y < m_holes.height; ++y)
            for (int x = 0; x < m_holes.width; ++x) {
                const bool isHole = m_holes.Row(y)[x], isOwn = m_holes.Row(y)[x] & HoleMap::Own;
                const float away = std::hypot(static_cast<float>(x) - middleX, static_cast<float>(y) - middleY);
                if (!isOwn && (isHole || away > m_place.radius + Ring)) continue;
                const float d = LumaAt(all, x, y) - LumaAt(soft, x, y);
                (isOwn ? filled : around).push_back(d * d);
            }
        if (around.empty()) return 0.0f;
        const float wanted = GrainLevel * HeldRoot(around), is = HeldRoot(filled);
        return Evened * (std::clamp(wanted / std::max(0.1f, is), LeastEvened, MostEvened) - 1.0f);
    }

    const SpotPlace& m_place;
    const Pace& m_pace;
    PixelRect m_box;  // of the place
    Planes m_fill;
    Planes m_lack;  // what the picture has more than the fill
    HoleMap m_holes;
};

}  // namespace

bool HealSpots(std::uint8_t* pixels, int width, int height, const std::uint8_t* mask, std::uint32_t colour,
               const PixelRect& marks, const ProgressSpan& span) {
    const std::vector<MarkRun> runs = RunsOf(marks, [&](int x, int y) {
        std::uint32_t value;
        std::memcpy(&value, mask + 4 * (std::ptrdiff_t{width} * y + x), sizeof value);
        return value == colour;
    });
    const std::vector<MarkGroup> groups = GroupsOf(runs);
    const Pace pace(span);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (!pace.GoesOn()) return false;
        const ProgressSpan part = PartOf(span, i, groups.size());
        const SpotPlace place(pixels, width, height, runs, groups[i], pace);
        Healing healing(place, pace);
        const bool isFilled = healing.Fill(part);
        // Nothing was written so far.
        if (!pace.GoesOn()) return false;
        if (isFilled) healing.Write(pixels, width, groups[i]);
        part.Report(1, 1);
    }
    return true;
}
