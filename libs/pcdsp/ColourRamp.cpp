// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColourRamp.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

// CIE L*, chroma and hue (radians) for D65, and the way to sRGB in levels (IEC 61966-2-1).
struct Lch {
    double l, c, h;
};

struct Levels {
    double r, g, b;
    bool Shown() const { return std::min({r, g, b}) >= -0.01 && std::max({r, g, b}) <= 255.01; }
};

double Linear(double level) {
    const double v = level / 255.0;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

double Coded(double light) {
    return 255.0 * (light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1.0 / 2.4) - 0.055);
}

double Root3(double t) {
    return t > 216.0 / 24389.0 ? std::cbrt(t) : (24389.0 / 27.0 * t + 16.0) / 116.0;
}

double Cube(double f) {
    return f > 6.0 / 29.0 ? f * f * f : (116.0 * f - 16.0) * 27.0 / 24389.0;
}

Lch LchOf(double red, double green, double blue) {
    const double r = Linear(red), g = Linear(green), b = Linear(blue);
    const double x = Root3((0.4124564 * r + 0.3575761 * g + 0.1804375 * b) / 0.95047);
    const double y = Root3(0.2126729 * r + 0.7151522 * g + 0.0721750 * b);
    const double z = Root3((0.0193339 * r + 0.1191920 * g + 0.9503041 * b) / 1.08883);
    const double a = 500.0 * (x - y), yellow = 200.0 * (y - z);
    return {116.0 * y - 16.0, std::hypot(a, yellow), std::atan2(yellow, a)};
}

Levels LevelsOf(const Lch& c) {
    const double fy = (c.l + 16.0) / 116.0;
    const double x = 0.95047 * Cube(fy + c.c * std::cos(c.h) / 500.0);
    const double y = Cube(fy);
    const double z = 1.08883 * Cube(fy - c.c * std::sin(c.h) / 200.0);
    return {Coded(3.2404542 * x - 1.5371385 * y - 0.4985314 * z), Coded(-0.9692660 * x + 1.8760108 * y + 0.0415560 * z),
            Coded(0.0556434 * x - 0.2040259 * y + 1.0572252 * z)};
}

// The nearest colour of the same lightness and hue that sRGB has.
Levels Shown(Lch colour) {
    colour.l = std::clamp(colour.l, 0.0, 100.0);
    if (LevelsOf(colour).Shown()) return LevelsOf(colour);
    double low = 0.0, high = colour.c;
    for (int i = 0; i < 20; ++i) {
        colour.c = 0.5 * (low + high);
        (LevelsOf(colour).Shown() ? low : high) = colour.c;
    }
    colour.c = low;
    return LevelsOf(colour);
}

std::uint32_t Packed(const Levels& levels, double share) {
    const auto byte = [](double v) { return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0, 255.0))); };
    return byte(255.0 * share) << 24 | byte(levels.r) << 16 | byte(levels.g) << 8 | byte(levels.b);
}

// A ramp from colour(L*) and share(L*) of the pixel.
template <class Colour, class Share>
ColourRamp RampOf(Colour colour, Share share) {
    ColourRamp ramp{};
    for (int i = 0; i < ColourRamp::Steps; ++i) {
        const double level = 0.25 * i;
        const double l = LchOf(level, level, level).l;
        ramp.colours[i] = Packed(Shown(colour(l)), share(l));
    }
    std::fill(ramp.colours + ColourRamp::Steps, std::end(ramp.colours), ramp.colours[ColourRamp::Steps - 1]);
    return ramp;
}

// How colourful skin usually is at a lightness: most in the middle.
double SkinChroma(double l) {
    const double x = l / 100.0;
    return (8.0 + 80.0 * x * (1.0 - x)) * std::min(1.0, l / 25.0) * std::min(1.0, (100.0 - l) / 12.0);
}

}  // namespace

ColourRamp RecolouringRamp(int red, int green, int blue) {
    const Lch wanted = LchOf(red, green, blue);
    // A hyperbola through black and white whose slope at black is `lift`.
    const double lift = 1.35 * std::exp2((wanted.l - 55.0) / 60.0);
    const auto colour = [&](double l) -> Lch {
        const double x = l / 100.0;
        const double target = 100.0 * lift * x / (1.0 + (lift - 1.0) * x);
        const double share =
            target < wanted.l ? target / wanted.l : std::pow((100.0 - target) / (100.0 - wanted.l + 1e-9), 0.7);
        return {target, wanted.c * std::min(share, 1.0), wanted.h};
    };
    return RampOf(colour, [](double) { return 1.0; });
}

ColourRamp SkinToneRamp(int red, int green, int blue) {
    constexpr double usualHue = 0.96;  // 55 degrees, where skin of every tone lies
    constexpr double calm = 24.0;      // chroma above it is no longer skin but paint, and counts by a third
    Lch wanted = LchOf(red, green, blue);
    if (wanted.c > calm) wanted.c = calm + (wanted.c - calm) / 3.0;
    // From the hue of the tone to that of skin, the shorter way round.
    const double turn = std::remainder(usualHue - wanted.h, 2.0 * std::acos(-1.0));
    const auto darker = [&](double l) {
        const double t = std::clamp((wanted.l - l - 8.0) / 40.0, 0.0, 1.0);
        return t * t * (3.0 - 2.0 * t);
    };
    const auto colour = [&](double l) -> Lch {
        const double ends = std::min(1.0, l * (100.0 - l) / 1600.0);
        const double target = l + 8.0 * ends * std::tanh(0.25 * (wanted.l - l) / 8.0);
        const double chroma = wanted.c * std::sqrt(SkinChroma(target) / std::max(SkinChroma(wanted.l), 1.0));
        return {target, chroma, wanted.h + 0.7 * darker(l) * turn};
    };
    return RampOf(colour, [&](double l) { return 0.65 - 0.3 * darker(l); });
}
