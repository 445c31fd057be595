// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

// The soft disc that a brush stamps with: a square table of alpha bytes, twice the radius a side.
class BrushTip {
  public:
    // Fills the zeroed rows of a square table of 2 * radius: PC_Dsp::Circle_Gradient_Alpha and its like.
    using Shape = int (*)(unsigned char** rows, int radius);

    explicit BrushTip(Shape shape) : m_shape(shape) {}

    // Picture pixels that half a pen of `pen` screen pixels covers at `zoom`, above 0; never below 2.
    static int RadiusOf(int pen, double zoom);
    // Gives the disc another radius. Nothing for the present one, and for 1, which is no disc. May throw
    // std::bad_alloc; the disc is then as it was.
    void Rebuild(int radius);

    // 0 before the first Rebuild.
    int Side() const { return m_side; }
    const std::uint8_t* Row(int y) const { return &m_table[static_cast<std::size_t>(y) * m_side]; }

  private:
    Shape m_shape;
    int m_side = 0;
    std::vector<std::uint8_t> m_table;
};
