// SPDX-License-Identifier: GPL-3.0-or-later
#include "Background.h"

#include <vector>

#include "Noise.h"

namespace {

struct Disc {
    Vec2 centre;
    double radius;
    Colour light;
    double strength;
};

// Points of light that the lens spreads into discs: lamps and gaps between leaves.
std::vector<Disc> MakeDiscs() {
    static const Colour kinds[] = {FromSrgb(255, 214, 150), FromSrgb(190, 232, 240), FromSrgb(150, 215, 205),
                                   FromSrgb(255, 236, 205)};
    std::vector<Disc> discs;
    Random random(101);
    for (int i = 0; i < 46; ++i) {
        const double side = random.Next() < 0.5 ? -1 : 1;
        const Vec2 centre{side * random.Next(0.35, 1.75), random.Next(-1.7, 1.2)};
        const double radius = random.Next(0.06, 0.20);
        const Colour& kind = kinds[static_cast<int>(random.Next() * 3.999)];
        discs.push_back({centre, radius, kind, random.Next(0.02, 0.10) + 0.10 * std::pow(random.Next(), 4.0)});
    }
    return discs;
}

}  // namespace

void PaintBackground(Brush& brush) {
    static const std::vector<Disc> discs = MakeDiscs();
    const Vec2 p = brush.canvas;
    const Colour high = FromSrgb(148, 192, 200);
    const Colour middle = FromSrgb(78, 128, 142);
    const Colour low = FromSrgb(38, 66, 80);
    Colour colour = Mix(high, middle, Smooth(-1.7, -0.1, p.y + 0.22 * p.x));
    colour = Mix(colour, low, Smooth(-0.3, 1.9, p.y - 0.1 * p.x));
    // Bright opening at the upper left where the key light comes from; dark trees at the right.
    colour = colour + FromSrgb(255, 226, 180) * (0.72 * Blob(p, {-1.35, -1.15}, 0.95, 0.95));
    const double leaves = Fractal(p * 1.7 + Vec2{3, 1}, 2, 111);
    const double bushes = Fractal(p * 3.1 + Vec2{7, 2}, 2, 112);
    colour = colour * Mix({1, 1, 1}, {0.42, 0.58, 0.55}, Smooth(-0.2, 0.6, leaves));
    colour = colour * (1 + 0.25 * bushes);
    colour = colour * Mix({1, 1, 1}, {0.55, 0.66, 0.70}, Smooth(0.2, 1.5, p.x) * Smooth(-1.6, -0.2, p.y));
    for (const Disc& disc : discs) {
        const double d = Length(p - disc.centre);
        if (d > disc.radius * 1.2) continue;
        const double edge = Smooth(disc.radius * 1.14, disc.radius * 0.86, d);
        const double ring = 1 + 0.35 * Smooth(0.6, 0.95, d / disc.radius);
        colour = colour + disc.light * (disc.strength * edge * ring);
    }
    brush.colour = colour;
}
