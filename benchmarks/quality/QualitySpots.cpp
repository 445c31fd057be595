// SPDX-License-Identifier: GPL-3.0-or-later
// Removal of spots: what is under a mark is known, since the spots are made, or painted with and without.
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <opencv2/photo.hpp>

#include "Measures.h"
#include "PC_Dsp.h"
#include "Quality.h"

namespace {

constexpr int Marked = static_cast<int>(0xFF38EEFF);
constexpr double Radius = 0.02;  // of a mark, in face widths
constexpr double Fine = 1.5;     // the finest band is luma less a Gaussian of so many pixels
constexpr int Places = 12;       // for each subject

struct Spot {
    cv::Point centre;
    int radius;
    cv::Rect Box(double radii) const {
        const int half = static_cast<int>(std::lround(radii * radius));
        return {centre.x - half, centre.y - half, 2 * half + 1, 2 * half + 1};
    }
};

cv::Mat1b MaskOf(const cv::Size& size, const Spot& spot) {
    cv::Mat1b mask = cv::Mat1b::zeros(size);
    cv::circle(mask, spot.centre, spot.radius, cv::Scalar(255), cv::FILLED);
    return mask;
}

// Places in the skin, apart from each other, the same on every run.
std::vector<Spot> PlacesOf(const Subject& subject) {
    const int radius = std::max(3, static_cast<int>(std::lround(Radius * subject.faceWidth)));
    const cv::Rect whole({}, subject.skin.size());
    std::vector<Spot> places;
    cv::RNG random(20);
    for (int i = 0; i < 20000 && static_cast<int>(places.size()) < Places; ++i) {
        const Spot spot{{random.uniform(0, whole.width), random.uniform(0, whole.height)}, radius};
        const cv::Rect box = spot.Box(2.0);
        if (!subject.skin(spot.centre) || (box & whole) != box) continue;
        const cv::Rect near = spot.Box(1.0);
        const cv::Mat1b disc = MaskOf(subject.skin.size(), spot)(near);
        if (cv::countNonZero(subject.skin(near) & disc) < 0.9 * cv::countNonZero(disc)) continue;
        if (std::all_of(places.begin(), places.end(),
                        [&](const Spot& other) { return cv::norm(other.centre - spot.centre) > 4.0 * radius; }))
            places.push_back(spot);
    }
    return places;
}

// A red and somewhat dark blemish, gone at the mark's border.
void AddBlemish(cv::Mat3b& picture, const Spot& spot) {
    const cv::Rect box = spot.Box(1.0) & cv::Rect({}, picture.size());
    for (int y = box.y; y < box.y + box.height; ++y)
        for (int x = box.x; x < box.x + box.width; ++x) {
            const double d = cv::norm(cv::Point(x, y) - spot.centre) / spot.radius;
            const double share = d < 1.0 ? (1.0 - d * d) * (1.0 - d * d) : 0.0;
            constexpr double left[] = {0.62, 0.62, 0.85};
            for (int c = 0; c < 3; ++c)
                picture(y, x)[c] = cv::saturate_cast<uchar>(picture(y, x)[c] * (1.0 - share * (1.0 - left[c])));
        }
}

using Healer = cv::Mat3b (*)(const cv::Mat3b& picture, const cv::Mat1b& mask, const Spot& spot, const cv::Mat3b& truth);

cv::Mat3b Ours(const cv::Mat3b& picture, const cv::Mat1b& mask, const Spot& spot, const cv::Mat3b&) {
    Bitmap bitmap = BitmapOf(picture), marks(picture.cols, picture.rows);
    std::uint8_t* to = marks.MutablePixels();
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x, to += 4)
            for (int i = 0; i < 4; ++i)
                to[i] = mask(y, x) ? static_cast<std::uint8_t>(static_cast<unsigned>(Marked) >> 8 * i) : 0;
    const cv::Rect box = spot.Box(1.0);
    PC_Dsp::ImageProcessWithInpaint(bitmap.MutablePixels(), bitmap.Width(), bitmap.Height(), marks.Pixels(), Marked,
                                    {box.x, box.y, box.x + box.width, box.y + box.height}, nullptr, 0, 100);
    return ColoursOf(bitmap);
}

// On a cut-out, as a program would call it.
cv::Mat3b Inpainted(const cv::Mat3b& picture, const cv::Mat1b& mask, const Spot& spot, int flags) {
    const cv::Rect part = spot.Box(3.0) & cv::Rect({}, picture.size());
    cv::Mat3b out = picture.clone();
    cv::Mat filled;
    cv::inpaint(picture(part), mask(part), filled, 3.0, flags);
    filled.copyTo(out(part));
    return out;
}

// The patch among the neighbours whose border is most like the spot's own, cloned by OpenCV.
cv::Mat3b Cloned(const cv::Mat3b& picture, const cv::Mat1b& mask, const Spot& spot, const cv::Mat3b&) {
    const cv::Rect whole({}, picture.size()), box = spot.Box(1.0 + 8.0 / spot.radius);
    const cv::Mat1b rim = Grown(mask(box), 3.0) & ~mask(box);
    const int reach = static_cast<int>(4 * spot.radius);
    cv::Point best;
    double least = 1e18;
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx) {
            const cv::Rect there = box + cv::Point(dx, dy);
            if ((there & whole) != there || std::hypot(dx, dy) < 2 * spot.radius + 8) continue;
            const double cost = cv::norm(picture(box), picture(there), cv::NORM_L2SQR, rim);
            if (cost < least) {
                least = cost;
                best = {dx, dy};
            }
        }
    if (least > 1e17) return picture.clone();
    // The clone goes beyond the mark, since OpenCV takes three pixels (more on diagonals) off its mask.
    cv::Mat out;
    cv::seamlessClone(picture(box + best), picture, Grown(mask(box), 5.0), spot.centre, out, cv::NORMAL_CLONE);
    cv::Mat3b kept = picture.clone();
    out.copyTo(kept, mask);
    return kept;
}

// What no filling is better than: it knows all of the truth but the finest band, and has that from beside the spot, as
// strong as it is here.
cv::Mat3b AllButGrain(const cv::Mat3b& picture, const cv::Mat1b& mask, const Spot& spot, const cv::Mat3b& truth) {
    const cv::Rect whole({}, picture.size());
    cv::Rect box = spot.Box(1.0), beside = box + cv::Point(3 * spot.radius, 0);
    if ((beside & whole) != beside) beside = box - cv::Point(3 * spot.radius, 0);
    if ((beside & whole) != beside) return picture.clone();
    const cv::Mat1b disc = mask(box);
    // On a cut-out, as large as both and the reach of the Gaussian.
    const cv::Rect part = ((box | beside) + cv::Size(24, 24) - cv::Point(12, 12)) & whole;
    box -= part.tl();
    beside -= part.tl();
    cv::Mat3f exact, coarse;
    truth(part).convertTo(exact, CV_32F);
    cv::GaussianBlur(exact, coarse, cv::Size(), Fine);
    const cv::Mat3f fine = exact - coarse;
    const double strength =
        cv::norm(fine(box), cv::NORM_L2, disc) / std::max(1e-6, cv::norm(fine(beside), cv::NORM_L2, disc));
    cv::Mat3b filled, out = picture.clone();
    cv::Mat3f(coarse(box) + strength * fine(beside)).convertTo(filled, CV_8U);
    filled.copyTo(out(box + part.tl()), disc);
    return out;
}

struct Maker {
    const char* name;
    Healer heal;
};
const Maker Makers[] = {
    {QualityReport::Own, Ours},
    {"OpenCV Telea", [](const cv::Mat3b& p, const cv::Mat1b& m, const Spot& s,
                        const cv::Mat3b&) { return Inpainted(p, m, s, cv::INPAINT_TELEA); }},
    {"OpenCV Navier-Stokes", [](const cv::Mat3b& p, const cv::Mat1b& m, const Spot& s,
                                const cv::Mat3b&) { return Inpainted(p, m, s, cv::INPAINT_NS); }},
    {"OpenCV seamlessClone", Cloned},
    {"all but the grain", AllButGrain},
};

struct Judged {
    double psnr, fine, colour;
    bool outside;
};

Judged Judge(const cv::Mat3b& truth, const cv::Mat3b& before, const cv::Mat3b& after, const cv::Mat1b& mask,
             const Spot& spot) {
    const cv::Rect box = spot.Box(3.0) & cv::Rect({}, truth.size());
    const cv::Mat1b disc = mask(box);
    const Bitmap was = BitmapOf(truth(box).clone()), is = BitmapOf(after(box).clone());
    const double error = cv::norm(truth(box), after(box), cv::NORM_L2SQR, disc) / (3.0 * cv::countNonZero(disc));
    const cv::Mat1f lumaWas = LumaOf(was), lumaIs = LumaOf(is);
    const double fine = RootMeanSquareOf(lumaIs - Blurred(lumaIs, Fine), disc) /
                        std::max(1e-6, RootMeanSquareOf(lumaWas - Blurred(lumaWas, Fine), disc));
    return {10.0 * std::log10(255.0 * 255.0 / std::max(error, 1e-3)), fine * fine,
            DeltaE2000(MeanOf(LabOf(was), disc), MeanOf(LabOf(is), disc)),
            cv::norm(before, after, cv::NORM_INF, ~mask) > 0.0};
}

double MedianOf(const std::vector<Judged>& all, double Judged::*member) {
    std::vector<double> values;
    for (const Judged& one : all) values.push_back(one.*member);
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

template <class Test>
double ShareOf(const std::vector<Judged>& all, Test test) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < all.size(); ++i) count += test(i);
    return 100.0 * static_cast<double>(count) / static_cast<double>(all.size());
}

// Own figures of colour and against the clone are held where `isHeld`.
void Report(const Subject& subject, const std::string& name, const cv::Mat3b& truth, const cv::Mat3b& before,
            const std::vector<Spot>& spots, bool isHeld, QualityReport& report) {
    if (spots.empty()) return;
    std::vector<std::vector<Judged>> results;
    cv::Mat3b healed = before.clone();
    for (const Maker& maker : Makers) {
        results.emplace_back();
        for (const Spot& spot : spots) {
            const cv::Mat1b mask = MaskOf(before.size(), spot);
            const cv::Mat3b after = maker.heal(before, mask, spot, truth);
            results.back().push_back(Judge(truth, before, after, mask, spot));
            if (&maker == Makers) after.copyTo(healed, mask);
        }
    }
    for (std::size_t i = 0; i < results.size(); ++i) {
        if (i > 0 && !report.WantsOthers()) break;
        const std::vector<Judged>& all = results[i];
        const bool own = i == 0;
        report.Add(
            subject, name, Makers[i].name,
            {{"PSNR", MedianOf(all, &Judged::psnr), " dB", -Figure::None, Figure::None, 1},
             {"above clone", MedianOf(all, &Judged::psnr) - MedianOf(results[3], &Judged::psnr), " dB",
              own && isHeld ? 0.0 : -Figure::None, Figure::None, 1},
             {"fine", MedianOf(all, &Judged::fine), "", own ? 0.75 : -Figure::None, own ? 1.3 : Figure::None, 2},
             {"fine in 0.75-1.3",
              ShareOf(all, [&](std::size_t k) { return all[k].fine >= 0.75 && all[k].fine <= 1.3; }), " %"},
             {"colour", MedianOf(all, &Judged::colour), " dE", -Figure::None, own && isHeld ? 0.8 : Figure::None, 2},
             {"above both inpaints",
              ShareOf(
                  all,
                  [&](std::size_t k) { return all[k].psnr > results[1][k].psnr && all[k].psnr > results[2][k].psnr; }),
              " %"},
             {"outside", ShareOf(all, [&](std::size_t k) { return all[k].outside; }), " %", -Figure::None,
              own ? 0.0 : Figure::None}});
    }
    Subject spotted = subject;
    spotted.picture = BitmapOf(before);
    report.Crop(spotted, name, BitmapOf(healed), subject.Around(0.5, 0.5, 1.1, 1.4));
}

}  // namespace

static const QualityCase made("spots made", [](const Subject& subject, QualityReport& report) {
    if (IsEmpty(subject.skin)) return;
    const cv::Mat3b truth = ColoursOf(subject.picture);
    cv::Mat3b before = truth.clone();
    const std::vector<Spot> spots = PlacesOf(subject);
    for (const Spot& spot : spots) AddBlemish(before, spot);
    Report(subject, "spots made", truth, before, spots, true, report);
});

static const QualityCase painted("spots painted", [](const Subject& subject, QualityReport& report) {
    if (subject.spots.empty() || !subject.flawless) return;
    std::vector<Spot> spots;
    for (const Subject::Disc& spot : subject.spots)
        spots.push_back({cv::Point(static_cast<int>(spot.centre.x), static_cast<int>(spot.centre.y)),
                         static_cast<int>(std::lround(Radius * subject.faceWidth))});
    // Six spots are too few for a median but of the sample, whose own they are.
    Report(subject, "spots painted", ColoursOf(subject.flawless), ColoursOf(subject.picture), spots, subject.isSample,
           report);
});
