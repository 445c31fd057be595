// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "Vec.h"

// The face's height map in face units and what light makes of it, on a fixed grid: it does not depend on the size of
// the picture, so that a small rendering is the large one reduced.
class Relief {
  public:
    static constexpr double Left = -1.0, Top = -1.3, Right = 1.0, Bottom = 1.3, Step = 1.0 / 180;

    // Builds everything; `light` points from the face to the key light.
    explicit Relief(Vec3 light);

    struct Sample {
        double height = 0;
        double smoothHeight = 0;  // without features, for turning the head
        Vec3 normal{0, 0, 1};
        double open = 1;    // ambient light that arrives, 0 to 1
        double lit = 1;     // key light that is not shadowed, 0 to 1
        double hollow = 0;  // how far below its wide surroundings, for redness and shine
    };
    Sample At(Vec2 p) const;
    double SmoothHeightAt(Vec2 p) const { return Read(m_smooth, p); }

  private:
    using Grid = std::vector<double>;
    double Read(const Grid& grid, Vec2 p) const;
    Vec2 PointOf(int x, int y) const { return {Left + x * Step, Top + y * Step}; }
    double& Cell(Grid& grid, int x, int y) const { return grid[static_cast<std::size_t>(y) * m_width + x]; }
    double Cell(const Grid& grid, int x, int y) const { return grid[static_cast<std::size_t>(y) * m_width + x]; }

    Grid Inflate() const;
    void Blur(Grid& grid, double radius) const;
    void AddNormals();
    void AddOpenness();
    void AddShadow(Vec3 light);

    int m_width;
    int m_rows;
    Grid m_height, m_smooth, m_normalX, m_normalY, m_open, m_lit, m_hollow;
};

// Height that the features add to the plain head at a point: brow, sockets, nose, cheeks, lips, chin.
double FeatureHeight(Vec2 p);
