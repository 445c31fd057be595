// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "Vec.h"

// A smooth curve through control points, as short straight pieces.
std::vector<Vec2> SmoothCurve(const std::vector<Vec2>& points, int piecesPerSpan, bool closed);

// A closed smooth shape.
class Outline {
  public:
    explicit Outline(const std::vector<Vec2>& points, int piecesPerSpan = 10);
    // Distance to the edge: positive inside, negative outside, exact for the polygon of pieces. From further outside
    // than Far only the distance to the shape's box, which is less.
    static constexpr double Far = 0.7;
    double Inside(Vec2 p) const;
    const std::vector<Vec2>& Points() const { return m_points; }

  private:
    std::vector<Vec2> m_points;
    Vec2 m_low;
    Vec2 m_high;
};
