// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "Planes.h"

// A picture whose squares of factor x factor pixels are one cell each, their mean (of every second or
// third row where cells are large): planes red, green and blue in
// levels. The factor is the least that leaves at most `mostCells` (and at most 16).
class ReducedCopy {
  public:
    static constexpr int Colours = 3;

    // Uses all cores.
    ReducedCopy(const std::uint8_t* pixels, int width, int height, int mostCells);

    int Factor() const { return m_factor; }
    int Columns() const { return m_planes.Width(); }
    int Rows() const { return m_planes.Height(); }
    // The caller may write them.
    float* Row(int colour, int y) { return m_planes.Row(colour, y); }
    const float* Row(int colour, int y) const { return m_planes.Row(colour, y); }
    Planes& Cells() { return m_planes; }
    const Planes& Cells() const { return m_planes; }

    // Skin likelihood of the cells of a row, from every `step`-th of them: writes (Columns() - 1) / step + 1 values.
    void SkinOfRow(int y, int step, float* skin) const;
    // The width of a face in cells: half way between that of a usual portrait and what the amount of skin in the
    // picture says, so that neither a crop nor skin-coloured clothes lead far astray.
    double FaceWidth() const;

  private:
    void Fill(const std::uint8_t* pixels, int width, int height);

    int m_factor;
    Planes m_planes;
};
