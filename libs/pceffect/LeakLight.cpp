// SPDX-License-Identifier: GPL-3.0-or-later
#include "LeakLight.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "Parallel.h"

namespace {

const double Pi = std::acos(-1.0);

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

// How strong the light is at a place in fractions of the picture: 1 in the middle of the shape, 0 outside.
double Falloff(const Leak& leak, double x, double y) {
    const double uneven = leak.wobble * 0.01 * Cloudy(x, y, static_cast<unsigned>(leak.seed));
    if (leak.shape == Leak::Shape::Border) {
        // Distance to the nearest side; corners are rounded by adding what the sides give.
        const double across = std::max(0.0, 1 - std::min(x, 1 - x) / (leak.width * 0.01));
        const double down = std::max(0.0, 1 - std::min(y, 1 - y) / (leak.height * 0.01));
        return Smooth(std::hypot(across, down) * (1 + uneven));
    }
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
                // As film takes light: it burns out to white instead of stopping at its colour.
                for (int i = 0; i < 3; ++i) {
                    const double colour = leak.rim[i] + (leak.core[i] - leak.rim[i]) * strength;
                    to[i] = static_cast<float>(1 - std::exp(-0.02 * leak.strength * strength * colour / 255.0));
                }
            }
    });
    return layer;
}
