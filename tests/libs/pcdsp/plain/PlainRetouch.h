// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "Kernels.h"

// The rows of the retouches, one pixel after the other.
namespace Plain {

struct Pixel {
    double r, g, b;
    explicit Pixel(const std::uint8_t* p) : r(p[2]), g(p[1]), b(p[0]) {}
};

inline double Luma(const Pixel& c) {
    return 0.2126 * c.r + 0.7152 * c.g + 0.0722 * c.b;
}

inline std::uint8_t Level(double v) {
    return static_cast<std::uint8_t>(std::clamp(v, 0.0, 255.0) + 0.5);
}

inline void Put(std::uint8_t* p, double r, double g, double b) {
    p[2] = Level(r);
    p[1] = Level(g);
    p[0] = Level(b);
}

inline double Soft(double v, double zeroAt, double oneAt) {
    return std::clamp((v - zeroAt) / (oneAt - zeroAt), 0.0, 1.0);
}

inline double MapAt(const MappedRow& row, int map, int x) {
    return row.above[map][x] + (double(row.below[map][x]) - row.above[map][x]) * row.part;
}

inline std::uint32_t RampAt(const std::uint32_t* ramp, const Pixel& c) {
    const double light = std::sqrt(0.2126 * c.r * c.r + 0.7152 * c.g * c.g + 0.0722 * c.b * c.b);
    return ramp[static_cast<int>(4.0 * light + 0.5)];
}

inline void CorrectRow(std::uint8_t* pixels, int count, const MappedRow& row) {
    for (int x = 0; x < count; ++x) {
        const Pixel c(pixels + 4 * x);
        const double share = row.mask ? row.mask[x] / 255.0 : 1.0;
        Put(pixels + 4 * x, c.r + share * MapAt(row, 0, x), c.g + share * MapAt(row, 1, x),
            c.b + share * MapAt(row, 2, x));
    }
}

inline void RecolourRow(std::uint8_t* pixels, int count, const std::uint32_t* ramp) {
    for (int x = 0; x < count; ++x) {
        const std::uint32_t colour = RampAt(ramp, Pixel(pixels + 4 * x));
        Put(pixels + 4 * x, colour >> 16 & 255, colour >> 8 & 255, colour & 255);
    }
}

inline void TintRow(std::uint8_t* pixels, int count, const MappedRow& row) {
    for (int x = 0; x < count; ++x) {
        const Pixel c(pixels + 4 * x);
        const std::uint32_t tone = RampAt(row.ramp, c);
        const double share = MapAt(row, 0, x) * (tone >> 24) / 255.0;
        Put(pixels + 4 * x, c.r + ((tone >> 16 & 255) - c.r) * share, c.g + ((tone >> 8 & 255) - c.g) * share,
            c.b + ((tone & 255) - c.b) * share);
    }
}

inline void TeethRow(std::uint8_t* pixels, int count, const MappedRow& row) {
    const auto lifted = [&](double v) { return v * row.lift / (1.0 + v * (row.lift - 1.0) / 255.0); };
    for (int x = 0; x < count; ++x) {
        const Pixel c(pixels + 4 * x);
        const double red = std::max(c.r, 1.0);
        const double likeness = (c.r - c.g) / red * row.perP + std::max(c.g - c.b, 2.0 * (c.b - c.g)) / red * row.perQ;
        const double tooth = Soft(likeness, 1.26, 1.05) * Soft(Luma(c), 30, 70) *
                             Soft(c.b - std::max(c.r, c.g), 14, 4) * MapAt(row, 0, x);
        const auto pale = [&](double v) { return v + (Luma(c) - v) * 0.7; };
        const double yellow = std::max(pale(c.g) - pale(c.b) - 2.0, 0.0);
        const auto mixed = [&](double v, double white) { return v + (white - v) * tooth; };
        Put(pixels + 4 * x, mixed(c.r, lifted(pale(c.r))), mixed(c.g, lifted(pale(c.g))),
            mixed(c.b, lifted(pale(c.b) + 0.7 * yellow)));
    }
}

// What skin gains and the local contrast of everything else, held back so that no channel reaches an end.
inline void FaceRow(std::uint8_t* pixels, int count, const MappedRow& corrections, const MappedRow& details,
                    double clarity) {
    for (int x = 0; x < count; ++x, pixels += 4) {
        const Pixel c(pixels);
        double clear = 0.0;
        if (clarity > 0.0) {
            const double base = Luma(c) * MapAt(details, 1, x) + MapAt(details, 2, x), detail = Luma(c) - base;
            clear = detail * clarity * (1.0 - MapAt(details, 0, x)) * detail * detail / (detail * detail + 6.0);
        }
        const double levels[] = {c.r, c.g, c.b};
        double change[3], asked = 0.0;
        for (int i = 0; i < 3; ++i) {
            change[i] = MapAt(corrections, i, x) + clear;
            const double room = change[i] > 0.0 ? 255.0 - levels[i] : levels[i];
            asked = std::max(asked, std::abs(change[i]) / std::max(room - 0.6, 1e-3));
        }
        const double given = 1.0 / std::pow(1.0 + std::pow(asked, 4.0), 0.25);
        Put(pixels, c.r + change[0] * given, c.g + change[1] * given, c.b + change[2] * given);
    }
}

}  // namespace Plain
