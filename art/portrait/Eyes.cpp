// SPDX-License-Identifier: GPL-3.0-or-later
#include "Eyes.h"

#include "Features.h"
#include "Noise.h"

namespace {

const Colour Sclera = FromSrgb(232, 224, 217);
const Colour LashColour = FromSrgb(34, 23, 20);

struct IrisTones {
    Colour outer, middle, inner;
};

IrisTones TonesOf(PortraitLook::Iris iris) {
    static const IrisTones blue{FromSrgb(40, 52, 60), FromSrgb(94, 116, 120), FromSrgb(134, 108, 70)};
    static const IrisTones brown{FromSrgb(26, 17, 13), FromSrgb(58, 36, 24), FromSrgb(78, 49, 29)};
    return iris == PortraitLook::Iris::Blue ? blue : brown;
}

Colour IrisColour(const IrisTones& tones, Vec2 r, double radius, int seed) {
    const double angle = std::atan2(r.y, r.x);
    const double fibre = Fractal({angle * 17, radius * 2.4}, 3, 41u + static_cast<unsigned>(seed)) +
                         0.6 * Fractal({angle * 41, radius * 3.5}, 2, 45u + static_cast<unsigned>(seed));
    const double crypt = Fractal({angle * 6, radius * 7}, 2, 47u + static_cast<unsigned>(seed));
    Colour colour = Mix(tones.inner, tones.middle, Smooth(0.42, 0.66, radius + 0.07 * crypt));
    colour = Mix(colour, tones.outer, Smooth(0.72, 1.0, radius + 0.05 * fibre));
    colour = colour * (1 + 0.75 * fibre);
    return colour * Mix(1.0, 0.22, Smooth(0.86, 1.0, radius));
}

// A window with a bar, slightly curved by the ball, and its weak echo below.
double Catchlight(Vec2 r) {
    const Vec2 w{r.x + 0.36 + 0.10 * r.y, r.y + 0.38 - 0.12 * r.x};
    const double pane = Smooth(0.20, 0.12, std::abs(w.x)) * Smooth(0.25, 0.16, std::abs(w.y));
    const double bar = 1 - 0.65 * Bell(w.x / 0.025);
    const double echo = 0.25 * Blob(r, {0.34, 0.46}, 0.18, 0.10);
    return pane * bar + echo;
}

void PaintBall(const PortraitLook& look, Brush& brush, Vec2 e, double side, double open, double cover) {
    const double lid = e.y - Face::UpperLid(e.x);
    const double across = (e.x - 0.005) / 0.19;
    const double shade = Mix(0.34, 1.0, Smooth(0.0, 0.06, lid)) * (1 - 0.42 * across * across) * Mix(0.8, 1.0, open);
    Colour colour = Sclera * (0.84 * shade);
    const double vessels = std::pow(std::max(0.0, Fractal({e.x * 60, e.y * 130}, 3, 51)), 2.0);
    const double corner = Smooth(0.07, 0.15, std::abs(e.x));
    colour = colour * Mix({1, 1, 1}, {1.0, 0.74, 0.70}, Clamp01(corner * (0.32 + 3 * vessels)));
    const Vec2 tear{e.x - Face::EyeInner - 0.014, e.y - 0.022};
    colour = Mix(colour, FromSrgb(204, 140, 128) * 0.8, Blob(tear, {0, 0}, 0.021, 0.017));

    const Vec2 iris{e.x - Face::Iris.x - side * Face::GazeShift, e.y - Face::Iris.y};
    const double radius = Length(iris) / Face::IrisRadius;
    const double inIris = Smooth(1.04, 0.95, radius);
    if (inIris > 0) {
        const Vec2 r = iris * (1 / Face::IrisRadius);
        const double lidShade = Mix(0.22, 1.0, Smooth(-0.85, 0.0, r.y));
        // Light that enters at the upper left gathers at the lower right of the iris.
        const double glow = 0.75 + 0.75 * Blob({side * r.x, r.y}, {0.28, 0.45}, 0.55, 0.45);
        Colour shown = IrisColour(TonesOf(look.iris), r, radius, side > 0 ? 1 : 0) * (0.95 * lidShade * glow);
        const double pupil = Smooth(1.08, 0.92, Length(iris) / Face::PupilRadius);
        const Colour black{0.006, 0.006, 0.008};
        const double centre = Blob(iris, {0, 0}, Face::PupilRadius, Face::PupilRadius);
        const Colour red = Mix(Colour{0.30, 0.006, 0.010}, Colour{0.80, 0.055, 0.04}, centre);
        shown = Mix(shown, side > 0 && look.flaws ? red : black, pupil);
        colour = Mix(colour, shown, inIris);
        colour = colour + Colour{0.98, 1.0, 1.02} * (0.95 * Catchlight({side * r.x, r.y}));
    }
    const double wet = Bell((Face::LowerLid(e.x) - e.y - 0.006) / 0.0035) * Smooth(0.14, 0.05, std::abs(e.x));
    colour = colour + Colour{0.5, 0.5, 0.5} * (0.35 * wet);
    brush.Lay(colour, cover);
}

void PaintLids(Brush& brush, Vec2 e) {
    const double x = std::clamp(e.x, Face::EyeInner, Face::EyeOuter);
    const double beyond = std::abs(e.x - x);
    const double upper = Face::UpperLid(x) - e.y;  // above the upper edge
    const double lower = e.y - Face::LowerLid(x);  // below the lower edge
    const double ends = Smooth(0.016, 0.0, beyond);
    // The fold of the upper lid, deepest outwards.
    const double arch = std::max(0.0, std::sin(3.1416 * Clamp01((e.x + 0.165) / 0.37)));
    const double foldY = Mix(0.010, -0.045, Clamp01((e.x + 0.165) / 0.3)) - 0.105 * std::pow(arch, 0.75);
    const double fold = (e.y - foldY) / 0.011;
    const double foldShare = Smooth(-0.15, -0.05, e.x) * Smooth(0.215, 0.12, e.x) * Smooth(0.0, 0.02, upper);
    brush.Glaze({0.42, 0.27, 0.23}, 0.75 * Bell(fold) * foldShare);
    brush.Glaze({0.72, 0.60, 0.56}, 0.5 * Smooth(-6, -1.5, fold) * Smooth(1.5, 0, fold) * foldShare);
    // Lash line: thin at the nose, strong and winged outwards.
    const double weight = Mix(0.004, 0.013, Smooth(Face::EyeInner, Face::EyeOuter, e.x));
    brush.Lay(LashColour * 0.6, 0.95 * Smooth(weight, weight * 0.2, std::abs(upper - weight * 0.35)) * ends);
    brush.Glaze({0.62, 0.45, 0.40}, 0.6 * Smooth(0.02, 0.0, upper) * Smooth(-0.002, 0.0, upper) * ends);
    // The lower rim catches light above a soft dark line.
    const double rim = Smooth(-0.001, 0.001, lower) * Smooth(0.011, 0.006, lower) * ends;
    brush.Lay(FromSrgb(222, 170, 152) * 0.85, 0.6 * rim);
    brush.Glaze({0.55, 0.40, 0.36}, 0.55 * Bell((lower - 0.012) / 0.006) * ends * Smooth(-0.14, 0.02, e.x));
}

Vec2 OnFace(double side, Vec2 e) {
    return {side * (Face::EyeX + e.x), e.y};
}

}  // namespace

void PaintEyes(const Scene& scene, Brush& brush, Vec2 face) {
    const double side = face.x < 0 ? -1.0 : 1.0;
    const Vec2 e{side * face.x - Face::EyeX, face.y};
    if (std::abs(e.x) > 0.26 || std::abs(e.y) > 0.2) return;
    const double inside = std::min(e.y - Face::UpperLid(e.x), Face::LowerLid(e.x) - e.y);
    const bool within = e.x > Face::EyeInner && e.x < Face::EyeOuter;
    const double cover = within ? brush.Cover(inside) : 0;
    PaintLids(brush, e);
    if (cover > 0) PaintBall(scene.Look(), brush, e, side, scene.FaceRelief().At(face).open, cover);
}

void AddLashes(const Scene& scene, StrandSet& strands) {
    Random random(61);
    for (const double side : {-1.0, 1.0}) {
        for (int i = 0; i < 150; ++i) {
            const double t = random.Next();
            const double x = Mix(Face::EyeInner + 0.02, Face::EyeOuter, t);
            const double length = Mix(0.025, 0.085, std::pow(t, 0.8)) * random.Next(0.75, 1.1);
            const double lean = Mix(-0.25, 0.85, t) + 0.12 * random.Bell();
            const double y = Face::UpperLid(x) - 0.001;
            std::vector<Vec2> points;
            for (int k = 0; k <= 6; ++k) {
                const double s = k / 6.0;
                const Vec2 e{x + lean * length * s, y + length * (0.22 * s - 0.95 * s * s)};
                points.push_back(scene.ToCanvas(OnFace(side, e)));
            }
            strands.Add(points, 0.0052, 0.0008, LashColour * 0.55, LashColour * 0.7, 0.92);
        }
        for (int i = 0; i < 60; ++i) {
            const double t = random.Next(0.25, 1.0);
            const double x = Mix(Face::EyeInner, Face::EyeOuter, t);
            const double length = Mix(0.014, 0.03, t) * random.Next(0.7, 1.1);
            const double y = Face::LowerLid(x) + 0.009;
            const Vec2 root{x, y};
            const Vec2 tip{x + length * Mix(0.1, 0.7, t), y + length};
            const Vec2 bend = (root + tip) * 0.5 + Vec2{0, 0.003};
            strands.Add({scene.ToCanvas(OnFace(side, root)), scene.ToCanvas(OnFace(side, bend)),
                         scene.ToCanvas(OnFace(side, tip))},
                        0.0022, 0.0005, LashColour, LashColour, 0.42);
        }
    }
}

void AddBrows(const Scene& scene, StrandSet& strands) {
    Random random(71);
    const Colour dark = FromSrgb(84, 58, 44) * 0.8;
    for (const double side : {-1.0, 1.0}) {
        for (int i = 0; i < 1000; ++i) {
            const double t = std::pow(random.Next(), 0.9);
            const double x = Mix(-0.150, 0.222, t);
            const double arch = Mix(-0.185, -0.185, t) - 0.075 * std::sin(3.1416 * std::pow(t, 1.45) * 0.93);
            const double width = 0.052 * Smooth(-0.06, 0.14, t) * Smooth(1.12, 0.45, t) + 0.004;
            const double across = random.Next(-0.5, 0.5);
            const Vec2 root{x, arch + across * width + 0.008};
            // Upwards at the nose, along the arch outwards.
            const double angle = Mix(-1.25, 0.42, Smooth(0.0, 0.75, t)) - across * 0.5 + 0.14 * random.Bell();
            const double length = Mix(0.045, 0.062, std::sin(3.1416 * t)) * random.Next(0.75, 1.1);
            const Vec2 way{std::cos(angle), std::sin(angle)};
            const Vec2 tip = root + way * length;
            const Vec2 bend = root + way * (0.55 * length) + Vec2{0.0, -0.004};
            const double fade = Smooth(0.0, 0.2, t + 0.06);
            strands.Add({scene.ToCanvas(OnFace(side, root)), scene.ToCanvas(OnFace(side, bend)),
                         scene.ToCanvas(OnFace(side, tip))},
                        0.0030, 0.0008, dark * random.Next(0.7, 1.3), dark * random.Next(0.8, 1.5), 0.55 * fade);
        }
    }
}
