// SPDX-License-Identifier: GPL-3.0-or-later
#include "LeakLight.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "Parallel.h"

namespace {

const double Pi = std::acos(-1.0);
// The brightest that light gets: what lies below still shows, and no channel reaches its end.
constexpr double MostLight = 0.96;

double Smooth(double x) {
    const double t = std::clamp(x, 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

// -1 to 1 by whole coordinates.
double Hash(int x, int y, unsigned seed) {
    unsigned h = unsigned(x) * 0x8DA6B343u ^ unsigned(y) * 0xD8163841u ^ (seed + 1) * 0xCB1AB31Fu;
    h = (h ^ h >> 15) * 0x2C1B3C6Du;
    h = (h ^ h >> 12) * 0x297A2D39u;
    return (h ^ h >> 15) * (2.0 / 4294967295.0) - 1.0;
}

// Smooth unevenness of about one wave a unit, -1 to 1.
double Uneven(double x, double y, unsigned seed) {
    const double left = std::floor(x), top = std::floor(y);
    const int i = static_cast<int>(left), j = static_cast<int>(top);
    const double u = Smooth(x - left), v = Smooth(y - top);
    const double above = Hash(i, j, seed) * (1 - u) + Hash(i + 1, j, seed) * u;
    const double below = Hash(i, j + 1, seed) * (1 - u) + Hash(i + 1, j + 1, seed) * u;
    return above * (1 - v) + below * v;
}

double Cloudy(double x, double y, unsigned seed) {
    return (Uneven(x * 2, y * 2, seed) + 0.5 * Uneven(x * 4.3 + 7, y * 4.3 + 3, seed + 57)) / 1.5;
}

// A border worn by light: an egg rather than a frame stays dark, whose edge wanders in and out in large bays and is
// frayed in small ones, so that neither a side nor a corner can be seen.
double Worn(const Leak& leak, double x, double y) {
    const unsigned seed = static_cast<unsigned>(leak.seed);
    const double wobble = leak.wobble * 0.01;
    // The middle lies off the picture's, each border's own way.
    const double shift = 0.12 * wobble;
    const double across = 2 * x - 1 + shift * Hash(1, 0, seed) + 0.16 * wobble * Uneven(1.7 * x, 1.7 * y, seed + 101);
    const double down = 2 * y - 1 + shift * Hash(2, 0, seed) + 0.16 * wobble * Uneven(1.7 * x, 1.7 * y, seed + 202);
    const double away = std::pow(std::pow(std::abs(across), 2.2) + std::pow(std::abs(down), 2.2), 1 / 2.2);
    const double bays = Uneven(2.3 * x + 5, 2.3 * y + 9, seed) + 0.45 * Uneven(5.1 * x, 5.1 * y, seed + 57) +
                        0.2 * Uneven(11 * x + 3, 11 * y, seed + 91);
    const double reach = (leak.width + leak.height) * 0.01 * (1 + 0.75 * wobble * bays);
    const double inner = 1.06 - std::max(reach, 0.02);
    return Smooth((away - inner) / (1.3 - inner));
}

// How strong the light is at a place in fractions of the picture: 1 in the middle of the shape, 0 outside.
double Falloff(const Leak& leak, double x, double y) {
    if (leak.shape == Leak::Shape::Border) return Worn(leak, x, y);
    const double uneven = leak.wobble * 0.01 * Cloudy(x, y, static_cast<unsigned>(leak.seed));
    const double angle = leak.angle * Pi / 180;
    const double dx = x - leak.x * 0.01, dy = y - leak.y * 0.01;
    const double u = (dx * std::cos(angle) + dy * std::sin(angle)) / (leak.width * 0.01);
    const double v = (dy * std::cos(angle) - dx * std::sin(angle)) / (leak.height * 0.01);
    if (leak.shape == Leak::Shape::Band) {
        const double thick = std::abs(u) * (1 - uneven);
        return std::exp(-2.2 * thick * thick) * (1 - Smooth((std::abs(v) - 0.4) / 0.6)) * (1 + 0.4 * uneven);
    }
    const double distance = std::hypot(u, v) * (1 - uneven);
    return std::exp(-2.2 * distance * distance);
}

}  // namespace

NodeLayer LeakLight(const Leak& leak, const NodeGrid& grid) {
    NodeLayer layer(grid.Count());
    ForEachBand(grid.rows, 8, [&](int first, int last) {
        for (int row = first; row < last; ++row)
            for (int column = 0; column < grid.columns; ++column) {
                const double strength = std::clamp(Falloff(leak, std::clamp(grid.X(column) / grid.width, 0.0, 1.0),
                                                           std::clamp(grid.Y(row) / grid.height, 0.0, 1.0)),
                                                   0.0, 1.0);
                NodeColour& to = layer[std::size_t(row) * grid.columns + column];
                // As film takes light: it burns out towards white instead of stopping at its colour.
                for (int i = 0; i < 3; ++i) {
                    const double colour = leak.rim[i] + (leak.core[i] - leak.rim[i]) * strength;
                    to[i] = static_cast<float>(MostLight *
                                               (1 - std::exp(-0.02 * leak.strength * strength * colour / 255.0)));
                }
            }
    });
    return layer;
}
