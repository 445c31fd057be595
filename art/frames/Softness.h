// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGui/QImage>

#include <functional>

// What the drawings of frames share.

// A picture whose pixels are computed one by one, on all cores. `colour` yields a straight-alpha colour.
QImage Computed(int width, int height, const std::function<QRgb(int x, int y)>& colour);

// The same picture blurred by about a Gaussian of this deviation in pixels; premultiplied.
QImage Blurred(const QImage& image, double deviation);

// 0 below `from`, 1 above `to`, smooth between; either may be the larger one.
double Ramp(double from, double to, double value);
double Mixed(double a, double b, double share);
// Between two colours, alpha too.
QColor MixedColour(const QColor& a, const QColor& b, double share);
// A grey or coloured level made darker or lighter by a factor.
QColor Shaded(const QColor& colour, double factor);
// Smooth noise of -1 to 1 that repeats every `period` units along x.
double PeriodicNoise(double x, double y, double period, unsigned seed);
