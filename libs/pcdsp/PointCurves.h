// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "Kernels.h"

// Tone curves from black 0 to white 1 on gamma-coded (sRGB) values, all rising and smooth. PC_Dsp.h says what the
// numbers mean; they are already held in range here.
namespace PointCurves {

double Brightness(double x, double step);
double Contrast(double x, double contrast);
double Exposure(double x, double stops);

// Stops that ExposureFilter's value stands for.
double StopsOf(double value);

// The sRGB transfer function of IEC 61966-2-1 and its inverse.
double ToLinear(double coded);
double ToCoded(double linear);

}  // namespace PointCurves

// A curve at the 256 levels, in levels.
using LevelCurve = std::array<float, 256>;
// The same as the kernels read it.
PointCurve PackCurve(const LevelCurve& curve);
