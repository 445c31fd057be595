// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// A place in a picture, x to the right and y down.
struct MathPoint {
    double x = 0.0;
    double y = 0.0;
};

// Small pieces of plane geometry.
class CMathDefine {
  public:
    // The point turned about the centre by an angle in degrees: clockwise as seen in the picture, so that 90 moves a
    // point from the right of the centre to below it. Any angle; whole quarter turns are exact.
    static MathPoint PtChangeByRotate(const MathPoint& point, const MathPoint& centre, double degrees);
};
