// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "MarkGroups.h"
#include "Pace.h"
#include "Planes.h"

inline float LumaOf(const float* bgr) {
    return 0.0722f * bgr[0] + 0.7152f * bgr[1] + 0.2126f * bgr[2];
}

// The skin round one mark in cells, and the cheek's colour for each column of them. Measure comes first.
class CircleSkin {
  public:
    static constexpr int Colours = 3;  // blue, green and red, in levels

    // The part `area` of the picture in cells of `factor` pixels each way.
    CircleSkin(const std::uint8_t* pixels, int width, const PixelRect& area, const MarkGroup& group, int factor,
               const Pace& pace);

    // `thickness` is the mark's, in pixels. False when there is no cheek to go by, or when it was stopped.
    bool Measure(float thickness, const Pace& pace);
    // The mean gap between the marked skin and the cheek, in levels of luma; at least 1.
    float UsualGap() const;
    // For a MapReader: the skin's low frequencies, and how much of a cell is skin.
    const Planes& Low() const { return m_low; }
    const Planes& Shares() const { return m_shares; }
    // The cheek's colour below a column of cells.
    const float* Cheek(int column) const { return &m_cheek[std::size_t(Colours) * column]; }
    int Factor() const { return m_factor; }
    int Columns() const { return m_cells.Width(); }

  private:
    using Colour = std::array<float, Colours>;

    std::size_t IndexOf(int x, int y) const { return std::size_t(m_cells.Width()) * y + x; }
    Colour ColourAt(int x, int y) const { return {m_cells.Row(0, y)[x], m_cells.Row(1, y)[x], m_cells.Row(2, y)[x]}; }
    template <class Body>
    void ForCells(const Body& body) const {
        for (int y = 0; y < m_cells.Height(); ++y)
            for (int x = 0; x < m_cells.Width(); ++x) body(x, y);
    }
    float& Weight(int x, int y) { return m_weights[IndexOf(x, y)]; }
    bool IsMarked(int x, int y) const { return m_marked[IndexOf(x, y)] > 0.5f; }
    bool IsSkin(int x, int y) const { return m_skin[IndexOf(x, y)]; }
    // Calls body(x, y) for the cells of the cheek below the mark.
    template <class Body>
    void ForCheek(float thickness, const Body& body) const;
    // All thicknesses and the deviation below are in cells.
    void FindSkin(float thickness);
    void FindUsual(float thickness);
    void WeighSkin();
    void SmoothSkin(float sigma, const Pace& pace);
    bool FindCheek(float thickness);

    int m_factor, m_markedColumns;
    Planes m_cells, m_low;
    std::vector<std::uint8_t> m_skin;  // the mark and the cheek below it
    std::vector<float> m_marked, m_weights, m_cheek;
    Planes m_shares;   // of skin in a cell
    Colour m_usual{};  // the skin's colour
};
