// SPDX-License-Identifier: GPL-3.0-or-later
#include "MarkSoftness.h"

#include "SoftFall.h"

MarkSoftness::MarkSoftness(const MarkGroup& group, const PixelRect& picture)
    : m_box(group.box.Grown(1)), m_ways(std::size_t(m_box.Width()) * m_box.Height(), 0.0f) {
    for (const MarkRun& run : group.runs) std::fill_n(&m_ways[IndexOf(run.left, run.y)], run.right - run.left, Far);
    const PixelRect seen = m_box.Within(picture);
    for (int y = m_box.top; y < m_box.bottom; ++y)
        for (int x = m_box.left; x < m_box.right; ++x)
            if (x < seen.left || x >= seen.right || y < seen.top || y >= seen.bottom) m_ways[IndexOf(x, y)] = Far;
    // The way to the nearest pixel outside in steps along rows, columns and diagonals, there and back (Borgefors
    // 1986).
    for (int y = m_box.top + 1; y < m_box.bottom; ++y)
        for (int x = m_box.left + 1; x + 1 < m_box.right; ++x) Near(x, y, -1);
    for (int y = m_box.bottom - 2; y >= m_box.top; --y)
        for (int x = m_box.right - 2; x > m_box.left; --x) Near(x, y, 1);
    // On a mark that leaves no border in the picture every way is far.
    for (const MarkRun& run : group.runs)
        for (int x = run.left; x < run.right; ++x) m_most = std::max(m_most, m_ways[IndexOf(x, run.y)]);
    m_most = std::min(m_most, 0.5f * static_cast<float>(std::min(group.box.Width(), group.box.Height())));
}

void MarkSoftness::Soften(float feather, float ends) {
    m_along.resize(m_box.Width());
    for (int x = 0; x < m_box.Width(); ++x)
        m_along[x] = Rise(static_cast<float>(std::min(x, m_box.Width() - 1 - x)), 0.5f, 0.5f + ends);
    for (int y = 0; y < m_box.Height(); ++y)
        for (int x = 0; x < m_box.Width(); ++x) {
            float& way = m_ways[std::size_t(m_box.Width()) * y + x];
            way = m_along[x] * Rise(way, 0.5f, 0.5f + feather);
        }
}

void MarkSoftness::Near(int x, int y, int side) {
    float& way = m_ways[IndexOf(x, y)];
    way = std::min({way, m_ways[IndexOf(x + side, y)] + 1.0f, m_ways[IndexOf(x, y + side)] + 1.0f,
                    m_ways[IndexOf(x - 1, y + side)] + 1.41f, m_ways[IndexOf(x + 1, y + side)] + 1.41f});
}
