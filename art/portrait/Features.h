// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "Outline.h"

// Where everything of the face is, in face units: the origin between the eyes, y down, the head two units high from
// crown (-1) to chin (1). The drawing and the ground truth both read it from here.
namespace Face {

inline constexpr double EyeX = 0.284;
inline constexpr double EyeInner = -0.152;  // corners along an eye's own axis, which points away from the nose
inline constexpr double EyeOuter = 0.165;
inline constexpr Vec2 Iris{-0.004, -0.021};
inline constexpr double IrisRadius = 0.074;
inline constexpr double PupilRadius = 0.028;
// The gaze meets the viewer although the head is turned: both irises stand this much to the side, in face x.
inline constexpr double GazeShift = -0.006;
inline constexpr double MouthY = 0.615;
inline constexpr double MouthHalf = 0.250;

struct Spot {
    Vec2 centre;
    double radius;
    double strength;
};

// The head without hair.
const Outline& Head();
// Blemishes of the skin, a few, and distinct.
const std::vector<Spot>& Spots();

// Edges of an eye's opening at `x` along its own axis (see above); equal at the corners.
double UpperLid(double x);
double LowerLid(double x);

// Edges of the mouth at `x`, from top to bottom: upper lip's outer edge, its inner edge, lower lip's inner and outer
// edge.
struct MouthEdges {
    double upperOuter, upperInner, lowerInner, lowerOuter;
};
MouthEdges MouthAt(double x);

}  // namespace Face
