// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

// Film grain: even noise of standard deviation 1 (32 in bytes) whose clumps have a given size, the same on every
// machine. Two tiles of sides without a common factor are added, so that the sum repeats only after sixty thousand
// pixels.
class GrainTiles {
  public:
    // `size` is the deviation of a clump in pixels. Below about half a pixel clumps melt into each other and the noise
    // fades, as it does when a larger picture is reduced.
    explicit GrainTiles(double size);

    // Noise of `count` pixels of row y from pixel `first` on.
    void Row(int y, int first, int count, std::int8_t* noise) const;

  private:
    static constexpr int SideA = 256, SideB = 243;
    std::vector<std::int8_t> m_a, m_b;
};
