// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "Recipe.h"

// A curve through points, rising and smooth (monotone cubic of Fritsch and Carlson 1980), beyond its ends a straight
// line that goes on with the slope it has there. In and out are 0 to 1. A curve of no points changes nothing.
class ToneCurve {
  public:
    explicit ToneCurve(const CurvePoints& points);

    double At(double x) const;
    bool IsIdentity() const { return m_identity; }

  private:
    double Exact(const CurvePoints& points, const std::vector<double>& slopes, double x) const;

    // Sampled densely: a look asks some hundred thousand times.
    static constexpr int Steps = 2048;
    std::array<float, Steps + 1> m_values{};
    double m_slopeAtBlack = 1.0, m_slopeAtWhite = 1.0;
    bool m_identity = true;
};
