// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColourDifference.h"

#include <cmath>

namespace {

const double Pi = std::acos(-1.0);

double Linear(double level) {
    const double v = level / 255.0;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

double Cube(double t) {
    return t > 216.0 / 24389.0 ? std::cbrt(t) : (24389.0 / 27.0 * t + 16.0) / 116.0;
}

double Degrees(double y, double x) {
    if (x == 0.0 && y == 0.0) return 0.0;
    const double d = std::atan2(y, x) * 180.0 / Pi;
    return d < 0.0 ? d + 360.0 : d;
}

double Cosine(double degrees) {
    return std::cos(degrees * Pi / 180.0);
}

double Seventh(double c) {
    return std::sqrt(std::pow(c, 7.0) / (std::pow(c, 7.0) + std::pow(25.0, 7.0)));
}

}  // namespace

Lab LabOf(double red, double green, double blue) {
    const double r = Linear(red), g = Linear(green), b = Linear(blue);
    const double x = Cube((0.4124564 * r + 0.3575761 * g + 0.1804375 * b) / 0.95047);
    const double y = Cube(0.2126729 * r + 0.7151522 * g + 0.0721750 * b);
    const double z = Cube((0.0193339 * r + 0.1191920 * g + 0.9503041 * b) / 1.08883);
    return {116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
}

double ChromaOf(const Lab& c) {
    return std::hypot(c.a, c.b);
}

double HueOf(const Lab& c) {
    return Degrees(c.b, c.a);
}

double DeltaE2000(const Lab& p, const Lab& q) {
    const double g = 0.5 * (1.0 - Seventh((ChromaOf(p) + ChromaOf(q)) / 2.0));
    const double a1 = p.a * (1.0 + g), a2 = q.a * (1.0 + g);
    const double c1 = std::hypot(a1, p.b), c2 = std::hypot(a2, q.b);
    const double h1 = Degrees(p.b, a1), h2 = Degrees(q.b, a2);
    double turn = 0.0, hue = h1 + h2;
    if (c1 * c2 != 0.0) {
        turn = h2 - h1;
        if (turn > 180.0) turn -= 360.0;
        if (turn < -180.0) turn += 360.0;
        if (std::abs(h1 - h2) <= 180.0)
            hue = (h1 + h2) / 2.0;
        else
            hue = (h1 + h2 + (h1 + h2 < 360.0 ? 360.0 : -360.0)) / 2.0;
    }
    const double light = (p.l + q.l) / 2.0, chroma = (c1 + c2) / 2.0;
    const double t = 1.0 - 0.17 * Cosine(hue - 30.0) + 0.24 * Cosine(2.0 * hue) + 0.32 * Cosine(3.0 * hue + 6.0) -
                     0.20 * Cosine(4.0 * hue - 63.0);
    const double square = (light - 50.0) * (light - 50.0);
    const double dl = (q.l - p.l) / (1.0 + 0.015 * square / std::sqrt(20.0 + square));
    const double dc = (c2 - c1) / (1.0 + 0.045 * chroma);
    const double dh = 2.0 * std::sqrt(c1 * c2) * std::sin(turn * Pi / 360.0) / (1.0 + 0.015 * chroma * t);
    const double rotation =
        -2.0 * Seventh(chroma) * std::sin(std::exp(-std::pow((hue - 275.0) / 25.0, 2.0)) * Pi / 3.0);
    return std::sqrt(dl * dl + dc * dc + dh * dh + rotation * dc * dh);
}

double MeanDeltaE(const Bitmap& first, const Bitmap& second) {
    double sum = 0.0;
    const auto* p = first.Pixels();
    const auto* q = second.Pixels();
    for (std::size_t i = 0; i < first.ByteCount(); i += 4)
        sum += DeltaE2000(LabOf(p[i + 2], p[i + 1], p[i]), LabOf(q[i + 2], q[i + 1], q[i]));
    return sum / (double(first.Width()) * first.Height());
}
