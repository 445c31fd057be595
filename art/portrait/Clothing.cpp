// SPDX-License-Identifier: GPL-3.0-or-later
#include "Clothing.h"

#include "Features.h"
#include "Hair.h"
#include "Noise.h"

namespace {

const Colour Wool = FromSrgb(226, 218, 204);

struct Cloth {
    double inside;  // distance to the edge, collar included
    double collar;  // distance below the collar's upper edge
};

double CollarLine(double x) {
    return 1.60 - 1.35 * std::pow(std::abs(x) / 0.62, 2.0) * 0.20;
}

// The shoulders' upper edge; the collar cuts the neck's opening out.
Cloth ClothAt(Vec2 p) {
    const double x = std::abs(p.x - 0.01);
    const double shoulder = 1.235 + 0.30 * std::pow(std::max(0.0, x - 0.5) / 0.85, 1.35) +
                            0.55 * std::pow(std::max(0.0, x - 1.15) / 0.45, 2.2);
    const double opening = p.y - CollarLine(p.x - 0.01);
    return {std::min(p.y - shoulder, x < 0.74 ? opening * 0.86 : p.y - shoulder), opening * 0.86};
}

// Rows of stitches, each a small leaning loop.
double Stitch(Vec2 p) {
    const double column = p.x / 0.026;
    const double lean = std::abs(column - std::floor(column) - 0.5);
    const double row = p.y / 0.024 - 0.9 * lean;
    const double loop = 0.5 + 0.5 * std::cos(6.2831853 * row);
    const double wale = 0.5 + 0.5 * std::cos(6.2831853 * (column - std::floor(column) - 0.25) * 2);
    return 0.6 * loop * wale + 0.4 * wale;
}

}  // namespace

void PaintClothing(const Scene& scene, Brush& brush) {
    const Vec2 p = brush.canvas;
    const Cloth cloth = ClothAt(p);
    // The collar's shade on the skin.
    brush.Glaze({0.55, 0.42, 0.38}, 0.8 * Smooth(-0.07, -0.005, cloth.inside) * Smooth(0.7, 0.6, std::abs(p.x)));
    const double cover = brush.Cover(cloth.inside, 0.010);
    if (cover <= 0) return;
    const double x = p.x - 0.01;
    // Folds hang from both shoulders and meet without a seam.
    const auto fold = [](Vec2 q) {
        const double aside = std::sqrt((q.x - 0.01) * (q.x - 0.01) + 0.04);
        return Fractal({q.x * 1.6 + 0.5 * q.y, q.y * 0.9 + 1.3 * aside}, 2, 121);
    };
    const double folds = fold(p);
    const double foldsRight = fold({p.x + 0.01, p.y});
    const double foldsBelow = fold({p.x, p.y + 0.01});
    const bool ribbed = cloth.collar < 0.135 && std::abs(x) < 0.72;
    const double edge = std::exp(-std::max(0.0, cloth.inside) / 0.16);
    Vec3 normal{0.55 * x + 0.4 * (x > 0 ? 1 : -1) * Smooth(0.8, 1.5, std::abs(x)) - 11 * (foldsRight - folds),
                -0.75 * edge - 0.05 - 11 * (foldsBelow - folds), 0.9};
    double texture = Stitch({p.x + 0.02 * folds, p.y + 0.02 * folds + 0.1 * x * x});
    if (ribbed) {
        const double rib = std::cos(6.2831853 * x / 0.036 * (1 - 0.25 * std::abs(x)));
        texture = 0.5 + 0.5 * rib;
        normal.y = Mix(-0.8, 0.7, Smooth(0.0, 0.135, cloth.collar));
        normal.x += 0.25 * std::sin(6.2831853 * x / 0.036 * (1 - 0.25 * std::abs(x)));
    }
    normal = Normalized(normal);
    const double seam = ribbed ? Smooth(0.135, 0.12, cloth.collar) : Smooth(0.135, 0.17, cloth.collar);
    const double under = Face::Head().Inside(scene.Untilt(p - Vec2{0.14, 0.26}));
    const double lit = Smooth(0.05, -0.22, under);
    const double open = Mix(0.72, 1.0, texture) * Mix(0.6, 1.0, Clamp01(std::abs(x) < 0.75 ? seam : 1.0)) *
                        Mix(0.62, 1.0, Smooth(0.1, -0.5, under));
    const double key = std::max(0.0, 0.12 + 0.88 * Dot(normal, Light::Key));
    const Colour light = Light::KeyColour * (key * lit * Mix(0.84, 1.0, texture)) +
                         Light::SkyColour * (open * Mix(0.6, 1.1, 0.5 - 0.5 * normal.y)) +
                         Light::BounceColour * (0.3 * open);
    // The hair that falls in front keeps light from the wool beside it.
    const double hair = Bell(HairClearance(p) / 0.10);
    const double fuzz = 1 + 0.07 * Fractal(p * 170.0, 2, 122) + 0.05 * Fractal(p * 14.0, 2, 123);
    Colour colour = Wool * light * (fuzz * (1 - 0.5 * hair));
    colour = colour + Light::RimColour * (0.30 * edge * Smooth(0.2, 1.2, x));
    colour = colour * Mix(1.0, 0.72, Smooth(1.5, 2.4, p.y));
    brush.Lay(colour, cover);
}
