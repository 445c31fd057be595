// SPDX-License-Identifier: GPL-3.0-or-later
#include "RangeGrid.h"

#include <algorithm>

#include "Parallel.h"

namespace {

// Cells lie at multiples of their side.
int NearestCell(int at, float side) {
    return static_cast<int>(static_cast<float>(at) / side + 0.5f);
}

// (a + 2 b + c) / 4 along `count` runs of `length` cells that lie `step` apart, in place; the ends repeat.
void BlurAlong(RangeGrid::Cell* cells, int count, std::ptrdiff_t step, std::ptrdiff_t length) {
    std::vector<RangeGrid::Cell> before(cells, cells + length);
    for (int i = 0; i < count; ++i) {
        RangeGrid::Cell* const here = cells + i * step;
        const RangeGrid::Cell* const next = cells + std::min(i + 1, count - 1) * step;
        for (std::ptrdiff_t k = 0; k < length; ++k) {
            const RangeGrid::Cell old = here[k];
            here[k] = (before[k] + old + old + next[k]) * 0.25f;
            before[k] = old;
        }
    }
}

}  // namespace

RangeGrid::RangeGrid(int width, int height, float side, float range)
    : m_side(side),
      m_columns(NearestCell(width - 1, side) + 2),
      m_rows(NearestCell(height - 1, side) + 2),
      m_bins(static_cast<int>(range) + 2),
      m_columnOf(width),
      m_firstRows(m_rows + 1, height),
      m_cells(RowLength() * m_rows) {
    for (int x = 0; x < width; ++x) m_columnOf[x] = NearestCell(x, side);
    for (int y = height - 1; y >= 0; --y) m_firstRows[NearestCell(y, side)] = y;
}

void RangeGrid::Add(int cellRow, const float* weight, const float* guide, const float* red, const float* green,
                    const float* blue) {
    Cell* const cells = CellRow(cellRow);
    for (std::size_t x = 0; x < m_columnOf.size(); ++x) {
        const int bin = static_cast<int>(guide[x]);
        const float part = guide[x] - static_cast<float>(bin);
        Cell* const at = cells + std::ptrdiff_t{m_bins} * m_columnOf[x] + bin;
        const float w = weight[x];
        const Cell one = {w, w * red[x], w * green[x], w * blue[x]};
        const Cell upper = one * part;
        at[0] += one - upper;
        at[1] += upper;
    }
}

void RangeGrid::Blur() {
    ForEachBand(m_rows, 4, [&](int first, int last) {
        for (int row = first; row < last; ++row) {
            BlurAlong(CellRow(row), m_columns, m_bins, m_bins);
            for (int column = 0; column < m_columns; ++column)
                BlurAlong(CellRow(row) + std::ptrdiff_t{m_bins} * column, m_bins, 1, 1);
        }
    });
    ForEachBand(m_columns, 4, [&](int first, int last) {
        BlurAlong(m_cells.data() + std::ptrdiff_t{m_bins} * first, m_rows, static_cast<std::ptrdiff_t>(RowLength()),
                  std::ptrdiff_t{m_bins} * (last - first));
    });
}

void RangeGrid::Row::MoveTo(int y) {
    const float at = static_cast<float>(y) / m_grid.m_side;
    const int row = static_cast<int>(at);
    const float part = at - static_cast<float>(row);
    const Cell* const above = m_grid.CellRow(row);
    const Cell* const below = m_grid.CellRow(std::min(row + 1, m_grid.m_rows - 1));
    for (std::size_t i = 0; i < m_cells.size(); ++i) m_cells[i] = above[i] + (below[i] - above[i]) * part;
}

RangeGrid::Cell RangeGrid::Row::Read(int x, float guide) const {
    const float at = static_cast<float>(x) / m_grid.m_side;
    const int column = static_cast<int>(at), bin = static_cast<int>(guide);
    const float across = at - static_cast<float>(column), up = guide - static_cast<float>(bin);
    const Cell* const left = m_cells.data() + std::ptrdiff_t{m_grid.m_bins} * column + bin;
    const Cell* const right = left + m_grid.m_bins;
    const Cell low = left[0] + (right[0] - left[0]) * across;
    const Cell high = left[1] + (right[1] - left[1]) * across;
    return low + (high - low) * up;
}
