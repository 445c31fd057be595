// SPDX-License-Identifier: GPL-3.0-or-later
#include "DarkCircle.h"

#include <cmath>
#include <vector>

#include "CircleSkin.h"
#include "MapReader.h"
#include "MarkSoftness.h"
#include "Rows.h"
#include "SoftFall.h"

// What is moved is the skin's low frequencies, from a reduced copy in which what is not this skin (lashes, the eye,
// gloss) hardly counts: towards the colour of a band of cheek below the mark, column by column, since the light falls
// from one side. The same number is added to a pixel and to its neighbours, so that texture stays as it is. Pixels that
// stand out from the skin as lashes and the eye do get nothing, and at the mark's border the change begins with 0. What
// is far darker than the rest of the mark is the shade of a lid or of the nose, and is not lifted as far as that.

namespace {

constexpr int Colours = CircleSkin::Colours;
constexpr float MostClosed = 0.7f;  // of the gap at the greatest strength
constexpr int StrengthSteps = 10;
constexpr float CellsToMark = 20.0f;  // cells across the thinner side of a mark
// What the soft border lacks is made up for inside by no more than this: light up to the whole gap, colour less, since
// it is seen sooner.
constexpr float MostLightRaised = 1.43f, MostColourRaised = 1.3f;
constexpr float Feather = 0.4f;  // of the brush's radius
constexpr float MostGap = 2.3f;  // times the usual gap: what is darker is no circle
constexpr float Ends = 0.18f;    // of the mark's width: there skin turns away, and lies in other light
constexpr float Usual = 150.0f;  // the luma at which the next limits hold; they go with the light
// Of a pixel, in levels at that luma, from the skin of its cells.
constexpr float DarkFrom = 40.0f, DarkTo = 100.0f;     // lashes: levels below the skin
constexpr float LightFrom = 34.0f, LightTo = 70.0f;    // gloss and the white of the eye: above it
constexpr float ColourFrom = 30.0f, ColourTo = 60.0f;  // the eye: red less blue

// Whether a pixel belongs to the skin that a map cell shows: lashes and the eye don't.
float Likeness(const std::uint8_t* p, const float* low) {
    const float colour[] = {float(p[0]), float(p[1]), float(p[2])};
    const float luma = LumaOf(low), limit = (luma + 40.0f) / (Usual + 40.0f);
    const float above = (LumaOf(colour) - luma) / limit;
    const float red = std::abs((colour[2] - colour[0]) - (low[2] - low[0])) / limit;
    return Rise(above, -DarkTo, -DarkFrom) * Fall(above, LightFrom, LightTo) * Fall(red, ColourFrom, ColourTo);
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
    MarkSoftness m_softness;
    float m_thickness;
    PixelRect m_area;
    CircleSkin m_skin;
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
                const float times = (LumaOf(cheek) - LumaOf(low)) / m_mostGap;
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
    const float light = LumaOf(gap), lightClosed = LumaOf(closed);
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
        const float light = LumaOf(cheek) - LumaOf(low);
        for (int c = 0; c < Colours; ++c) {
            const float change = m_parts.light * light + m_parts.colour * (cheek[c] - low[c] - light);
            p[c] = static_cast<std::uint8_t>(std::clamp(p[c] + share * change + 0.5f, 0.0f, 255.0f));
        }
    });
}

}  // namespace

bool LightenCircles(std::uint8_t* pixels, int width, int height, const std::uint8_t* mask, int radius, int strength,
                    const PixelRect& marks, const ProgressSpan& span) {
    const auto isMarked = [&](int x, int y) { return mask[4 * (std::ptrdiff_t{width} * y + x) + 3] != 0; };
    const std::vector<MarkGroup> groups = GroupsOf(RunsOf(marks, isMarked));
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
