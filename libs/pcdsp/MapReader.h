// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "Planes.h"

// Planes over the cells of a ReducedCopy, read at the full size of the picture.
class MapColumns {
  public:
    // A picture `width` wide whose cells are `factor` pixels wide.
    MapColumns(int width, int factor, int cells);

    std::vector<int> index;
    std::vector<float> part;
};

// Rows of the first `count` planes widened to the picture, as a band of rows walks down. One for each thread.
class MapReader {
  public:
    static constexpr int Most = 3;

    // The cell behind the last of each row of `planes` must repeat it.
    MapReader(const Planes& planes, int count, const MapColumns& columns, int width, int factor);

    // Where the picture's row y lies: between two rows as wide as the picture, at `part` of the way.
    void MoveTo(int y, const float** above, const float** below, float* part);

    // Repeats the last cell of each row of the first `count` planes.
    static void CloseRows(Planes& planes, int count);

  private:
    const float* Widened(int row);

    const Planes& m_planes;
    int m_count;
    const MapColumns& m_columns;
    int m_width, m_factor;
    std::size_t m_length;
    std::vector<float> m_rows;
    int m_held[2] = {-1, -1};
};
