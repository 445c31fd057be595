// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColourPart.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double Luma[3] = {0.2126, 0.7152, 0.0722};
const double Pi = std::acos(-1.0);
const double Root3 = std::sqrt(3.0);
// Red bends towards this rather than to the very top, which leaves room for grain.
constexpr double ShoulderTop = 0.975;
constexpr double ShoulderKnee = 0.7;
// The most that a channel goes of its way to an end; the rest holds the detail of lights and shadows.
constexpr double Way = 0.8;
// Direction of the hue of skin, 22 degrees.
const double SkinA = std::cos(22 * Pi / 180), SkinB = std::sin(22 * Pi / 180);

double Weighted(const Triple& c) {
    return c[0] * Luma[0] + c[1] * Luma[1] + c[2] * Luma[2];
}

struct Chroma {
    double a, b;
};

Chroma ChromaOf(const Triple& c) {
    return {c[0] - 0.5 * (c[1] + c[2]), 0.5 * Root3 * (c[1] - c[2])};
}

// The colour of a luma and a chroma.
Triple Joined(double luma, Chroma chroma) {
    Triple c{chroma.a * 2 / 3, -chroma.a / 3 + chroma.b / Root3, -chroma.a / 3 - chroma.b / Root3};
    const double rise = luma - Weighted(c);
    for (double& v : c) v += rise;
    return c;
}

// A colour's chroma, its size, and how near its hue is to that of skin of every tone: the cosine of the turn between.
struct SkinHue {
    explicit SkinHue(const Triple& c)
        : own(ChromaOf(c)),
          size(std::sqrt(own.a * own.a + own.b * own.b)),
          cosine(size > 1e-9 ? (own.a * SkinA + own.b * SkinB) / size : -1.0) {}

    const Chroma own;
    const double size, cosine;
};

double Smooth(double x) {
    const double t = std::clamp(x, 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

// A shoulder: `x` up to the knee, from there bending towards the top, which it never reaches.
double Shouldered(double x, double knee, double top) {
    if (x <= knee) return x;
    if (top - knee < 1e-9) return knee;
    return knee + (top - knee) * (x - knee) / (x + top - 2 * knee);
}

// How much of the way from its luma to the top a colour's red goes, the largest channel of all skin.
double Reach(const Triple& c) {
    const double luma = Weighted(c), room = ShoulderTop - luma;
    // The room is rounded off where there is none.
    return (c[0] - luma) / (0.5 * (room + std::sqrt(room * room + 0.001)));
}

// The band values between the band centres, blended by a raised cosine.
std::vector<HueChange> WheelOf(const std::array<HueChange, Recipe::HueBands>& bands) {
    std::vector<HueChange> wheel(361);
    for (int degree = 0; degree <= 360; ++degree) {
        int band = Recipe::HueBands - 1;
        while (band > 0 && Recipe::HueCentres[band] > degree) --band;
        const int next = (band + 1) % Recipe::HueBands;
        const double from = Recipe::HueCentres[band];
        const double to = next == 0 ? 360.0 : Recipe::HueCentres[next];
        const double part = 0.5 - 0.5 * std::cos(Pi * (degree - from) / (to - from));
        const auto mix = [&](double HueChange::*m) { return bands[band].*m * (1 - part) + bands[next].*m * part; };
        wheel[degree] = {mix(&HueChange::turn), mix(&HueChange::saturation), mix(&HueChange::light)};
    }
    return wheel;
}

// What a tint adds: a chroma of its hue without luma.
Triple LeanOf(const Tint& tint) {
    const double angle = tint.hue * Pi / 180;
    const double size = tint.strength * 0.005;
    return Joined(0.0, {size * std::cos(angle), size * std::sin(angle)});
}

bool IsUnit(const std::array<Triple, 3>& m) {
    return m == Recipe().matrix;
}

}  // namespace

ColourPart::ColourPart(const Recipe& recipe)
    : m_recipe(recipe),
      m_master(recipe.master),
      m_red(recipe.red),
      m_green(recipe.green),
      m_blue(recipe.blue),
      m_matrix(!IsUnit(recipe.matrix)),
      m_split(recipe.shadows.strength > 0 || recipe.highlights.strength > 0),
      m_shadowLean(LeanOf(recipe.shadows)),
      m_highlightLean(LeanOf(recipe.highlights)),
      m_wheel(WheelOf(recipe.hues)) {
    m_hues = recipe.saturation != 100 || recipe.vibrance != 0;
    for (const HueChange& change : recipe.hues)
        if (change.turn != 0 || change.saturation != 0 || change.light != 0) m_hues = true;
    const bool curves = !m_master.IsIdentity() || !m_red.IsIdentity() || !m_green.IsIdentity() || !m_blue.IsIdentity();
    const bool fades = recipe.black != Recipe().black || recipe.white != Recipe().white;
    m_changes = m_matrix || recipe.grey || curves || m_hues || m_split || fades;
}

void ColourPart::ChangeHues(Triple& colour) const {
    const double luma = Weighted(colour);
    const Chroma chroma = ChromaOf(colour);
    const double size = std::sqrt(chroma.a * chroma.a + chroma.b * chroma.b);
    if (size < 1e-9) return;
    double degrees = std::atan2(chroma.b, chroma.a) * 180 / Pi;
    if (degrees < 0) degrees += 360;
    const int whole = std::min(static_cast<int>(degrees), 359);
    const double part = degrees - whole;
    const auto value = [&](double HueChange::*m) {
        return m_wheel[whole].*m * (1 - part) + m_wheel[whole + 1].*m * part;
    };
    // Bands act on colours; nearly grey ones have no hue to speak of.
    const double sure = size * size / (size * size + 0.0036);
    const double turn = value(&HueChange::turn) * sure * Pi / 180;
    const double band = 1 + value(&HueChange::saturation) * 0.01 * sure;
    const double weak = 1 / (1 + 4 * size * size);
    const double gain = m_recipe.saturation * 0.01 * band * (1 + m_recipe.vibrance * 0.01 * weak);
    const double c = std::cos(turn) * gain, s = std::sin(turn) * gain;
    const double light = value(&HueChange::light) * 0.01 * sure * std::min(size, 1.0);
    colour = Joined(luma + light * 0.5, {chroma.a * c - chroma.b * s, chroma.a * s + chroma.b * c});
}

void ColourPart::SplitTone(Triple& colour) const {
    const double luma = Weighted(colour);
    const double turn = 0.5 + m_recipe.balance * 0.004;
    // Both fade out at the very ends, where a colour has no room.
    const double shadow = (1 - Smooth((luma - turn + 0.45) / 0.7)) * (0.35 + 0.65 * Smooth(luma / 0.25));
    const double highlight = Smooth((luma - turn + 0.25) / 0.7) * (0.35 + 0.65 * Smooth((1 - luma) / 0.25));
    for (int i = 0; i < 3; ++i) colour[i] += m_shadowLean[i] * shadow + m_highlightLean[i] * highlight;
}

void ColourPart::KeepSkin(Triple& colour, const Triple& source) const {
    const auto [own, size, cosine] = SkinHue(source);
    // The share is 1 for skin and falls off smoothly to both sides of its hue, to grey and to what is too strong to be
    // skin.
    const double skin = Smooth((cosine - 0.2) / 0.79) * Smooth(size / 0.17) * (1 - Smooth((size - 0.4) / 0.5));
    if (skin <= 0) return;
    const double keep = m_recipe.keepSkin * 0.01 * skin;
    // The part of the chroma across the own hue is taken back; what runs against it too.
    const Chroma now = ChromaOf(colour);
    const double along = (now.a * own.a + now.b * own.b) / size;
    const double across = (now.b * own.a - now.a * own.b) / size * (1 - keep);
    const double least = keep * 0.45 * size;
    const double kept = 0.5 * (along + least + std::sqrt((along - least) * (along - least) + 0.014 * keep));
    const double length = along + (kept - along) * keep;
    colour =
        Joined(Weighted(colour), {(length * own.a - across * own.b) / size, (length * own.b + across * own.a) / size});
}

void ColourPart::LimitSkin(Triple& colour, const Triple& source) const {
    const auto [own, size, cosine] = SkinHue(source);
    const double skin = Smooth((cosine - 0.5) / 0.45) * Smooth(size / 0.16) * (1 - Smooth((size - 0.4) / 0.5));
    if (skin <= 0) return;
    const Chroma now = ChromaOf(colour);
    const double ratio = std::sqrt(now.a * now.a + now.b * now.b) / size, most = m_recipe.mostSkin * 0.01;
    if (ratio <= 0.8 * most) return;
    const double gain = 1 + (Shouldered(ratio, 0.8 * most, most) / ratio - 1) * skin;
    colour = Joined(Weighted(colour), {now.a * gain, now.b * gain});
}

void ColourPart::Shoulder(Triple& colour, const Triple& source) {
    const auto [own, size, cosine] = SkinHue(source);
    const double warm = Smooth((cosine - 0.84) / 0.15) * Smooth(size / 0.14) * (1 - Smooth((size - 0.5) / 0.4));
    if (warm <= 0) return;
    const double reach = Reach(colour);
    if (reach <= ShoulderKnee) return;
    const double held = Shouldered(reach, std::max(ShoulderKnee, Shouldered(Reach(source), 0.75, 1.0)), 1.0);
    const double luma = Weighted(colour), gain = 1 + (held / reach - 1) * warm;
    for (double& v : colour) v = luma + (v - luma) * gain;
}

void ColourPart::StayInside(Triple& colour, const Triple& source) {
    for (int i = 0; i < 3; ++i) {
        const double change = colour[i] - source[i];
        const double most = Way * (change > 0 ? 1 - source[i] : source[i]);
        const double asked = change / std::max(most, 1e-6);
        colour[i] = source[i] + change / std::pow(1 + asked * asked * asked * asked, 0.25);
    }
}

Triple ColourPart::At(const Triple& in) const {
    Triple c = in;
    if (m_matrix)
        for (int i = 0; i < 3; ++i)
            c[i] = m_recipe.matrix[i][0] * in[0] + m_recipe.matrix[i][1] * in[1] + m_recipe.matrix[i][2] * in[2];
    if (m_recipe.grey) {
        const double grey = m_recipe.mix[0] * c[0] + m_recipe.mix[1] * c[1] + m_recipe.mix[2] * c[2];
        c = {grey, grey, grey};
    }
    for (double& v : c) v = m_master.At(v);
    c = {m_red.At(c[0]), m_green.At(c[1]), m_blue.At(c[2])};
    if (m_hues) ChangeHues(c);
    if (m_split) SplitTone(c);
    for (int i = 0; i < 3; ++i) c[i] = (m_recipe.black[i] + (m_recipe.white[i] - m_recipe.black[i]) * c[i]) / 255.0;
    if (m_recipe.keepSkin > 0) KeepSkin(c, in);
    if (!m_changes) return c;
    LimitSkin(c, in);
    Shoulder(c, in);
    if (m_recipe.KeepsEnds()) StayInside(c, in);
    return c;
}

double ColourPart::GrainAt(const Triple& result) const {
    const double luma = std::clamp(Weighted(result), 0.0, 1.0);
    const Recipe::Grain& grain = m_recipe.grain;
    const double ends = (grain.shadows * (1 - luma) + grain.highlights * luma) * 0.01;
    // Full in the middle tones, where film shows it most.
    const double middle = 4 * luma * (1 - luma);
    // A channel near an end has room for little, or grain would push it over.
    const auto [lowest, highest] = std::minmax({result[0], result[1], result[2]});
    const double room = 255 * std::max(0.0, std::min(lowest, 1 - highest));
    return std::min(grain.amount * (ends + (1 - ends) * middle), 0.2 + 0.4 * room);
}
