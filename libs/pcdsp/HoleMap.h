// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "PcDspTypes.h"

// Which pixels of a plane are unknown: 0 for known ones, else one or both of the bits.
struct HoleMap {
    static constexpr std::uint8_t Own = 1;    // belongs to the hole that is being filled
    static constexpr std::uint8_t Other = 2;  // to another one, of which nothing may be taken
    int width = 0, height = 0;
    std::vector<std::uint8_t> holes;

    HoleMap() = default;
    HoleMap(int w, int h) : width(w), height(h), holes(std::size_t(w) * h) {}
    std::uint8_t* Row(int y) { return holes.data() + std::size_t(width) * y; }
    const std::uint8_t* Row(int y) const { return holes.data() + std::size_t(width) * y; }
    PixelRect Bounds() const { return {0, 0, width, height}; }
};
