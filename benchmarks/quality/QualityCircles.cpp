// SPDX-License-Identifier: GPL-3.0-or-later
// Dark circles: how much of the way to the cheek the shadow goes, and what stays.
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "Measures.h"
#include "PC_Dsp.h"
#include "Quality.h"

namespace {

constexpr int Strength = 10;
constexpr double Pen = 0.05;    // the brush's radius in face widths
constexpr double Rim = 0.03;    // of the lids, in face widths
constexpr double Glossy = 4.0;  // L* that a cheek is lighter for its gloss

// What a user would paint: a stroke along the circle. Subjects without known circles are painted below their eyes.
std::vector<cv::Mat1b> StrokesOf(const Subject& subject) {
    std::vector<cv::Mat1b> strokes;
    for (const cv::Mat1b& circle : subject.circles)
        strokes.push_back(Grown(circle, 0.02 * subject.faceWidth) & ~subject.eyes);
    if (!strokes.empty()) return strokes;
    cv::Mat labels, boxes, centres;
    const int count = cv::connectedComponentsWithStats(subject.eyes, labels, boxes, centres);
    for (int i = 1; i < count; ++i) {
        const cv::Rect eye(boxes.at<int>(i, cv::CC_STAT_LEFT), boxes.at<int>(i, cv::CC_STAT_TOP),
                           boxes.at<int>(i, cv::CC_STAT_WIDTH), boxes.at<int>(i, cv::CC_STAT_HEIGHT));
        cv::Mat1b stroke = cv::Mat1b::zeros(subject.eyes.size());
        const int thick = std::max(2, static_cast<int>(0.05 * subject.faceWidth));
        cv::ellipse(stroke, cv::Point(eye.x + eye.width / 2, eye.y + eye.height / 2 + thick / 3),
                    cv::Size(eye.width / 2, eye.height / 2 + thick), 0, 25, 155, cv::Scalar(255), thick);
        strokes.push_back(stroke & ~Grown(subject.eyes, 0.006 * subject.faceWidth));
    }
    return strokes;
}

Bitmap Lightened(const Subject& subject, const std::vector<cv::Mat1b>& strokes, int strength) {
    Bitmap after = subject.picture, marks(after.Width(), after.Height());
    std::uint8_t* to = marks.MutablePixels();
    for (int y = 0; y < after.Height(); ++y)
        for (int x = 0; x < after.Width(); ++x, to += 4)
            for (const cv::Mat1b& stroke : strokes)
                if (stroke(y, x)) to[3] = 0x66;
    PC_Dsp::BlackEye(after.MutablePixels(), after.Width(), after.Height(), marks.Pixels(),
                     std::max(1, static_cast<int>(Pen * subject.faceWidth)), strength, nullptr, 0, 100);
    return after;
}

// The skin of a stroke without its ends, and the cheek right below that. Between the opening of the lids and skin lie
// the lid's rim and lashes, which are to stay.
struct Pair {
    cv::Mat1b mark, cheek;
};

Pair PairOf(const Subject& subject, const cv::Mat1b& stroke) {
    const cv::Rect box = cv::boundingRect(stroke);
    Pair pair{cv::Mat1b::zeros(stroke.size()), cv::Mat1b::zeros(stroke.size())};
    const int thick = std::max(4, cv::countNonZero(stroke) / std::max(1, box.width)), gap = thick / 4;
    for (int x = box.x + box.width / 6; x < box.x + box.width - box.width / 6; ++x) {
        stroke.col(x).copyTo(pair.mark.col(x));
        int bottom = box.y + box.height - 1;
        while (bottom > box.y && !stroke(bottom, x)) --bottom;
        for (int y = bottom + gap; y < std::min(bottom + gap + thick, stroke.rows); ++y) pair.cheek(y, x) = 255;
    }
    pair.mark &= ~Grown(subject.eyes, Rim * subject.faceWidth);
    pair.cheek &= subject.face;
    return pair;
}

// How much lighter the cheek is than the darker half of it: gloss. Its mean colour is then that of the light.
double GlossOf(const cv::Mat3f& lab, const cv::Mat1b& cheek) {
    cv::Mat1f light;
    cv::extractChannel(lab, light, 0);
    return MeanOf(lab, cheek).l - MeanOf(lab, cheek & (light <= QuantileOf(light, cheek, 0.5))).l;
}

double ColourBetween(const Lab& one, const Lab& other) {
    return std::hypot(one.a - other.a, one.b - other.b);
}

// How steep the change is on the stroke's border, in per cent of the largest change a pixel.
double BorderStep(const cv::Mat1f& change, const cv::Mat1b& stroke) {
    const cv::Mat1f soft = Blurred(change, 0.8);
    const cv::Mat1b border = Grown(stroke, 1.0) & ~Shrunk(stroke, 1.0);
    return 100.0 * QuantileOf(GradientOf(soft), border, 0.95) / std::max(1.0, QuantileOf(cv::abs(soft), stroke, 0.95));
}

}  // namespace

static const QualityCase circles("dark circles", [](const Subject& subject, QualityReport& report) {
    const std::vector<cv::Mat1b> strokes = StrokesOf(subject);
    if (strokes.empty()) return;
    const Bitmap after = Lightened(subject, strokes, Strength);
    const cv::Mat3f was = LabOf(subject.picture), is = LabOf(after);
    const cv::Mat3f flawless = subject.flawless ? LabOf(subject.flawless) : cv::Mat3f();
    const cv::Mat1f lumaWas = LumaOf(subject.picture), lumaIs = LumaOf(after);
    const double w = subject.faceWidth, texture = std::max(0.8, 0.004 * w);
    double light = 0.0, colour = 0.0, gapLight = 0.0, gapColour = 0.0, step = 0.0, gloss = 0.0;
    double offBefore = 0.0, offNow = 0.0;  // the colour of the skin as it is without circles
    cv::Mat1b all = cv::Mat1b::zeros(subject.face.size()), inner = all.clone();
    for (const cv::Mat1b& stroke : strokes) {
        all |= stroke;
        const Pair pair = PairOf(subject, stroke);
        if (IsEmpty(pair.cheek) || IsEmpty(pair.mark)) continue;
        const Lab aim = MeanOf(was, pair.cheek), before = MeanOf(was, pair.mark), now = MeanOf(is, pair.mark);
        gapLight += std::abs(aim.l - before.l);
        light += std::abs(aim.l - now.l);
        gapColour += ColourBetween(aim, before);
        colour += ColourBetween(aim, now);
        gloss = std::max(gloss, GlossOf(was, pair.cheek));
        if (subject.flawless) {
            const Lab truth = MeanOf(flawless, pair.mark);
            offBefore += ColourBetween(truth, before);
            offNow += ColourBetween(truth, now);
        }
        step = std::max(step, BorderStep(lumaIs - lumaWas, stroke));
        inner |= Shrunk(stroke, 0.012 * w);
    }
    const cv::Mat1f highWas = lumaWas - Blurred(lumaWas, texture), highIs = lumaIs - Blurred(lumaIs, texture);
    const double kept = RootMeanSquareOf(highIs, inner) / std::max(1e-6, RootMeanSquareOf(highWas, inner));
    cv::Mat difference;
    cv::absdiff(ColoursOf(subject.picture), ColoursOf(after), difference);
    difference.setTo(cv::Scalar::all(0), all);
    std::vector<Figure> figures = {{"texture", 100.0 * kept * kept, " %", 90},
                                   {"border", step, " %/px", -Figure::None, 15},
                                   {"outside", cv::norm(difference, cv::NORM_INF), " levels", 0, 0}};
    // Where the cheek is as light as the circle there is no gap to close.
    if (gapLight > 2.0 * static_cast<double>(strokes.size()))
        figures.push_back({"L* closed", 100.0 * (1.0 - light / gapLight), " %", 60, 80});
    if (gapColour > 2.0 * static_cast<double>(strokes.size()))
        figures.push_back({"a*, b* closed", 100.0 * (1.0 - colour / gapColour), " %",
                           gloss < Glossy ? 55 : -Figure::None, gloss < Glossy ? 85 : Figure::None});
    // The way to a glossy cheek leads to grey: there the skin has to come nearer to what it is without circles.
    if (subject.flawless)
        figures.push_back({"a*, b* off", offNow / static_cast<double>(strokes.size()), "", -Figure::None,
                           gloss < Glossy ? Figure::None : offBefore / static_cast<double>(strokes.size()), 1});
    report.Add(subject, "dark circles", QualityReport::Own, std::move(figures));
    report.Crop(subject, "dark-circles", after, subject.Around(0.5, 0.45, 0.95, 0.6));
});
