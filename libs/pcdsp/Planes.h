// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "BlockAllocator.h"

// Planes of floats of one size, from the allocator of bitmaps, since fresh pages cost more than the work on them. Not
// cleared. Rows have room for whole groups of a kernel behind their end.
class Planes {
  public:
    static constexpr int Slack = 16;

    Planes(int count, int width, int height)
        : m_width(width),
          m_height(height),
          m_pitch((width + 2 * Slack - 1) / Slack * Slack),
          m_bytes(std::size_t(count) * m_pitch * height * sizeof(float)),
          m_values(reinterpret_cast<float*>(BlockAllocator::Take(m_bytes))) {}
    ~Planes() { BlockAllocator::Give(reinterpret_cast<std::uint8_t*>(m_values), m_bytes); }
    Planes(const Planes&) = delete;
    Planes& operator=(const Planes&) = delete;

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    float* Row(int plane, int y) { return m_values + (std::ptrdiff_t{plane} * m_height + y) * m_pitch; }
    const float* Row(int plane, int y) const { return m_values + (std::ptrdiff_t{plane} * m_height + y) * m_pitch; }

  private:
    int m_width, m_height;
    std::ptrdiff_t m_pitch;
    std::size_t m_bytes;
    float* m_values;
};
