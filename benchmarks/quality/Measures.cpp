// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measures.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace {

template <class Visit>
void ForEachInside(const cv::Mat1b& mask, Visit visit) {
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x)
            if (mask(y, x)) visit(y, x);
}

cv::Mat Disc(double radius) {
    const int r = std::max(1, static_cast<int>(std::lround(radius)));
    return cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * r + 1, 2 * r + 1});
}

Lab At(const cv::Mat3f& lab, int y, int x) {
    const cv::Vec3f& c = lab(y, x);
    return {c[0], c[1], c[2]};
}

}  // namespace

cv::Mat1f LumaOf(const Bitmap& picture) {
    cv::Mat1f luma(picture.Height(), picture.Width());
    for (int y = 0; y < luma.rows; ++y) {
        const std::uint8_t* p = picture.Row(y);
        for (int x = 0; x < luma.cols; ++x, p += 4) luma(y, x) = 0.0722f * p[0] + 0.7152f * p[1] + 0.2126f * p[2];
    }
    return luma;
}

cv::Mat3b ColoursOf(const Bitmap& picture) {
    cv::Mat3b colours(picture.Height(), picture.Width());
    for (int y = 0; y < colours.rows; ++y) {
        const std::uint8_t* p = picture.Row(y);
        for (int x = 0; x < colours.cols; ++x, p += 4) colours(y, x) = {p[0], p[1], p[2]};
    }
    return colours;
}

Bitmap BitmapOf(const cv::Mat3b& colours) {
    Bitmap picture = Bitmap::Uninitialised(colours.cols, colours.rows);
    std::uint8_t* to = picture.MutablePixels();
    for (int y = 0; y < colours.rows; ++y)
        for (int x = 0; x < colours.cols; ++x, to += 4) {
            std::copy_n(colours(y, x).val, 3, to);
            to[3] = 255;
        }
    return picture;
}

cv::Mat3f LabOf(const Bitmap& picture) {
    cv::Mat3f lab;
    ColoursOf(picture).convertTo(lab, CV_32FC3, 1.0 / 255.0);
    cv::cvtColor(lab, lab, cv::COLOR_BGR2Lab);
    return lab;
}

cv::Mat1f Blurred(const cv::Mat1f& plane, double sigma) {
    cv::Mat1f out;
    cv::GaussianBlur(plane, out, {}, std::max(sigma, 0.2), 0, cv::BORDER_REPLICATE);
    return out;
}

cv::Mat1f GradientOf(const cv::Mat1f& plane) {
    cv::Mat1f across, down, out;
    cv::Sobel(plane, across, CV_32F, 1, 0, 3, 0.125, 0, cv::BORDER_REPLICATE);
    cv::Sobel(plane, down, CV_32F, 0, 1, 3, 0.125, 0, cv::BORDER_REPLICATE);
    cv::magnitude(across, down, out);
    return out;
}

cv::Mat1b Grown(const cv::Mat1b& mask, double radius) {
    cv::Mat1b out;
    cv::dilate(mask, out, Disc(radius));
    return out;
}

cv::Mat1b Shrunk(const cv::Mat1b& mask, double radius) {
    cv::Mat1b out;
    cv::erode(mask, out, Disc(radius));
    return out;
}

cv::Mat1b SkinColoured(const Bitmap& picture) {
    cv::Mat3b ycc;
    cv::cvtColor(ColoursOf(picture), ycc, cv::COLOR_BGR2YCrCb);
    cv::Mat1b inside;
    cv::inRange(ycc, cv::Scalar(20, 132, 75), cv::Scalar(255, 182, 130), inside);
    return inside;
}

double MeanOf(const cv::Mat1f& plane, const cv::Mat1b& mask) {
    return cv::mean(plane, mask)[0];
}

double DeviationOf(const cv::Mat1f& plane, const cv::Mat1b& mask) {
    cv::Scalar mean, deviation;
    cv::meanStdDev(plane, mean, deviation, mask);
    return deviation[0];
}

double RootMeanSquareOf(const cv::Mat1f& plane, const cv::Mat1b& mask) {
    return std::sqrt(cv::mean(plane.mul(plane), mask)[0]);
}

double QuantileOf(const cv::Mat1f& plane, const cv::Mat1b& mask, double part) {
    std::vector<float> values;
    ForEachInside(mask, [&](int y, int x) { values.push_back(plane(y, x)); });
    if (values.empty()) return 0.0;
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

double CorrelationOf(const cv::Mat1f& a, const cv::Mat1f& b, const cv::Mat1b& mask) {
    const double meanA = MeanOf(a, mask), meanB = MeanOf(b, mask);
    double both = 0.0, squareA = 0.0, squareB = 0.0;
    ForEachInside(mask, [&](int y, int x) {
        const double p = a(y, x) - meanA, q = b(y, x) - meanB;
        both += p * q;
        squareA += p * p;
        squareB += q * q;
    });
    return squareA * squareB > 0.0 ? both / std::sqrt(squareA * squareB) : 0.0;
}

Lab MeanOf(const cv::Mat3f& lab, const cv::Mat1b& mask) {
    const cv::Scalar mean = cv::mean(lab, mask);
    return {mean[0], mean[1], mean[2]};
}

double MeanDeltaE(const cv::Mat3f& a, const cv::Mat3f& b, const cv::Mat1b& mask) {
    double sum = 0.0;
    long count = 0;
    ForEachInside(mask, [&](int y, int x) {
        sum += DeltaE2000(At(a, y, x), At(b, y, x));
        ++count;
    });
    return count ? sum / static_cast<double>(count) : 0.0;
}

std::vector<double> PatchDeltaE(const cv::Mat3f& a, const cv::Mat3f& b, const cv::Mat1b& mask, int side) {
    std::vector<double> differences;
    for (int y = 0; y + side <= mask.rows; y += side)
        for (int x = 0; x + side <= mask.cols; x += side) {
            const cv::Rect patch(x, y, side, side);
            if (cv::countNonZero(mask(patch)) > 0.8 * side * side)
                differences.push_back(
                    DeltaE2000(MeanOf(cv::Mat3f(a(patch)), mask(patch)), MeanOf(cv::Mat3f(b(patch)), mask(patch))));
        }
    return differences;
}

double HueDistance(double a, double b) {
    const double d = std::fmod(std::abs(a - b), 360.0);
    return std::min(d, 360.0 - d);
}

bool IsEmpty(const cv::Mat1b& mask) {
    return cv::countNonZero(mask) < 20;
}
