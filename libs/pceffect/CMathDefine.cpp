// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMathDefine.h"

#include <cmath>

MathPoint CMathDefine::PtChangeByRotate(const MathPoint& point, const MathPoint& centre, double degrees) {
    const double turn = std::fmod(degrees, 360.0);
    double c = std::cos(turn * std::acos(-1.0) / 180.0), s = std::sin(turn * std::acos(-1.0) / 180.0);
    if (std::fmod(turn, 90.0) == 0.0) {
        c = std::round(c);
        s = std::round(s);
    }
    const double x = point.x - centre.x, y = point.y - centre.y;
    return {centre.x + x * c - y * s, centre.y + x * s + y * c};
}
