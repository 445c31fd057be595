// SPDX-License-Identifier: GPL-3.0-or-later
// Skin smoothing: blotches go, grain, edges and colour stay.
#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <opencv2/photo.hpp>

#include "Measures.h"
#include "PC_Dsp.h"
#include "Quality.h"

namespace {

// Deviations of the two Gaussians that part grain, blotches and shading, in face widths.
constexpr double GrainEdge = 0.0027, BlotchEdge = 0.02;

struct Bands {
    cv::Mat1f grain, blotches, edges;

    Bands(const Bitmap& picture, double w) {
        const cv::Mat1f luma = LumaOf(picture);
        const cv::Mat1f fine = Blurred(luma, GrainEdge * w);
        grain = luma - fine;
        blotches = fine - Blurred(luma, BlotchEdge * w);
        edges = GradientOf(fine);
    }
};

struct Wanted {
    double blotches, grain;
};

std::vector<Figure> Figures(const Subject& subject, const Bitmap& after, const Wanted& wanted) {
    const double w = subject.faceWidth;
    const Bands was(subject.picture, w), is(after, w);
    const auto kept = [&](const cv::Mat1f& a, const cv::Mat1f& b) {
        return 100.0 * RootMeanSquareOf(b, subject.skin) / RootMeanSquareOf(a, subject.skin);
    };
    const cv::Mat1b strong = subject.face & (was.edges >= QuantileOf(was.edges, subject.face, 0.95));
    const std::vector<double> patches =
        PatchDeltaE(LabOf(subject.picture), LabOf(after), subject.skin, std::max(3, static_cast<int>(0.15 * w)));
    return {{"blotches", kept(was.blotches, is.blotches) - 100.0, " %", -Figure::None, wanted.blotches},
            {"grain", kept(was.grain, is.grain), " %", wanted.grain},
            {"edges", 100.0 * MeanOf(is.edges, strong) / MeanOf(was.edges, strong), " %", 95},
            {"patch", patches.empty() ? 0.0 : *std::max_element(patches.begin(), patches.end()), " dE", -Figure::None,
             1.0, 2}};
}

// What the filters of OpenCV do, on luma where they offer it, with radii that follow the face.
void AddOthers(const Subject& subject, QualityReport& report) {
    const double w = subject.faceWidth;
    const cv::Mat3b source = ColoursOf(subject.picture);
    const auto add = [&](const char* maker, const cv::Mat3b& result) {
        std::vector<Figure> figures = Figures(subject, BitmapOf(result), {-35, 65});
        report.Add(subject, "smooth", maker, std::move(figures));
    };
    cv::Mat ycc;
    std::vector<cv::Mat> planes;
    cv::cvtColor(source, ycc, cv::COLOR_BGR2YCrCb);
    cv::split(ycc, planes);
    const auto onLuma = [&](const auto& filter) {
        std::vector<cv::Mat> out = planes;
        out[0] = cv::Mat();
        filter(planes[0], out[0]);
        cv::Mat merged;
        cv::merge(out, merged);
        cv::cvtColor(merged, merged, cv::COLOR_YCrCb2BGR);
        return cv::Mat3b(merged);
    };
    add("OpenCV bilateral", onLuma([&](const cv::Mat& in, cv::Mat& out) {
            cv::bilateralFilter(in, out, 2 * static_cast<int>(0.02 * w) + 1, 20, 0.01 * w);
        }));
    add("OpenCV Gaussian",
        onLuma([&](const cv::Mat& in, cv::Mat& out) { cv::GaussianBlur(in, out, {}, std::max(0.3, 0.005 * w)); }));
    add("OpenCV non-local",
        onLuma([&](const cv::Mat& in, cv::Mat& out) { cv::fastNlMeansDenoising(in, out, 6, 7, 15); }));
    cv::Mat kept;
    cv::edgePreservingFilter(source, kept, cv::RECURS_FILTER, static_cast<float>(std::max(2.0, 0.01 * w)), 0.15f);
    add("OpenCV edge-preserving", kept);
}

}  // namespace

static const QualityCase smooth("smooth", [](const Subject& subject, QualityReport& report) {
    if (IsEmpty(subject.skin)) return;
    const auto measure = [&](const char* name, float sigma, const Wanted& wanted) {
        Bitmap after = subject.picture;
        PC_Dsp::CannyDericheBlur(after, sigma, sigma, nullptr, nullptr, 0, 100);
        report.Add(subject, name, QualityReport::Own, Figures(subject, after, wanted));
        report.Crop(subject, name, after, subject.Around(0.35, 0.55, 0.6, 0.6));
    };
    measure("smooth 1.0", 1.0f, {-35, 65});
    measure("smooth 3.0", 3.0f, {-60, 45});
    if (report.WantsOthers()) AddOthers(subject, report);
});
