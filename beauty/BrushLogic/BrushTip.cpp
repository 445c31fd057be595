// SPDX-License-Identifier: GPL-3.0-or-later
#include "BrushTip.h"

#include <algorithm>

#include "Truncate.h"

int BrushTip::RadiusOf(int pen, double zoom) {
    return std::max(2, Truncate(pen * 0.5 / zoom));
}

void BrushTip::Rebuild(int radius) {
    const int side = 2 * radius;
    if (radius <= 1 || side == m_side) return;
    std::vector<std::uint8_t> table(static_cast<std::size_t>(side) * side);
    std::vector<unsigned char*> rows(static_cast<std::size_t>(side));
    for (int y = 0; y < side; ++y) rows[y] = &table[static_cast<std::size_t>(y) * side];
    m_shape(rows.data(), radius);
    m_table = std::move(table);
    m_side = side;
}
