// SPDX-License-Identifier: GPL-3.0-or-later
#include "Mouth.h"

#include "Features.h"
#include "Noise.h"
#include "Skin.h"

namespace {

struct LipTones {
    Colour base;
    Colour edge;  // where the lip meets the skin
};

LipTones LipsOf(PortraitLook::Skin skin) {
    static const LipTones tones[PortraitLook::SkinCount] = {
        {FromSrgb(206, 120, 118), FromSrgb(222, 156, 144)}, {FromSrgb(196, 104, 102), FromSrgb(214, 142, 128)},
        {FromSrgb(186, 98, 92), FromSrgb(198, 128, 108)},   {FromSrgb(160, 84, 76), FromSrgb(168, 104, 82)},
        {FromSrgb(126, 70, 62), FromSrgb(130, 78, 60)},     {FromSrgb(98, 56, 52), FromSrgb(92, 54, 44)}};
    return tones[static_cast<int>(skin)];
}

const Colour ToothBase = FromSrgb(250, 231, 196);

void PaintTeeth(Brush& brush, Vec2 p, const Face::MouthEdges& edges) {
    // Half widths as they look from the front: the row turns away to both sides.
    static constexpr double borders[] = {0.0, 0.058, 0.103, 0.144, 0.178, 0.205, 0.225};
    const double x = std::abs(p.x);
    int tooth = 0;
    while (tooth < 5 && x > borders[tooth + 1]) ++tooth;
    const double left = borders[tooth];
    const double width = borders[tooth + 1] - left;
    const double t = (x - left) / width;
    const double length = (tooth == 1 ? 0.056 : tooth == 2 ? 0.058 : 0.062) - 0.05 * x * x / 0.04;
    const double bottom = edges.upperInner + length - 0.010 * std::pow(std::abs(2 * t - 1), 3.0);
    const double inside = std::min(bottom - p.y, std::min(x - left + 0.0015, left + width - x + 0.0015));
    const double cover =
        Mix(Smooth(-0.001, 0.005, inside), Smooth(-0.001, 0.005, bottom - p.y), 0.55) * (x < borders[6] ? 1 : 0);
    const double turn = 1 - 0.9 * std::pow(x / 0.24, 2.0);
    const double lip = Mix(0.50, 1.0, Smooth(0.0, 0.022, p.y - edges.upperInner));
    const double body = 0.86 + 0.14 * std::sin(3.1416 * Clamp01(t));
    Colour colour = ToothBase * (1.02 * turn * lip * body * (1 + 0.05 * Fractal({p.x * 60, p.y * 25}, 2, 81)));
    colour = colour * Mix({1.0, 0.94, 0.82}, {1, 1, 1}, Smooth(0.0, 0.035, p.y - edges.upperInner));
    const double shine = Blob({t, p.y}, {0.42, edges.upperInner + 0.030}, 0.16, 0.010);
    colour = colour + Colour{1, 1, 1} * (0.16 * shine * turn);
    brush.Lay(Colour{0.045, 0.014, 0.013}, 1);
    brush.Lay(colour, cover);
}

void PaintLip(const Scene& scene, Brush& brush, Vec2 p, double across, bool upper, double cover) {
    const Relief::Sample relief = scene.FaceRelief().At(p);
    SkinPoint point;
    const double lines = Fractal({p.x * 75 + 5 * Fractal(p * 9, 2, 91), p.y * 9}, 3, 92);
    const LipTones tones = LipsOf(scene.Look().skin);
    point.albedo = tones.base * (1 + 0.16 * lines) * (upper ? 0.80 : 1.0);
    point.albedo = Mix(point.albedo, tones.edge, 0.45 * Smooth(0.25, 0.0, upper ? across : 1 - across));
    point.albedo = point.albedo * Mix(1.0, 0.62, Smooth(0.3, 0.0, upper ? 1 - across : across));
    const double grooves = Fractal({p.x * 75 + 0.25, p.y * 9}, 3, 92) - lines;
    point.normal = Normalized(relief.normal + Vec3{-0.25 * grooves, 0, 0});
    point.open = Mix(0.6, 1.0, relief.open);
    point.lit = Mix(0.35, 1.0, relief.lit);
    point.gloss = 1.2;
    Colour colour = LightSkin(point);
    if (!upper) {
        const double wet = Blob(p, {-0.05, 0.698}, 0.07, 0.011) + 0.45 * Blob(p, {0.06, 0.700}, 0.04, 0.009);
        colour = colour + Colour{0.9, 0.88, 0.86} * (0.24 * wet * (0.8 + 0.9 * lines));
    } else {
        const double wet = Blob({std::abs(p.x), p.y}, {0.05, 0.558}, 0.03, 0.006);
        colour = colour + Colour{0.9, 0.88, 0.86} * (0.16 * wet);
    }
    brush.Lay(colour, cover);
}

}  // namespace

void PaintMouth(const Scene& scene, Brush& brush, Vec2 p) {
    if (std::abs(p.x) > Face::MouthHalf + 0.03 || std::abs(p.y - 0.64) > 0.16) return;
    // Corners end in a small shadow.
    const Vec2 q{std::abs(p.x), p.y};
    brush.Glaze({0.45, 0.27, 0.24}, 0.75 * Blob(q, {Face::MouthHalf - 0.004, Face::MouthY - 0.029}, 0.018, 0.012));
    if (q.x >= Face::MouthHalf) return;
    const Face::MouthEdges edges = Face::MouthAt(p.x);
    const double thickUpper = edges.upperInner - edges.upperOuter;
    const double thickLower = edges.lowerOuter - edges.lowerInner;
    constexpr double soft = 0.011;
    const double upperCover =
        Smooth(-0.5 * soft, 0.5 * soft, p.y - edges.upperOuter) * brush.Cover(edges.upperInner - p.y, 0.004);
    const double lowerCover =
        brush.Cover(p.y - edges.lowerInner, 0.004) * Smooth(-0.5 * soft, 0.5 * soft, edges.lowerOuter - p.y);
    if (p.y > edges.upperInner - 0.004 && p.y < edges.lowerInner + 0.004) PaintTeeth(brush, p, edges);
    if (upperCover > 0)
        PaintLip(scene, brush, p, Clamp01((p.y - edges.upperOuter) / std::max(thickUpper, 1e-4)), true, upperCover);
    if (lowerCover > 0)
        PaintLip(scene, brush, p, Clamp01((p.y - edges.lowerInner) / std::max(thickLower, 1e-4)), false, lowerCover);
}

void PaintNostrils(Brush& brush, Vec2 p) {
    const Vec2 q{std::abs(p.x), p.y};
    // The crease around the wing, open towards the tip.
    const Vec2 wing{(q.x - 0.112) / 0.056, (q.y - 0.378) / 0.052};
    const double turn = std::atan2(wing.y, wing.x);
    const double crease = Bell((Length(wing) - 1) / 0.30) * Smooth(-1.5, -0.5, turn) * Smooth(1.7, 0.9, turn);
    brush.Glaze({0.60, 0.40, 0.34}, 0.46 * crease);
    const Vec2 r{(q.x - 0.062) * 0.94 + (q.y - 0.417) * 0.34, -(q.x - 0.062) * 0.34 + (q.y - 0.417) * 0.94};
    brush.Glaze({0.16, 0.07, 0.06}, 0.93 * Smooth(1.25, 0.55, std::sqrt(r.x * r.x / 0.0012 + r.y * r.y / 0.00019)));
    brush.Glaze({0.60, 0.40, 0.36}, 0.55 * Blob(q, {0.062, 0.425}, 0.07, 0.022));
}
