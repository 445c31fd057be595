// SPDX-License-Identifier: GPL-3.0-or-later
// One-click beauty: what each look does to skin, and what it leaves as it is.
#include <cmath>
#include <filesystem>

#include "Measures.h"
#include "PC_Dsp.h"
#include "Quality.h"

namespace {

// Deviations of the two Gaussians that part grain, blotches and shading, as in the rows of the smoothing.
constexpr double GrainEdge = 0.0027, BlotchEdge = 0.02;

// What a look owes skin, by its type.
struct LookRow {
    int type;
    const char* name;
    double blotches;   // percent that they change at least
    double hue;        // degrees that the hue of skin moves at most
    double lightness;  // L* that skin gains at most
};
constexpr LookRow Looks[] = {{6, "rosy", -40, 15, 8}, {1, "natural", -25, 10, 6}, {4, "dreamy", -40, 10, 10},
                             {2, "warm", -40, 15, 6}, {3, "fair", -40, 10, 12},   {5, "fresh", -40, 10, 10},
                             {7, "cool", -40, 15, 6}, {8, "clear", -40, 10, 6}};
constexpr double DarkSkin = 45.0;  // L* below which "fair" lightens by at most 6

cv::Mat1f BlotchesOf(const cv::Mat1f& luma, double w) {
    return Blurred(luma, GrainEdge * w) - Blurred(luma, BlotchEdge * w);
}

// The skin without the hair that falls over it, which is much darker.
cv::Mat1b BareSkin(const Subject& subject) {
    const cv::Mat1f luma = LumaOf(subject.picture);
    return subject.skin & (luma > 0.7 * QuantileOf(luma, subject.skin, 0.5));
}

// The gradients of a part that were strong, and how much of them is left, in percent.
double GradientsKept(const cv::Mat1f& was, const cv::Mat1f& is, const cv::Mat1b& part) {
    if (IsEmpty(part)) return 100.0;
    const cv::Mat1b strong = part & (was >= QuantileOf(was, part, 0.7));
    return 100.0 * MeanOf(is, strong) / MeanOf(was, strong);
}

// Percent of the pixels of which a channel is at an end that was not.
double NewlyClipped(const Bitmap& was, const Bitmap& is) {
    long count = 0;
    for (int y = 0; y < was.Height(); ++y)
        for (int x = 0; x < was.Width(); ++x) {
            const std::uint8_t *const a = was.Row(y) + 4 * x, *const b = is.Row(y) + 4 * x;
            bool clipped = false;
            for (int c = 0; c < 3; ++c) clipped = clipped || ((b[c] == 0 || b[c] == 255) && a[c] != b[c]);
            count += clipped;
        }
    return 100.0 * static_cast<double>(count) / (double(was.Width()) * was.Height());
}

std::vector<Figure> Figures(const Subject& subject, const Bitmap& after, const LookRow& look) {
    const double w = subject.faceWidth;
    const cv::Mat1f was = LumaOf(subject.picture), is = LumaOf(after);
    const cv::Mat3f labWas = LabOf(subject.picture), labIs = LabOf(after);
    const cv::Mat1b skin = BareSkin(subject);
    const Lab skinWas = MeanOf(labWas, skin), skinIs = MeanOf(labIs, skin);
    const cv::Mat1f edgesWas = GradientOf(was), edgesIs = GradientOf(is);
    const double blotches = RootMeanSquareOf(BlotchesOf(is, w), skin) / RootMeanSquareOf(BlotchesOf(was, w), skin);
    const bool fairOnDark = look.type == 3 && skinWas.l < DarkSkin;
    std::vector<Figure> figures = {{"blotches", 100.0 * blotches - 100.0, " %", -Figure::None, look.blotches},
                                   {"hue", HueDistance(HueOf(skinWas), HueOf(skinIs)), " deg", -Figure::None, look.hue},
                                   {"lightness", skinIs.l - skinWas.l, " L*", -4, fairOnDark ? 6.0 : look.lightness, 1},
                                   {"clipped", NewlyClipped(subject.picture, after), " %", -Figure::None, 0.2, 2}};
    // Lids, lashes and brows stand close around the eyes.
    if (!IsEmpty(subject.eyes))
        figures.push_back(
            {"lashes and brows", GradientsKept(edgesWas, edgesIs, Grown(subject.eyes, 0.09 * w)), " %", 95});
    if (!IsEmpty(subject.lips))
        figures.push_back({"lips kept", GradientsKept(edgesWas, edgesIs, subject.lips), " %", 95});
    if (!IsEmpty(subject.hair))
        figures.push_back({"hair kept", GradientsKept(edgesWas, edgesIs, subject.hair), " %", 95});
    return figures;
}

}  // namespace

static const QualityCase looks("look", [](const Subject& subject, QualityReport& report) {
    if (IsEmpty(subject.skin)) return;
    std::wstring folder = std::filesystem::path(QUINCE_RESOURCES).wstring();
    std::vector<cv::Mat3f> results;
    const cv::Mat1b everywhere(subject.face.size(), 255);
    for (const LookRow& look : Looks) {
        Bitmap after = subject.picture;
        if (!PC_Dsp::AutoBeauty(look.type, after.MutablePixels(), after.Width(), after.Height(), 0, 0, 0, 0,
                                folder.data()))
            continue;
        const std::string name = std::string("look ") + look.name;
        std::vector<Figure> figures = Figures(subject, after, look);
        // How far from the nearest of the looks before it.
        const cv::Mat3f lab = LabOf(after);
        if (!results.empty()) {
            double nearest = Figure::None;
            for (const cv::Mat3f& other : results) nearest = std::min(nearest, MeanDeltaE(lab, other, everywhere));
            figures.push_back({"from the others", nearest, " dE", 2.5, Figure::None, 1});
        }
        results.push_back(lab);
        report.Add(subject, name, QualityReport::Own, std::move(figures));
        report.Crop(subject, name, after, subject.Around(0.5, 0.5, 1.5, 1.8));
    }
});
