// SPDX-License-Identifier: GPL-3.0-or-later
#include "Features.h"

namespace Face {

namespace {

double LidBase(double t) {
    return Mix(0.024, -0.02, t);
}
double LidPlace(double x) {
    return Clamp01((x - EyeInner) / (EyeOuter - EyeInner));
}

}  // namespace

const Outline& Head() {
    static const Outline outline(
        {{0.0, -1.0},     {0.3, -0.95},   {0.52, -0.77},  {0.63, -0.5},  {0.665, -0.2},  {0.665, 0.05},
         {0.632, 0.28},   {0.57, 0.5},    {0.456, 0.69},  {0.312, 0.86}, {0.163, 0.967}, {0.0, 1.0},
         {-0.163, 0.967}, {-0.312, 0.86}, {-0.456, 0.69}, {-0.57, 0.5},  {-0.632, 0.28}, {-0.665, 0.05},
         {-0.665, -0.2},  {-0.63, -0.5},  {-0.52, -0.77}, {-0.3, -0.95}},
        6);
    return outline;
}

const std::vector<Spot>& Spots() {
    static const std::vector<Spot> spots{{{-0.385, 0.335}, 0.0150, 1.0}, {{-0.205, -0.425}, 0.0130, 0.95},
                                         {{0.335, 0.415}, 0.0145, 1.0},  {{-0.11, 0.845}, 0.0125, 1.0},
                                         {{0.13, -0.365}, 0.0110, 0.9},  {{-0.47, 0.475}, 0.0115, 0.85}};
    return spots;
}

double UpperLid(double x) {
    const double t = LidPlace(x);
    return LidBase(t) - 0.071 * std::pow(std::sin(3.141592653589793 * std::pow(t, 0.92)), 0.72);
}

double LowerLid(double x) {
    const double t = LidPlace(x);
    return LidBase(t) + 0.041 * std::pow(std::sin(3.141592653589793 * std::pow(t, 1.15)), 0.85);
}

MouthEdges MouthAt(double x) {
    const double t = std::min(std::abs(x) / MouthHalf, 1.0);
    const double corner = MouthY - 0.030;  // a smile: the corners stand higher than the middle
    const double bow = 0.016 * Bell((std::abs(x) - 0.055) / 0.045) - 0.004 * Bell(x / 0.03);
    MouthEdges edges{};
    const double arch = std::pow(std::max(0.0, 1 - t * t), 0.62);
    edges.upperOuter = Mix(corner, MouthY - 0.075, std::pow(std::max(0.0, 1 - std::pow(t, 1.6)), 1.25)) - bow;
    edges.upperInner = corner + 0.022 * std::pow(std::max(0.0, 1 - t * t), 0.8) - 0.003 * Bell(x / 0.06);
    edges.lowerInner = corner + 0.076 * std::pow(std::max(0.0, 1 - t * t), 0.95);
    edges.lowerOuter = corner + 0.162 * std::pow(arch, 1.75);
    edges.upperInner = std::max(edges.upperInner, edges.upperOuter);
    edges.lowerInner = std::max(edges.lowerInner, edges.upperInner);
    edges.lowerOuter = std::max(edges.lowerOuter, edges.lowerInner);
    return edges;
}

}  // namespace Face
