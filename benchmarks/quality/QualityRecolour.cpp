// SPDX-License-Identifier: GPL-3.0-or-later
// Recolouring of lips and irises: the hue of the colour, light and texture of the picture.
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "Measures.h"
#include "PC_Dsp.h"
#include "Quality.h"

namespace {

struct Colour {
    unsigned char r, g, b;
};
// From the palettes: deep and light reds, brown, orange; browns, green, blue, violet, pink.
constexpr Colour LipColours[] = {{208, 66, 64}, {156, 61, 67},  {169, 39, 87},
                                 {174, 86, 46}, {255, 147, 49}, {255, 118, 160}};
constexpr Colour EyeColours[] = {{178, 98, 34},  {255, 196, 70},  {89, 205, 54},
                                 {44, 138, 255}, {196, 117, 233}, {243, 72, 88}};

// The worst of all colours counts.
struct Worst {
    double texture = 1.0, hue = 0.0, gloss = 1e9, lightest = 0.0;

    void Add(const Subject& subject, const Bitmap& after, const cv::Mat1b& part, const Colour& colour) {
        const cv::Mat3f labWas = LabOf(subject.picture), labIs = LabOf(after);
        std::vector<cv::Mat1f> was, is;
        cv::split(labWas, was);
        cv::split(labIs, is);
        const double radius = 0.01 * subject.faceWidth;
        texture =
            std::min(texture, CorrelationOf(was[0] - Blurred(was[0], radius), is[0] - Blurred(is[0], radius), part));
        const Lab mean = MeanOf(labIs, part);
        hue = std::max(hue, HueDistance(HueOf(mean), HueOf(LabOf(colour.r, colour.g, colour.b))));
        const auto shine = [&](const cv::Mat1f& l) { return QuantileOf(l, part, 0.99) - QuantileOf(l, part, 0.5); };
        gloss = std::min(gloss, 100.0 * shine(is[0]) / std::max(shine(was[0]), 1.0));
        lightest = std::max(lightest, std::abs(mean.l - MeanOf(labWas, part).l));
    }
    std::vector<Figure> Figures() const {
        return {{"texture", texture, "", 0.98, Figure::None, 3},
                {"hue", hue, " deg", -Figure::None, 8, 1},
                {"gloss", gloss, " %", 70},
                {"lightness moves", lightest, " L*", -Figure::None, Figure::None, 1}};
    }
};

// The usual way with OpenCV: hue and saturation of the colour, value of the picture.
Bitmap ByHsv(const Bitmap& picture, const Colour& colour) {
    cv::Mat3b hsv, one(1, 1, cv::Vec3b(colour.b, colour.g, colour.r));
    cv::cvtColor(one, one, cv::COLOR_BGR2HSV);
    cv::cvtColor(ColoursOf(picture), hsv, cv::COLOR_BGR2HSV);
    for (cv::Vec3b& pixel : hsv) {
        pixel[0] = one(0, 0)[0];
        pixel[1] = one(0, 0)[1];
    }
    cv::cvtColor(hsv, hsv, cv::COLOR_HSV2BGR);
    return BitmapOf(hsv);
}

template <std::size_t N>
void Measure(const Subject& subject, QualityReport& report, const std::string& name, const cv::Mat1b& part,
             const Colour (&colours)[N], const cv::Rect& crop) {
    if (IsEmpty(part)) return;
    Worst own, hsv;
    for (std::size_t i = 0; i < N; ++i) {
        Bitmap after = subject.picture;
        PC_Dsp::Color_Channel_Composite(after, colours[i].r, colours[i].g, colours[i].b, nullptr, 0, 100);
        own.Add(subject, after, part, colours[i]);
        // What a clean brush would leave, for looking at.
        cv::Mat3b painted = ColoursOf(subject.picture);
        ColoursOf(after).copyTo(painted, part);
        report.Crop(subject, name + " " + std::to_string(i + 1), BitmapOf(painted), crop);
        if (report.WantsOthers()) hsv.Add(subject, ByHsv(subject.picture, colours[i]), part, colours[i]);
    }
    report.Add(subject, name, QualityReport::Own, own.Figures());
    if (report.WantsOthers()) report.Add(subject, name, "OpenCV HSV", hsv.Figures());
}

}  // namespace

static const QualityCase recolour("recolour", [](const Subject& subject, QualityReport& report) {
    const auto boxOf = [&](const cv::Mat1b& part) {
        const int edge = static_cast<int>(0.06 * subject.faceWidth);
        const cv::Rect box = cv::boundingRect(part);
        return cv::Rect(box.x - edge, box.y - edge, box.width + 2 * edge, box.height + 2 * edge) &
               cv::Rect(0, 0, part.cols, part.rows);
    };
    Measure(subject, report, "recolour lips", subject.lips, LipColours, boxOf(subject.lips));
    Measure(subject, report, "recolour irises", subject.irises, EyeColours, boxOf(subject.irises));
});
