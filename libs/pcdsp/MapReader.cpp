// SPDX-License-Identifier: GPL-3.0-or-later
#include "MapReader.h"

#include <algorithm>

#include "Kernels.h"

namespace {

// Where the middle of a pixel lies among the middles of cells.
float PlaceOf(int pixel, int factor, int cells) {
    const auto f = static_cast<float>(factor);
    return std::clamp((static_cast<float>(pixel) - 0.5f * (f - 1.0f)) / f, 0.0f, static_cast<float>(cells - 1));
}

}  // namespace

MapColumns::MapColumns(int width, int factor, int cells) : index(width + Planes::Slack), part(width + Planes::Slack) {
    for (int x = 0; x < width; ++x) {
        const float at = PlaceOf(x, factor, cells);
        index[x] = static_cast<int>(at);
        part[x] = at - static_cast<float>(index[x]);
    }
}

MapReader::MapReader(const Planes& planes, int count, const MapColumns& columns, int width, int factor)
    : m_planes(planes),
      m_count(count),
      m_columns(columns),
      m_width(width),
      m_factor(factor),
      m_length(width + Planes::Slack),
      m_rows(2 * m_length * count) {}

const float* MapReader::Widened(int row) {
    float* const wide = m_rows.data() + (row & 1) * m_length * m_count;
    if (m_held[row & 1] != row)
        for (int i = 0; i < m_count; ++i)
            Kernels().widenRow(m_planes.Row(i, row), m_columns.index.data(), m_columns.part.data(), m_width,
                               wide + i * m_length);
    m_held[row & 1] = row;
    return wide;
}

void MapReader::MoveTo(int y, const float** above, const float** below, float* part) {
    const float at = PlaceOf(y, m_factor, m_planes.Height());
    const int row = static_cast<int>(at);
    const float* const upper = Widened(row);
    const float* const lower = Widened(std::min(row + 1, m_planes.Height() - 1));
    for (int i = 0; i < m_count; ++i) {
        above[i] = upper + i * m_length;
        below[i] = lower + i * m_length;
    }
    *part = at - static_cast<float>(row);
}

void MapReader::CloseRows(Planes& planes, int count) {
    for (int i = 0; i < count; ++i)
        for (int y = 0; y < planes.Height(); ++y) {
            float* const row = planes.Row(i, y);
            row[planes.Width()] = row[planes.Width() - 1];
        }
}
