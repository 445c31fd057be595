// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include <vector>

#include "Bitmap.h"
#include "ColourDifference.h"

// What the measures of all retouches are made of. Planes and masks have the picture's size; masks are 255 inside.
// Lengths are in pixels.

// Luma in levels (ITU-R BT.709).
cv::Mat1f LumaOf(const Bitmap& picture);
// The picture as OpenCV sees it, three bytes a pixel, blue first, and back with opaque alpha.
cv::Mat3b ColoursOf(const Bitmap& picture);
Bitmap BitmapOf(const cv::Mat3b& colours);
// CIE L*, a* and b*.
cv::Mat3f LabOf(const Bitmap& picture);

// Gaussian of standard deviation `sigma`.
cv::Mat1f Blurred(const cv::Mat1f& plane, double sigma);
// Magnitude of the gradient (Sobel's 3 x 3) in levels a pixel.
cv::Mat1f GradientOf(const cv::Mat1f& plane);

cv::Mat1b Grown(const cv::Mat1b& mask, double radius);
cv::Mat1b Shrunk(const cv::Mat1b& mask, double radius);
// Where colours are those of skin, by the rule of OpenCV's users since Chai and Ngan (1999): a box in Cb and Cr,
// somewhat widened. Not the library's own rule, which is what is being judged.
cv::Mat1b SkinColoured(const Bitmap& picture);

// Over the mask; 0 where it is empty.
double MeanOf(const cv::Mat1f& plane, const cv::Mat1b& mask);
double DeviationOf(const cv::Mat1f& plane, const cv::Mat1b& mask);
double RootMeanSquareOf(const cv::Mat1f& plane, const cv::Mat1b& mask);
double QuantileOf(const cv::Mat1f& plane, const cv::Mat1b& mask, double part);
double CorrelationOf(const cv::Mat1f& a, const cv::Mat1f& b, const cv::Mat1b& mask);
Lab MeanOf(const cv::Mat3f& lab, const cv::Mat1b& mask);
// Mean colour difference (CIEDE2000) pixel by pixel.
double MeanDeltaE(const cv::Mat3f& a, const cv::Mat3f& b, const cv::Mat1b& mask);
// The difference of the mean colours of square patches of `side` that lie in the mask for more than four fifths.
std::vector<double> PatchDeltaE(const cv::Mat3f& a, const cv::Mat3f& b, const cv::Mat1b& mask, int side);
// The shorter way between two hue angles in degrees.
double HueDistance(double a, double b);

bool IsEmpty(const cv::Mat1b& mask);
