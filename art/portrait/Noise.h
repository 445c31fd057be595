// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "Vec.h"

// Seeded noise from integer hashes alone: the same on every machine and for every order of evaluation.

std::uint32_t Hash(std::uint32_t a, std::uint32_t b, std::uint32_t seed);
// 0 to 1, one value for each pair of cell numbers.
double HashUnit(int x, int y, std::uint32_t seed);
// -1 to 1, smooth, features about one unit wide.
double ValueNoise(Vec2 p, std::uint32_t seed);
// A sum of `octaves` of ValueNoise, each half as large and half as strong; about -1 to 1.
double Fractal(Vec2 p, int octaves, std::uint32_t seed);

// A row of numbers 0 to 1 from one seed.
class Random {
  public:
    explicit Random(std::uint32_t seed) : m_seed(seed) {}
    double Next() { return HashUnit(static_cast<int>(m_count++), 77, m_seed); }
    double Next(double low, double high) { return low + (high - low) * Next(); }
    // About normal, mean 0, deviation 1.
    double Bell();

  private:
    std::uint32_t m_seed;
    std::uint32_t m_count = 0;
};
