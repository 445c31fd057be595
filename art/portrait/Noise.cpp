// SPDX-License-Identifier: GPL-3.0-or-later
#include "Noise.h"

std::uint32_t Hash(std::uint32_t a, std::uint32_t b, std::uint32_t seed) {
    std::uint32_t h = a * 0x9E3779B1u + b * 0x85EBCA77u + seed * 0xC2B2AE3Du;
    h ^= h >> 15;
    h *= 0x2C1B3C6Du;
    h ^= h >> 12;
    h *= 0x297A2D39u;
    return h ^ (h >> 15);
}

double HashUnit(int x, int y, std::uint32_t seed) {
    return (Hash(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), seed) >> 8) * (1.0 / 16777216.0);
}

double ValueNoise(Vec2 p, std::uint32_t seed) {
    const double fx = std::floor(p.x);
    const double fy = std::floor(p.y);
    // A whole cell number by construction, so the cast loses nothing.
    const int x = static_cast<int>(fx);
    const int y = static_cast<int>(fy);
    const double tx = p.x - fx;
    const double ty = p.y - fy;
    const double sx = tx * tx * tx * (tx * (tx * 6 - 15) + 10);
    const double sy = ty * ty * ty * (ty * (ty * 6 - 15) + 10);
    const double top = Mix(HashUnit(x, y, seed), HashUnit(x + 1, y, seed), sx);
    const double bottom = Mix(HashUnit(x, y + 1, seed), HashUnit(x + 1, y + 1, seed), sx);
    return Mix(top, bottom, sy) * 2 - 1;
}

double Fractal(Vec2 p, int octaves, std::uint32_t seed) {
    double sum = 0;
    double weight = 0.5;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += weight * ValueNoise(p, seed + static_cast<std::uint32_t>(octave) * 101u);
        // Turned a little at each octave so that the cells' lines never add up.
        p = {(p.x * 0.8 - p.y * 0.6) * 2.03, (p.x * 0.6 + p.y * 0.8) * 2.03};
        weight *= 0.5;
    }
    return sum;
}

double Random::Bell() {
    double sum = 0;
    for (int i = 0; i < 6; ++i) sum += Next();
    return (sum - 3.0) * 1.4142135623730951;
}
