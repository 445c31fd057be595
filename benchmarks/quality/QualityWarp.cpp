// SPDX-License-Identifier: GPL-3.0-or-later
// Pushing pixels: how far a face gives way, that nothing folds, and how much of its detail is left, beside a picture
// that is resampled at every place of the hand.
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

#include "CWarpField.h"
#include "Measures.h"
#include "Quality.h"

namespace {

// A place of the hand, as the tools work it.
struct Push {
    int x1, y1, x0, y0, mode, radius;
    double amount;
};

void Apply(CWarpField& field, const Push& push) {
    field.SetRadius(push.radius);
    field.SetAmount(push.amount);
    field.Deform(push.x1, push.y1, push.x0, push.y0, push.mode);
}

// Drags of both cheeks towards the middle, twice.
std::vector<Push> Slimming(const Subject& subject) {
    constexpr int Moves = 12, Strokes = 2;
    const cv::Rect box = cv::boundingRect(subject.face);
    const double w = subject.faceWidth, way = 0.1 * w;
    std::vector<Push> pushes;
    for (int stroke = 0; stroke < Strokes; ++stroke)
        for (const double side : {0.0, 1.0})
            for (int i = 0; i < Moves; ++i) {
                const double from = box.x + box.width * side, sign = 1.0 - 2.0 * side;
                const auto at = [&](int move) { return static_cast<int>(from + sign * way * move / Moves); };
                const int y = static_cast<int>(box.y + 0.76 * box.height);
                pushes.push_back({at(i + 1), y, at(i), y, CWarpField::Move, static_cast<int>(0.45 * w), 0.2});
            }
    return pushes;
}

// Clicks on both eyes, three each.
std::vector<Push> Enlarging(const Subject& subject) {
    constexpr int Clicks = 3;
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(subject.eyes, labels, stats, centres);
    std::vector<Push> pushes;
    for (int i = 1; i < count; ++i)
        for (int click = 0; click < Clicks; ++click)
            pushes.push_back({static_cast<int>(centres.at<double>(i, 0)), static_cast<int>(centres.at<double>(i, 1)), 0,
                              0, CWarpField::Grow, static_cast<int>(0.17 * subject.faceWidth), 0.6});
    return pushes;
}

// Where the source of each pixel lies.
cv::Mat2f SourcesOf(const CWarpField& field) {
    cv::Mat2f sources(field.Height(), field.Width());
    for (int y = 0; y < field.Height(); ++y)
        for (int x = 0; x < field.Width(); ++x) {
            const float* const pair = field.FieldAt(x, y);
            sources(y, x) = {static_cast<float>(x) + pair[0], static_cast<float>(y) + pair[1]};
        }
    return sources;
}

cv::Mat1b Moved(const cv::Mat1b& mask, const cv::Mat2f& sources) {
    cv::Mat1b moved;
    cv::remap(mask, moved, sources, cv::noArray(), cv::INTER_LINEAR);
    return moved > 127;
}

// The least area that a pixel keeps; below 0 the picture folds over itself.
double LeastOrientation(const cv::Mat2f& sources) {
    double least = 1.0;
    for (int y = 1; y + 2 < sources.rows; ++y)
        for (int x = 1; x + 2 < sources.cols; ++x) {
            const cv::Vec2f a = sources(y, x + 1) - sources(y, x), b = sources(y + 1, x) - sources(y, x);
            least = std::min<double>(least, a[0] * b[1] - a[1] * b[0]);
        }
    return least;
}

double GrownBy(const cv::Mat1b& part, const cv::Mat2f& sources) {
    return 100.0 * cv::countNonZero(Moved(part, sources)) / cv::countNonZero(part) - 100.0;
}

// The width of the face in the row that was pushed most.
double NarrowedBy(const cv::Mat1b& face, const cv::Mat2f& sources) {
    const cv::Mat1b moved = Moved(face, sources);
    double most = 0.0;
    for (int y = 0; y < face.rows; ++y) {
        const int was = cv::countNonZero(face.row(y));
        if (was > face.cols / 8) most = std::max(most, 100.0 - 100.0 * cv::countNonZero(moved.row(y)) / was);
    }
    return most;
}

// Fine energy on what was pushed, against the same picture sampled once at the exact places with a long filter, which
// keeps it all; in percent.
double DetailKept(const Bitmap& picture, const Bitmap& after, const cv::Mat2f& sources, const cv::Mat1b& pushed) {
    cv::Mat3b exact;
    cv::remap(ColoursOf(picture), exact, sources, cv::noArray(), cv::INTER_LANCZOS4, cv::BORDER_REPLICATE);
    const auto fine = [&](const Bitmap& bitmap) {
        const cv::Mat1f luma = LumaOf(bitmap);
        return RootMeanSquareOf(luma - Blurred(luma, 1.0), pushed);
    };
    return 100.0 * fine(after) / fine(BitmapOf(exact));
}

cv::Mat1b PushedPart(const CWarpField& field) {
    cv::Mat1b pushed(field.Height(), field.Width());
    for (int y = 0; y < field.Height(); ++y)
        for (int x = 0; x < field.Width(); ++x) {
            const float* const pair = field.FieldAt(x, y);
            pushed(y, x) = std::hypot(pair[0], pair[1]) > 0.5f ? 255 : 0;
        }
    return pushed;
}

// The same places, but the picture is resampled at each.
Bitmap Resampled(const Bitmap& picture, const std::vector<Push>& pushes, int interpolation) {
    cv::Mat3b colours = ColoursOf(picture);
    CWarpField step;
    for (const Push& push : pushes) {
        step.SetImage(&picture, nullptr);
        Apply(step, push);
        cv::Mat3b next;
        cv::remap(colours, next, SourcesOf(step), cv::noArray(), interpolation, cv::BORDER_REPLICATE);
        colours = next;
    }
    return BitmapOf(colours);
}

// Lines every 24 pixels, thin and grey on light, over which a push shows.
Bitmap GridOf(const Bitmap& picture) {
    constexpr int Apart = 24;
    cv::Mat3b grid(picture.Height(), picture.Width(), cv::Vec3b(244, 242, 240));
    for (int y = 0; y < grid.rows; ++y)
        for (int x = 0; x < grid.cols; ++x)
            if (x % Apart < 2 || y % Apart < 2) grid(y, x) = {120, 105, 90};
    return BitmapOf(grid);
}

void Measure(const Subject& subject, const std::string& name, const std::vector<Push>& pushes, const cv::Mat1b& part,
             bool grows, QualityReport& report) {
    if (pushes.empty() || IsEmpty(part)) return;
    CWarpField field, gridField;
    field.SetImage(&subject.picture, nullptr);
    const Bitmap grid = GridOf(subject.picture);
    gridField.SetImage(&grid, nullptr);
    for (const Push& push : pushes) {
        Apply(field, push);
        Apply(gridField, push);
    }
    const cv::Mat2f sources = SourcesOf(field);
    const cv::Mat1b pushed = PushedPart(field);
    const auto kept = [&](const Bitmap& after) { return DetailKept(subject.picture, after, sources, pushed); };
    const Figure change = grows ? Figure{"grown", GrownBy(part, sources), " %", 10, 60}
                                : Figure{"narrowed", NarrowedBy(part, sources), " %", 2, 12, 1};
    report.Add(subject, name, QualityReport::Own,
               {change,
                {"least orientation", LeastOrientation(sources), "", 0.05, Figure::None, 2},
                {"detail kept", kept(field.Output()), " %", 70}});
    if (report.WantsOthers()) {
        const auto add = [&](const char* maker, int interpolation) {
            report.Add(subject, name, maker,
                       {change, {"detail kept", kept(Resampled(subject.picture, pushes, interpolation)), " %"}});
        };
        add("OpenCV remap, linear", cv::INTER_LINEAR);
        add("OpenCV remap, cubic", cv::INTER_CUBIC);
    }
    report.Crop(subject, name, field.Output(), subject.Around(0.5, 0.55, 1.3, 1.3));
    Subject lined = subject;
    lined.picture = grid;
    report.Crop(lined, name + " grid", gridField.Output(), subject.Around(0.5, 0.55, 1.3, 1.3));
}

}  // namespace

static const QualityCase warp("warp", [](const Subject& subject, QualityReport& report) {
    if (!IsEmpty(subject.face)) Measure(subject, "warp slim", Slimming(subject), subject.face, false, report);
    if (!IsEmpty(subject.eyes)) Measure(subject, "warp eyes", Enlarging(subject), subject.eyes, true, report);
});
