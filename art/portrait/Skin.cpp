// SPDX-License-Identifier: GPL-3.0-or-later
#include "Skin.h"

#include "Features.h"
#include "Hair.h"
#include "Noise.h"
#include "Truncate.h"

namespace {

Colour BaseSkin(const PortraitLook& look) {
    const std::uint32_t own = look.skinColour;
    if (own != 0) return FromSrgb(own >> 16 & 255, own >> 8 & 255, own & 255);
    static const Colour tones[PortraitLook::SkinCount] = {FromSrgb(247, 214, 192), FromSrgb(234, 190, 164),
                                                          FromSrgb(214, 164, 128), FromSrgb(182, 128, 92),
                                                          FromSrgb(136, 88, 60),   FromSrgb(92, 58, 43)};
    return tones[static_cast<int>(look.skin)];
}

double Wrapped(double cosine, double wrap) {
    const double t = std::max(0.0, (cosine + wrap) / (1 + wrap));
    return t * Mix(t, 1.0, 0.65);
}

double Freckles(Vec2 p) {
    constexpr double cell = 0.03;  // one freckle at most in each
    const int cx = Truncate(std::floor(p.x / cell));
    const int cy = Truncate(std::floor(p.y / cell));
    double sum = 0;
    for (int y = cy - 1; y <= cy + 1; ++y) {
        for (int x = cx - 1; x <= cx + 1; ++x) {
            if (HashUnit(x, y, 31) < 0.45) continue;
            const Vec2 at{(x + HashUnit(x, y, 32)) * cell, (y + HashUnit(x, y, 33)) * cell};
            const double radius = Mix(0.0028, 0.0065, HashUnit(x, y, 34));
            sum += Mix(0.3, 1.0, HashUnit(x, y, 35)) * Blob(p, at, radius, radius * 0.9);
        }
    }
    return std::min(sum, 1.0);
}

double FreckleField(Vec2 p) {
    const Vec2 q{std::abs(p.x), p.y};
    return Clamp01(0.9 * Blob(q, {0.27, 0.24}, 0.17, 0.1) + 0.8 * Blob(q, {0, 0.2}, 0.12, 0.14));
}

double Blush(Vec2 p) {
    const Vec2 q{std::abs(p.x), p.y};
    return Clamp01(0.72 * Blob(q, {0.38, 0.3}, 0.19, 0.15) + 0.6 * Blob(q, {0, 0.36}, 0.1, 0.08) +
                   0.35 * Blob(q, {0, 0.9}, 0.16, 0.09) + 0.3 * Blob(q, {0.13, 0.39}, 0.05, 0.05));
}

double DarkCircle(Vec2 p) {
    const Vec2 q{std::abs(p.x) - Face::EyeX, p.y};
    const double depth = q.y - Face::LowerLid(std::clamp(q.x, Face::EyeInner, Face::EyeOuter));
    const double across = Smooth(-0.21, -0.12, q.x) * Smooth(0.17, 0.02, q.x);
    return across * Smooth(0.0, 0.03, depth) * Smooth(0.115, 0.05, depth);
}

void AddSpots(Vec2 p, Colour& albedo, Vec3& normal) {
    for (const auto& spot : Face::Spots()) {
        const Vec2 away = p - spot.centre;
        const double d = Length(away) / spot.radius;
        if (d > 4) continue;
        const double ring = 0.62 * spot.strength * Bell(d / 1.9);
        const double core = 0.75 * spot.strength * Bell(d / 0.85);
        albedo = albedo * Mix({1, 1, 1}, {0.93, 0.62, 0.60}, ring);
        albedo = albedo * Mix({1, 1, 1}, {0.74, 0.42, 0.40}, core);
        const double slope = 0.5 * spot.strength * d * Bell(d);
        normal = Normalized(normal + Vec3{away.x, away.y, 0} * (slope / std::max(spot.radius, 1e-6)));
    }
}

}  // namespace

Colour LightSkin(const SkinPoint& point) {
    const Vec3 n = point.normal;
    const double cosine = Dot(n, Light::Key);
    // Red light travels furthest under the skin, so the edge of a shadow glows.
    const double lit = point.lit;
    const Colour through{Mix(std::pow(lit, 0.62), lit, 0.35), lit, std::pow(lit, 1.12)};
    const Colour diffuse = Colour{Wrapped(cosine, 0.42), Wrapped(cosine, 0.24), Wrapped(cosine, 0.18)} * through;
    const Colour sky = Light::SkyColour * (Mix(0.55, 1.0, 0.5 - 0.5 * n.y) * point.open);
    const Colour bounce = Light::BounceColour * (Clamp01(0.35 + 0.65 * n.y) * Mix(0.45, 1.0, point.open));
    Colour light = Light::KeyColour * diffuse + sky + bounce;
    // Light that has bounced within a hollow is the skin's own colour, not grey.
    const double closed = 1 - point.open;
    light = light * Colour{1 - 0.10 * closed, 1 - 0.30 * closed, 1 - 0.36 * closed};
    Colour out = point.albedo * light;

    const Vec3 half = Normalized(Light::Key + Vec3{0, 0, 1});
    const double facing = std::max(0.0, Dot(n, half));
    const double shine = 0.055 * std::pow(facing, 14) + 0.12 * std::pow(facing, 55);
    out = out + Light::KeyColour * (shine * lit * point.gloss);
    const double edge = std::pow(1 - std::max(0.0, n.z), 2.0);
    const double rim = edge * Smooth(0.15, 0.9, Dot(n, Light::Rim));
    out = out + Light::RimColour * (0.75 * rim * point.silhouette);
    const double sheen = edge * Smooth(0.0, 0.8, -n.x) * lit;
    return out + Light::KeyColour * (0.05 * sheen);
}

Colour SkinAlbedo(const PortraitLook& look, Vec2 p) {
    const double broad = Fractal(p * 5.0, 3, 11);
    const double mottle = Fractal(p * 26.0, 3, 12);
    const double fine = Fractal(p * 120.0, 2, 13);
    Colour albedo = BaseSkin(look) * (1 + 0.035 * broad + 0.03 * mottle + 0.055 * fine);
    albedo = albedo * Colour{1 + 0.008 * mottle, 1 - 0.03 * mottle - 0.012 * broad, 1 - 0.035 * mottle + 0.015 * broad};
    return albedo;
}

Vec3 WithPores(Vec3 normal, Vec2 p, double strength) {
    const auto height = [](Vec2 q) {
        return 0.7 * Fractal(q * 165.0, 2, 21) + 0.2 * Fractal(Vec2{q.x * 80, q.y * 94}, 2, 22);
    };
    constexpr double step = 0.0012;
    const double here = height(p);
    const double slopeX = (height({p.x + step, p.y}) - here) / step;
    const double slopeY = (height({p.x, p.y + step}) - here) / step;
    const double scale = 0.0011 * strength * normal.z;
    return Normalized(normal + Vec3{-slopeX * scale, -slopeY * scale, 0});
}

void PaintFaceSkin(const Scene& scene, Brush& brush, Vec2 p) {
    const double inside = Face::Head().Inside(p);
    const double cover = brush.Cover(inside, 0.006);
    if (cover <= 0) return;
    const Relief::Sample relief = scene.FaceRelief().At(p);
    const Vec2 q{std::abs(p.x), p.y};
    SkinPoint point;
    point.albedo = SkinAlbedo(scene.Look(), p);
    const bool flaws = scene.Look().flaws;
    const double field = flaws ? FreckleField(p) : 0;
    const double freckles = field > 0.004 ? Freckles(p) * std::sqrt(field) : 0;
    const double blush = Blush(p) * (1 + 0.25 * Fractal(p * 9.0, 2, 14));
    point.albedo = point.albedo * Mix({1, 1, 1}, {1.0, 0.77, 0.76}, blush);
    point.albedo = point.albedo * Mix({1, 1, 1}, {0.84, 0.68, 0.56}, freckles);
    const double circle = flaws ? DarkCircle(p) : 0;
    point.albedo = point.albedo * Mix({1, 1, 1}, {0.70, 0.62, 0.70}, 0.92 * circle);
    // Lids are thin and a little darker.
    const double lid = Blob(q, {0.29, -0.075}, 0.17, 0.05);
    point.albedo = point.albedo * Mix({1, 1, 1}, {0.83, 0.70, 0.66}, 0.7 * lid);
    const double smooth = Clamp01(1 - 0.7 * Blob(q, {0.29, 0.0}, 0.2, 0.13));
    point.normal = WithPores(relief.normal, p, smooth);
    if (flaws) AddSpots(p, point.albedo, point.normal);
    const double edge = Smooth(0.0, 0.13, inside);
    const double hair = Smooth(0.0, 0.11, HairClearance(brush.canvas));
    const double cast = Smooth(-0.01, 0.10, HairClearance(brush.canvas + Vec2{-0.055, -0.05}));
    point.open = relief.open * Mix(0.62, 1.0, edge) * Mix(0.45, 1.0, hair);
    point.lit = relief.lit * Mix(0.10, 1.0, cast);
    point.gloss = 0.75 + 0.6 * Blob(q, {0, 0.25}, 0.07, 0.16) + 0.8 * Blob(q, {-0.012, 0.335}, 0.05, 0.04) +
                  0.3 * Blob(q, {0.0, -0.42}, 0.3, 0.12) + 0.35 * Blob(q, {0.4, 0.17}, 0.15, 0.08) - 0.4 * circle;
    point.silhouette = Smooth(0.11, 0.02, inside);
    brush.Lay(LightSkin(point), cover);
}

void PaintNeck(const Scene& scene, Brush& brush) {
    const Vec2 p = brush.canvas;
    static const Outline neck({{-0.36, 0.35},
                               {-0.325, 0.75},
                               {-0.315, 1.02},
                               {-0.36, 1.2},
                               {-0.56, 1.34},
                               {-0.95, 1.48},
                               {-0.9, 2.3},
                               {0.9, 2.3},
                               {0.95, 1.48},
                               {0.58, 1.34},
                               {0.38, 1.2},
                               {0.335, 1.02},
                               {0.345, 0.75},
                               {0.37, 0.35}});
    const double inside = neck.Inside(p);
    const double cover = brush.Cover(inside, 0.008);
    if (cover <= 0) return;
    SkinPoint point;
    point.albedo = SkinAlbedo(scene.Look(), p + Vec2{3, 1}) * Colour{0.97, 0.93, 0.92};
    const double roundness = Mix(0.35, 1.1, Smooth(1.05, 1.45, p.y));
    const double nx = std::clamp(p.x / roundness, -0.97, 0.97);
    // Muscles from behind the ears to the pit of the throat, and the collar bones.
    const auto ridge = [&](double side, double strength) {
        const double line = side * Mix(0.34, 0.07, Smooth(0.75, 1.42, p.y));
        const double d = (p.x - line) / 0.07;
        return -strength * d * Bell(d) * Smooth(1.5, 1.3, p.y);
    };
    const Vec2 q{std::abs(p.x - 0.01), p.y};
    const double boneY = 1.455 - 0.10 * q.x + 0.05 * Bell(q.x / 0.09);
    const double bone = (p.y - boneY) / 0.04;
    const double boneSlope = 0.55 * bone * Bell(bone) * Smooth(0.05, 0.16, q.x) * Smooth(0.75, 0.4, q.x);
    const double pit = 0.3 * (p.y - 1.44) / 0.05 * Blob(q, {0, 1.44}, 0.06, 0.05);
    point.normal = Normalized({nx * 0.95 - ridge(-1, 0.5) - ridge(1, 0.5),
                               -0.18 * Smooth(1.3, 1.5, p.y) + boneSlope - pit, std::sqrt(1 - nx * nx * 0.9)});
    point.normal = WithPores(point.normal, p, 0.6);
    const Vec2 cast = scene.Untilt(p - Vec2{0.10, 0.17});
    const double under = Face::Head().Inside(cast);
    const double near = Face::Head().Inside(scene.Untilt(p - Vec2{0.03, 0.03}));
    point.lit = Smooth(0.06, -0.10, under);
    point.open = Mix(1.0, 0.32, Smooth(-0.34, 0.08, near)) * Mix(1.0, 0.55, Smooth(0.12, 0.0, inside));
    point.open *= 1 - 0.35 * Blob(q, {0, 1.44}, 0.06, 0.05);
    point.gloss = 0.7;
    brush.Lay(LightSkin(point), cover);
}
