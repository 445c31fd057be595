// SPDX-License-Identifier: GPL-3.0-or-later
// Skin tint: the skin takes the tone, keeps shading and texture and is never powder; eyes and hair stay.
#include <cmath>
#include <opencv2/photo.hpp>

#include "Measures.h"
#include "PC_Dsp.h"
#include "Quality.h"

namespace {

struct Tone {
    const char* name;
    unsigned char r, g, b;
};
// Pale, pink, brown and strong: the ends of the palettes.
constexpr Tone Tones[] = {
    {"ivory", 240, 225, 201}, {"pink", 255, 211, 222}, {"tan", 173, 141, 114}, {"rose", 203, 72, 90}};

// How unlike the colours of the skin are among themselves, whatever their lightness, in parts of their colourfulness.
double Unevenness(const cv::Mat3f& lab, const cv::Mat1b& skin) {
    std::vector<cv::Mat1f> planes;
    cv::split(lab, planes);
    return std::hypot(DeviationOf(planes[1], skin), DeviationOf(planes[2], skin)) / ChromaOf(MeanOf(lab, skin));
}

std::vector<Figure> Figures(const Subject& subject, const Bitmap& after, const Tone& tone) {
    const double w = subject.faceWidth;
    const cv::Mat1f was = LumaOf(subject.picture), is = LumaOf(after);
    const cv::Mat3f labWas = LabOf(subject.picture), labIs = LabOf(after);
    const Lab skinWas = MeanOf(labWas, subject.skin), skinIs = MeanOf(labIs, subject.skin);
    const Lab wanted = LabOf(tone.r, tone.g, tone.b);
    const auto away = [&](const Lab& c) { return std::hypot(c.a - wanted.a, c.b - wanted.b); };
    // Powder is light without colour: skin much darker than the tone keeps its own colourfulness and goes less far.
    const bool dark = wanted.l - skinWas.l > 25.0;
    std::vector<Figure> figures = {
        {"texture", CorrelationOf(was - Blurred(was, 0.01 * w), is - Blurred(is, 0.01 * w), subject.skin), "", 0.97,
         Figure::None, 3},
        {"way to the tone", 100.0 * (1.0 - away(skinIs) / away(skinWas)), " %",
         dark || away(skinWas) < 12.0 ? -Figure::None : 15},
        {"unevenness", 100.0 * Unevenness(labIs, subject.skin) / Unevenness(labWas, subject.skin), " %"},
        {"lightness", skinIs.l - skinWas.l, " L*", -8, 8, 1},
        {"colourfulness", 100.0 * ChromaOf(skinIs) / std::max(ChromaOf(skinWas), 1.0), " %",
         dark ? 60.0 : -Figure::None}};
    if (!IsEmpty(subject.eyes))
        figures.push_back({"eyes", MeanDeltaE(labWas, labIs, subject.eyes), " dE", -Figure::None, 3, 1});
    if (!IsEmpty(subject.hair))
        figures.push_back({"hair", MeanDeltaE(labWas, labIs, subject.hair), " dE", -Figure::None, 3, 1});
    return figures;
}

}  // namespace

static const QualityCase tint("tint", [](const Subject& subject, QualityReport& report) {
    if (IsEmpty(subject.skin)) return;
    for (const Tone& tone : Tones) {
        const std::string name = std::string("tint ") + tone.name;
        Bitmap after = subject.picture;
        PC_Dsp::CompositeColor(after, tone.r, tone.g, tone.b, nullptr, 0, 100);
        report.Add(subject, name, QualityReport::Own, Figures(subject, after, tone));
        report.Crop(subject, name, after, subject.Around(0.5, 0.5, 1.2, 1.4));
        if (!report.WantsOthers()) continue;
        // Gains that bring the mean skin to the tone.
        const cv::Scalar mean = cv::mean(ColoursOf(subject.picture), subject.skin);
        cv::Mat changed;
        cv::colorChange(
            ColoursOf(subject.picture), subject.face, changed, static_cast<float>(std::min(2.5, tone.r / mean[2])),
            static_cast<float>(std::min(2.5, tone.g / mean[1])), static_cast<float>(std::min(2.5, tone.b / mean[0])));
        report.Add(subject, name, "OpenCV colorChange", Figures(subject, BitmapOf(changed), tone));
    }
});
