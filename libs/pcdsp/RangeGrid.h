// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <vector>

// Colours of a picture in coarse cells of place and guide value: a mean over near pixels of like value costs the same
// however wide it is (bilateral grid, Chen, Paris, Durand 2007). Colours are red, green and blue in levels.
class RangeGrid {
  public:
    // Four numbers side by side: how much lies in a cell, and the sum of its red, green and blue.
    typedef float Cell __attribute__((vector_size(16)));

    // A picture of width x height in cells of `side` pixels, whose guide runs from 0 to `range` in bins of 1.
    RangeGrid(int width, int height, float side, float range);

    // Cells form rows; row r takes the picture's rows from FirstRowOf(r) on, up to FirstRowOf(r + 1).
    int CellRows() const { return m_rows; }
    int FirstRowOf(int cellRow) const { return m_firstRows[cellRow]; }
    // Adds a row of the picture to its row of cells, each pixel as often as `weight` says (above 0). Different rows of
    // cells may be filled at the same time.
    void Add(int cellRow, const float* weight, const float* guide, const float* red, const float* green,
             const float* blue);
    // Once all rows are in: a binomial of three cells along each of the three axes.
    void Blur();

    // A row of the picture, ready to be read.
    class Row {
      public:
        explicit Row(const RangeGrid& grid) : m_grid(grid), m_cells(grid.RowLength()) {}
        void MoveTo(int y);
        // The sums about column x at a guide value; their quotients by the first are the mean colour.
        Cell Read(int x, float guide) const;

      private:
        const RangeGrid& m_grid;
        std::vector<Cell> m_cells;
    };

  private:
    std::size_t RowLength() const { return std::size_t(m_columns) * m_bins; }
    Cell* CellRow(int row) { return m_cells.data() + RowLength() * row; }
    const Cell* CellRow(int row) const { return m_cells.data() + RowLength() * row; }

    float m_side;
    int m_columns, m_rows, m_bins;
    std::vector<int> m_columnOf;  // the cell of each column of the picture
    std::vector<int> m_firstRows;
    std::vector<Cell> m_cells;
};
