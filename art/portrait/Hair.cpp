// SPDX-License-Identifier: GPL-3.0-or-later
#include "Hair.h"

#include "Noise.h"
#include "Outline.h"

namespace {

const Colour Dark = FromSrgb(34, 21, 16);
const Colour Middle = FromSrgb(92, 57, 39);
const Colour Bright = FromSrgb(166, 112, 72);
constexpr int Steps = 84;

// A sheet of hair between guide lines; a strand lies at a place across (0 at the face, 1 outermost).
struct Sheet {
    std::vector<std::vector<Vec2>> guides;
    double side;  // -1 at the viewer's left
    unsigned seed;
};

std::vector<Vec2> Resampled(const std::vector<Vec2>& points) {
    const std::vector<Vec2> curve = SmoothCurve(points, 12, false);
    std::vector<Vec2> even;
    for (int i = 0; i <= Steps; ++i) {
        const double at = static_cast<double>(i) / Steps * static_cast<double>(curve.size() - 1);
        const std::size_t from = std::min(static_cast<std::size_t>(at), curve.size() - 2);
        even.push_back(Mix(curve[from], curve[from + 1], at - static_cast<double>(from)));
    }
    return even;
}

Sheet MakeSheet(const std::vector<std::vector<Vec2>>& guides, double side, unsigned seed) {
    Sheet sheet{{}, side, seed};
    for (const auto& guide : guides) sheet.guides.push_back(Resampled(guide));
    return sheet;
}

// A point of the sheet across `place`, by a parabola through the three guides.
Vec2 SheetPoint(const Sheet& sheet, double place, int step) {
    const std::size_t i = static_cast<std::size_t>(step);
    const Vec2 a = sheet.guides[0][i];
    const Vec2 b = sheet.guides[1][i];
    const Vec2 c = sheet.guides[2][i];
    const double t = place;
    return a * ((1 - t) * (1 - 2 * t)) + b * (4 * t * (1 - t)) + c * (t * (2 * t - 1));
}

// One lock of a sheet: its strands share place, wave and tint, and gather towards the tip.
struct Lock {
    double centre;  // across the sheet
    double half;    // half its width there
    double phase;
    double swing;
    double tint;   // 0 dark to 1 bright
    double depth;  // 0 on top to 1 in the dark beneath
    double reach;  // part of the sheet's length
};

struct StrandLook {
    double width;
    double cover;
    double stray;  // how far single hairs leave the lock
};

struct HairPoint {
    Vec2 at;
    double tilt;  // towards the viewer, relative to one step down the strand
};

double WaveAt(const Lock& lock, double s) {
    return lock.phase + 16.5 * s + 3.0 * s * s;
}

HairPoint PointAt(const Sheet& sheet, const Lock& lock, double u, double drift, int step) {
    const double s = static_cast<double>(step) / Steps;
    const double ribbon = Mix(1.0, 0.72 + 0.30 * std::sin(0.7 * WaveAt(lock, s) + 1.3), Smooth(0.25, 0.5, s));
    const double gather = Mix(1.25, 0.30, Smooth(0.45, 1.0, s / lock.reach)) * ribbon;
    const double across = std::clamp(lock.centre + u * lock.half * gather, -0.06, 1.03);
    HairPoint point{SheetPoint(sheet, across, step), 0};
    const double grow = Smooth(0.24, 0.62, s);
    const double wave = WaveAt(lock, s);
    point.at.x += grow * 0.046 * lock.swing * std::sin(wave) + drift * Smooth(0.04, 1.0, s);
    point.at.y += grow * 0.014 * std::cos(wave * 0.9);
    // Over the crown hair comes towards the viewer, then it hangs and waves.
    point.tilt = Mix(1.1, -0.02, Smooth(0.0, 0.27, s)) - 0.55 * grow * lock.swing * std::sin(wave + 0.6);
    return point;
}

// Light on hair: two shines that depend on the strand's direction, and the roundness of sheet and lock.
Colour LitHair(const Sheet& sheet, const Lock& lock, double u, double s, Vec2 way, double tilt, Colour own,
               double grain) {
    const double place = Clamp01(lock.centre);
    const double body = sheet.side * Mix(-0.35, 1.0, std::pow(place, 0.8));
    const double loose = Smooth(0.12, 0.4, s);
    const Vec3 normal = Normalized({body + 0.5 * sheet.side * u * loose, -0.75 * Smooth(0.30, 0.0, s) - 0.05, 0.75});
    const Vec3 tangent = Normalized({way.x, way.y, tilt});
    const Vec3 half = Normalized(Light::Key + Vec3{0, 0, 1});
    const double along = Dot(tangent, half);
    const double first = along - 0.06 + 0.10 * grain;
    const double second = along + 0.14 + 0.14 * grain;
    const double shine = std::pow(std::max(0.0, 1 - first * first), 42.0);
    const double glow = std::pow(std::max(0.0, 1 - second * second), 9.0);
    const double facing = Smooth(-0.25, 0.75, Dot(normal, Light::Key));
    const double edge = 1 - 0.62 * loose * u * u * u * u;
    // The parting is a shallow valley.
    const double valley = Mix(0.30, 1.0, Smooth(-0.03, 0.07, s + 0.008 * grain));
    const double open = edge * (1 - 0.8 * lock.depth) * valley;
    Colour colour = own * (Light::KeyColour * (0.52 * facing) + Light::SkyColour * 0.55) * open;
    colour = colour + own * Light::KeyColour * (1.15 * glow * facing * open);
    colour = colour + Mix(own, Colour{0.86, 0.67, 0.50}, 0.35) * Light::KeyColour * (0.54 * shine * facing * open);
    const double rim = Smooth(0.80, 1.02, place + 0.05 * u) * (sheet.side > 0 ? 1.0 : 0.25);
    return colour + Light::RimColour * (0.10 * rim * (0.35 + glow) * open);
}

void AddStrand(const Scene& scene, const Sheet& sheet, const Lock& lock, double u, const StrandLook& look,
               Random& random, StrandSet& strands) {
    const Colour own = Mix(Mix(Dark, Middle, Clamp01(0.35 + 0.65 * lock.tint + 0.15 * random.Bell())), Bright,
                           Clamp01(0.55 * lock.tint * random.Next()));
    const double drift = look.stray * random.Bell();
    const double grain = random.Bell();
    const bool fine = look.width < 0.01;
    const double shade = random.Next(0.8, 1.2);
    const double last = lock.reach * random.Next(0.90, 1.0);
    const int count = std::max(4, static_cast<int>(last * Steps));
    StrandSet::Piece piece{};
    HairPoint from = PointAt(sheet, lock, u, drift, 0);
    from.at = scene.Tilt(from.at);
    for (int step = 0; step < count; ++step) {
        const double s = static_cast<double>(step) / Steps;
        HairPoint to = PointAt(sheet, lock, u, drift, step + 1);
        to.at = scene.Tilt(to.at);
        const Vec2 move = to.at - from.at;
        const Vec2 way = move * (1 / std::max(Length(move), 1e-9));
        const double taper = Smooth(1.0, 0.75, static_cast<double>(step) / count);
        const Colour colour = LitHair(sheet, lock, u, s, way, from.tilt, own * shade, grain);
        const double root = step > 0 || !fine ? 1.0 : 0.15;
        const double cover = look.cover * Mix(0.1, 1.0, taper) * root;
        const double width = look.width * Mix(0.35, 1.0, taper);
        // Roots do not end on a line.
        if (step == 0 && fine) from.at = from.at - way * (0.010 * std::abs(grain));
        if (step == 0) piece = {from.at, to.at, width, width, colour, colour, cover, cover};
        piece.from = from.at;
        piece.to = to.at;
        piece.toColour = colour;
        piece.toCover = cover;
        piece.toWidth = width;
        strands.Add(piece);
        piece.fromColour = colour;
        piece.fromCover = cover;
        piece.fromWidth = width;
        from = to;
    }
}

struct Layer {
    int locks;
    int strandsPerLock;
    double half;
    double depth;
    StrandLook look;
};

// Locks lie over each other in an order of their own, so that each has edges and depth.
void AddLayer(const Scene& scene, const Sheet& sheet, const Layer& layer, unsigned seed, StrandSet& strands) {
    Random random(seed);
    std::vector<int> order;
    for (int i = 0; i < layer.locks; ++i) order.push_back(i);
    for (std::size_t i = order.size(); i > 1; --i)
        std::swap(order[i - 1], order[static_cast<std::size_t>(random.Next() * 0.9999 * static_cast<double>(i))]);
    for (const int number : order) {
        Lock lock{};
        lock.centre = (number + 0.5 + 0.35 * random.Bell()) / layer.locks;
        lock.half = layer.half * random.Next(0.7, 1.3);
        // Neighbours wave nearly together.
        lock.phase = 4.5 * lock.centre + 0.8 * random.Bell();
        lock.swing = random.Next(0.6, 1.25) * Mix(0.55, 1.1, lock.centre) * (1 - 0.5 * layer.depth);
        lock.tint = random.Next();
        lock.depth = Clamp01(layer.depth + random.Next(-0.1, 0.1));
        lock.reach = random.Next(0.84, 1.0);
        for (int i = 0; i < layer.strandsPerLock; ++i)
            AddStrand(scene, sheet, lock, random.Next(-1, 1), layer.look, random, strands);
    }
}

const Sheet& LeftSheet() {
    static const Sheet sheet = MakeSheet({{{0.13, -0.80},
                                           {-0.08, -0.74},
                                           {-0.33, -0.58},
                                           {-0.51, -0.33},
                                           {-0.60, -0.06},
                                           {-0.64, 0.22},
                                           {-0.63, 0.56},
                                           {-0.60, 0.92},
                                           {-0.62, 1.32},
                                           {-0.68, 1.76},
                                           {-0.66, 2.3}},
                                          {{0.115, -0.99},
                                           {-0.20, -1.0},
                                           {-0.52, -0.83},
                                           {-0.71, -0.49},
                                           {-0.79, -0.08},
                                           {-0.825, 0.30},
                                           {-0.82, 0.70},
                                           {-0.86, 1.10},
                                           {-0.87, 1.50},
                                           {-0.89, 1.90},
                                           {-0.86, 2.4}},
                                          {{0.095, -1.125},
                                           {-0.25, -1.16},
                                           {-0.60, -0.99},
                                           {-0.82, -0.60},
                                           {-0.905, -0.10},
                                           {-0.945, 0.35},
                                           {-0.97, 0.80},
                                           {-1.03, 1.20},
                                           {-1.04, 1.58},
                                           {-1.06, 1.95},
                                           {-1.05, 2.4}}},
                                         -1, 201);
    return sheet;
}

const Sheet& RightSheet() {
    static const Sheet sheet = MakeSheet({{{0.13, -0.80},
                                           {0.28, -0.73},
                                           {0.44, -0.57},
                                           {0.575, -0.32},
                                           {0.635, -0.03},
                                           {0.66, 0.28},
                                           {0.635, 0.64},
                                           {0.62, 0.98},
                                           {0.60, 1.32},
                                           {0.65, 1.72},
                                           {0.62, 2.3}},
                                          {{0.115, -0.99},
                                           {0.36, -0.98},
                                           {0.60, -0.78},
                                           {0.75, -0.43},
                                           {0.805, 0.0},
                                           {0.82, 0.40},
                                           {0.81, 0.80},
                                           {0.85, 1.15},
                                           {0.84, 1.50},
                                           {0.86, 1.88},
                                           {0.83, 2.4}},
                                          {{0.095, -1.125},
                                           {0.38, -1.13},
                                           {0.68, -0.91},
                                           {0.86, -0.52},
                                           {0.915, -0.05},
                                           {0.935, 0.40},
                                           {0.95, 0.85},
                                           {1.00, 1.22},
                                           {0.99, 1.58},
                                           {1.02, 1.92},
                                           {1.01, 2.4}}},
                                         1, 301);
    return sheet;
}

const Sheet& BackSheet(double side) {
    const auto make = [](double s) {
        const auto line = [s](std::initializer_list<Vec2> points) {
            std::vector<Vec2> out;
            for (const Vec2& p : points) out.push_back({s * p.x, p.y});
            return out;
        };
        return MakeSheet({line({{0.02, -0.6}, {0.10, 0.0}, {0.20, 0.6}, {0.30, 1.1}, {0.38, 1.55}}),
                          line({{0.35, -0.7}, {0.55, -0.1}, {0.60, 0.5}, {0.62, 1.05}, {0.66, 1.6}}),
                          line({{0.60, -0.7}, {0.84, -0.1}, {0.90, 0.5}, {0.93, 1.05}, {0.96, 1.6}})},
                         s, s < 0 ? 401u : 501u);
    };
    static const Sheet left = make(-1);
    static const Sheet right = make(1);
    return side < 0 ? left : right;
}

}  // namespace

double HairClearance(Vec2 canvas) {
    // Down one side's innermost guide and up the other's; the tilt is the scene's, as for the strands.
    static const Outline gap = [] {
        std::vector<Vec2> points;
        const auto& left = LeftSheet().guides[0];
        const auto& right = RightSheet().guides[0];
        for (std::size_t i = 0; i <= Steps * 3 / 4; i += 3) points.push_back(Scene::Tilt(left[i]));
        for (std::size_t i = Steps * 3 / 4; i > 2; i -= 3) points.push_back(Scene::Tilt(right[i]));
        return Outline(points, 1);
    }();
    return gap.Inside(canvas);
}

void AddBackHair(const Scene& scene, StrandSet& strands) {
    for (const double side : {-1.0, 1.0}) {
        const Sheet& sheet = BackSheet(side);
        AddLayer(scene, sheet, {30, 14, 0.06, 0.92, {0.040, 1.0, 0.01}}, sheet.seed, strands);
        AddLayer(scene, sheet, {24, 40, 0.04, 0.75, {0.008, 0.7, 0.02}}, sheet.seed + 1, strands);
    }
}

void AddFrontHair(const Scene& scene, StrandSet& strands) {
    for (const Sheet* sheet : {&LeftSheet(), &RightSheet()}) {
        AddLayer(scene, *sheet, {60, 20, 0.022, 0.72, {0.018, 1.0, 0.003}}, sheet->seed, strands);
        AddLayer(scene, *sheet, {30, 120, 0.045, 0.35, {0.0062, 0.75, 0.004}}, sheet->seed + 1, strands);
        AddLayer(scene, *sheet, {26, 190, 0.042, 0.05, {0.0042, 0.70, 0.005}}, sheet->seed + 2, strands);
        AddLayer(scene, *sheet, {30, 7, 0.06, 0.0, {0.0024, 0.5, 0.032}}, sheet->seed + 3, strands);
    }
}
