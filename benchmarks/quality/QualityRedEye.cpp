// SPDX-License-Identifier: GPL-3.0-or-later
// Red eye: what becomes of the pupil, and that nothing else is touched.
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "Measures.h"
#include "PC_Dsp.h"
#include "Quality.h"

namespace {

constexpr double Scales[] = {0.25, 0.5, 1.0, 2.0};

cv::Mat1b DiscOf(const cv::Size& size, const Subject::Disc& disc, double grown) {
    cv::Mat1b mask = cv::Mat1b::zeros(size);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            if (std::hypot(x + 0.5 - disc.centre.x, y + 0.5 - disc.centre.y) <= disc.radius + grown) mask(y, x) = 255;
    return mask;
}

}  // namespace

static const QualityCase redEye("red eye", [](const Subject& subject, QualityReport& report) {
    if (subject.redPupils.empty()) return;
    for (const double scale : Scales) {
        Subject scaled = subject;
        const int width = static_cast<int>(std::lround(scale * subject.picture.Width()));
        const int height = static_cast<int>(std::lround(scale * subject.picture.Height()));
        scaled.picture = PC_Dsp::Resample(subject.picture, width, height);
        scaled.faceWidth *= scale;
        const std::string name = "red eye x" + std::to_string(scale).substr(0, 4);
        double a = 0.0, l = 0.0, outside = 0.0, again = 0.0;
        Bitmap after = scaled.picture.Clone();
        for (const Subject::Disc& disc : subject.redPupils) {
            const Subject::Disc pupil{disc.centre * scale, disc.radius * scale};
            const Bitmap before = after.Clone();
            const int half = static_cast<int>(3.0 * pupil.radius) + 2;
            const cv::Point middle(static_cast<int>(pupil.centre.x), static_cast<int>(pupil.centre.y));
            const PixelRect rect{middle.x - half, middle.y - half, middle.x + half, middle.y + half};
            PC_Dsp::RedEyeRemove(after, rect);
            Bitmap twice = after.Clone();
            PC_Dsp::RedEyeRemove(twice, rect);
            again = std::max(again, cv::norm(ColoursOf(twice), ColoursOf(after), cv::NORM_INF));
            const cv::Mat1b inner = DiscOf({width, height}, pupil, -std::max(0.5, 0.1 * pupil.radius));
            const cv::Mat3f is = LabOf(after), was = LabOf(before);
            cv::Mat1f planes[3], wasPlanes[3];
            cv::split(is, planes);
            cv::split(was, wasPlanes);
            // The highlight was light before.
            const cv::Mat1b dark = inner & (wasPlanes[0] < 65.0f);
            a = std::max(a, QuantileOf(planes[1], inner, 0.98));
            l = std::max(l, QuantileOf(planes[0], dark, 0.98));
            cv::Mat difference;
            cv::absdiff(ColoursOf(before), ColoursOf(after), difference);
            difference.setTo(cv::Scalar::all(0), DiscOf({width, height}, pupil, 2.5));
            outside = std::max(outside, cv::norm(difference, cv::NORM_INF));
        }
        report.Add(scaled, name, QualityReport::Own,
                   {{"a*", a, "", -Figure::None, 5, 1},
                    {"L*", l, "", -Figure::None, 30, 1},
                    {"outside", outside, " levels", 0, 0},
                    {"second click", again, " levels", 0, 0}});
        const cv::Rect part =
            cv::Rect(cv::Point2d((subject.redPupils[0].centre.x - 8 * subject.redPupils[0].radius) * scale,
                                 (subject.redPupils[0].centre.y - 6 * subject.redPupils[0].radius) * scale),
                     cv::Size2d(16 * subject.redPupils[0].radius * scale, 12 * subject.redPupils[0].radius * scale)) &
            cv::Rect(0, 0, width, height);
        report.Crop(scaled, name, after, part);
    }
});
