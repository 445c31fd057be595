// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"

// Colour as people see it, for judging results.
struct Lab {
    double l, a, b;
};

// CIE L*a*b* (D65) of an sRGB colour in levels.
Lab LabOf(double red, double green, double blue);
// CIEDE2000 with all weights 1 (Sharma, Wu, Dalal 2005).
double DeltaE2000(const Lab& first, const Lab& second);
// The mean over all pixels of two bitmaps of one size.
double MeanDeltaE(const Bitmap& first, const Bitmap& second);
// Hue angle in degrees.
double HueOf(const Lab& colour);
double ChromaOf(const Lab& colour);
