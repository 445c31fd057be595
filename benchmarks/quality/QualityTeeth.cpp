// SPDX-License-Identifier: GPL-3.0-or-later
// Whitening of teeth: yellow goes, light rises, and what else is under a clumsy brush stays.
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <opencv2/photo.hpp>

#include "Measures.h"
#include "PC_Dsp.h"
#include "Quality.h"

namespace {

std::vector<Figure> Figures(const Subject& subject, const Bitmap& after) {
    const double w = subject.faceWidth;
    const cv::Mat3f was = LabOf(subject.picture), is = LabOf(after);
    std::vector<Figure> figures;
    if (!IsEmpty(subject.teeth)) {
        const Lab before = MeanOf(was, subject.teeth), now = MeanOf(is, subject.teeth);
        const cv::Mat1f lumaWas = LumaOf(subject.picture), lumaIs = LumaOf(after);
        const double radius = 0.01 * w;
        const double detail = RootMeanSquareOf(lumaIs - Blurred(lumaIs, radius), subject.teeth) /
                              RootMeanSquareOf(lumaWas - Blurred(lumaWas, radius), subject.teeth);
        // Nothing to take where nothing is yellow.
        if (before.b > 4.0)
            figures.push_back(
                {"yellow", 100.0 * std::max(now.b - 2.0, 0.0) / (before.b - 2.0) - 100.0, " %", -Figure::None, -60});
        figures.push_back({"light", now.l - before.l, " L*", before.l > 92.0 ? 0.0 : 4.0, 10, 1});
        figures.push_back({"b*", now.b, "", std::min(0.0, before.b), Figure::None, 1});
        figures.push_back({"detail", 100.0 * detail, " %", 75});
    }
    const cv::Mat1b mouth = subject.lips | subject.teeth;
    const cv::Mat1b around = Grown(mouth, 0.08 * w) & ~Grown(mouth, 0.01 * w);
    figures.push_back(
        {"lips", MeanDeltaE(was, is, subject.lips & ~Grown(subject.teeth, 0.004 * w)), " dE", -Figure::None, 2, 2});
    figures.push_back({"around", MeanDeltaE(was, is, around), " dE", -Figure::None, 2, 2});
    return figures;
}

}  // namespace

static const QualityCase teeth("teeth", [](const Subject& subject, QualityReport& report) {
    if (IsEmpty(subject.lips)) return;
    Bitmap after = subject.picture;
    PC_Dsp::MeiBaiYaChi(after.MutablePixels(), after.Width(), after.Height(), nullptr, 0, 100);
    report.Add(subject, "teeth", QualityReport::Own, Figures(subject, after));
    report.Crop(subject, "teeth", after, subject.Around(0.5, 0.78, 0.7, 0.45));
    if (!report.WantsOthers()) return;
    // Less yellow and more light for all that is under the brush.
    cv::Mat changed;
    cv::colorChange(ColoursOf(subject.picture), Grown(subject.lips | subject.teeth, 0.03 * subject.faceWidth), changed,
                    1.1f, 1.1f, 1.3f);
    report.Add(subject, "teeth", "OpenCV colorChange", Figures(subject, BitmapOf(changed)));
});
