// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <vector>

#include "MarkGroups.h"

// How much of the change each pixel of a mark gets: 0 outside, rising to 1 on the way inwards. The picture's own border
// is none of the mark's.
class MarkSoftness {
  public:
    MarkSoftness(const MarkGroup& group, const PixelRect& picture);

    // Twice the longest way: the mark's thickness in pixels.
    float Thickness() const { return std::max(1.0f, 2.0f * m_most); }
    // Turns ways into shares, 1 from `feather` on, and `ends` away from the mark's left and right end.
    void Soften(float feather, float ends);

    float At(int x, int y) const { return m_ways[IndexOf(x, y)]; }
    // The share by the ends alone.
    float Along(int x) const { return m_along[x - m_box.left]; }

  private:
    static constexpr float Far = 1e6f;
    std::size_t IndexOf(int x, int y) const { return std::size_t(m_box.Width()) * (y - m_box.top) + (x - m_box.left); }
    void Near(int x, int y, int side);

    PixelRect m_box;
    std::vector<float> m_ways, m_along;
    float m_most = 0.0f;
};
