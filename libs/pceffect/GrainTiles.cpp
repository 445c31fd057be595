// SPDX-License-Identifier: GPL-3.0-or-later
#include "GrainTiles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

const double Pi = std::acos(-1.0);

// Evenly spread 32-bit numbers (Steele's SplitMix, 2014).
class Random {
  public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}
    std::uint32_t Next() {
        m_state += 0x9E3779B97F4A7C15u;
        std::uint64_t z = m_state;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9u;
        z = (z ^ z >> 27) * 0x94D049BB133111EBu;
        return static_cast<std::uint32_t>(z >> 32);
    }

  private:
    std::uint64_t m_state;
};

// A tile that goes on at its other side, blurred by `deviation`, of a standard deviation of 32 * strength.
std::vector<std::int8_t> Tile(int side, double deviation, double strength, std::uint64_t seed) {
    Random random(seed);
    std::vector<float> noise(std::size_t(side) * side), other(noise.size());
    // The sum of three even numbers is near enough to a bell.
    for (float& v : noise)
        v = static_cast<float>((double(random.Next()) + random.Next() + random.Next()) / 2147483648.0 - 3.0);
    if (deviation > 0.05) {
        const int half = std::min(side / 2 - 1, static_cast<int>(std::ceil(3 * deviation)));
        std::vector<float> weights(half + 1);
        for (int i = 0; i <= half; ++i)
            weights[i] = static_cast<float>(std::exp(-0.5 * i * i / (deviation * deviation)));
        // A line goes on at its other end.
        std::vector<float> line(side + 2 * half);
        const auto blur = [&](const std::vector<float>& in, std::vector<float>& out, int step, int next) {
            for (int l = 0; l < side; ++l) {
                for (int i = 0; i < side + 2 * half; ++i)
                    line[i] = in[std::size_t(l) * next + std::size_t((i - half + side) % side) * step];
                for (int i = 0; i < side; ++i) {
                    float sum = line[i + half] * weights[0];
                    for (int k = 1; k <= half; ++k) sum += (line[i + half - k] + line[i + half + k]) * weights[k];
                    out[std::size_t(l) * next + std::size_t(i) * step] = sum;
                }
            }
        };
        blur(noise, other, 1, side);
        blur(other, noise, side, 1);
    }
    double mean = 0.0, square = 0.0;
    for (const float v : noise) mean += v;
    mean /= double(noise.size());
    for (const float v : noise) square += (v - mean) * (v - mean);
    const double scale = 32.0 * strength / std::sqrt(square / double(noise.size()));
    std::vector<std::int8_t> tile(noise.size());
    for (std::size_t i = 0; i < tile.size(); ++i)
        tile[i] = static_cast<std::int8_t>(std::clamp(std::lround((noise[i] - mean) * scale), -63l, 63l));
    return tile;
}

}  // namespace

GrainTiles::GrainTiles(double size) {
    // A pixel sees the mean over its square: of clumps with the deviation s it leaves this share. Variances of the
    // bell and of the square (1/12 each way) add.
    const double left = size * size / (size * size + 1.0 / (4.0 * Pi));
    const double strength = std::sqrt(left) * std::sqrt(0.5);
    m_a = Tile(SideA, size, strength, 11);
    m_b = Tile(SideB, size, strength, 23);
}

void GrainTiles::Row(int y, int first, int count, std::int8_t* noise) const {
    const std::int8_t* a = &m_a[std::size_t(y % SideA) * SideA];
    const std::int8_t* b = &m_b[std::size_t(y % SideB) * SideB];
    int i = 0;
    while (i < count) {
        const int atA = (first + i) % SideA, atB = (first + i) % SideB;
        const int run = std::min({count - i, SideA - atA, SideB - atB});
        for (int k = 0; k < run; ++k) noise[i + k] = static_cast<std::int8_t>(a[atA + k] + b[atB + k]);
        i += run;
    }
}
