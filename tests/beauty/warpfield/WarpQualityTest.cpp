// SPDX-License-Identifier: GPL-3.0-or-later
// How good a pushed picture is: against pictures and pushes that are known exactly, everywhere.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "CWarpField.h"

namespace {

constexpr int Side = 400;

// A picture as a function of the place, in levels.
using Scene = std::function<double(double x, double y)>;

struct NamedScene {
    const char* name;
    Scene level;
};

double Away(double x, double y) {
    return std::hypot(x - Side / 2.0, y - Side / 2.0);
}

const NamedScene Scenes[] = {
    // Up to a tenth of a wave a pixel at the middle of the sides.
    {"ZonePlate",
     [](double x, double y) { return 127.5 + 110 * std::cos(3.14159265 * 0.1 / Side * Away(x, y) * Away(x, y)); }},
    {"Grid",
     [](double x, double y) {
         const auto line = [](double v) { return std::pow(0.5 + 0.5 * std::cos(v * 2 * 3.14159265 / 24), 4); };
         return 220 - 180 * std::max(line(x), line(y));
     }},
    {"Ramp", [](double x, double y) { return 20 + 0.4 * x + 0.1 * y; }},
    {"Disc", [](double x, double y) { return 40 + 170 / (1 + std::exp((Away(x, y) - 90) / 1.5)); }},
};

Bitmap Drawn(const Scene& scene) {
    Bitmap bitmap = Bitmap::Uninitialised(Side, Side);
    std::uint8_t* p = bitmap.MutablePixels();
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x, p += 4) {
            p[0] = p[1] = p[2] = static_cast<std::uint8_t>(std::lround(scene(x, y)));
            p[3] = 255;
        }
    return bitmap;
}

// One push, exactly: what it adds to a place, with the fall-off as the formula's table has it.
struct Push {
    int x, y, radius;
    double dx, dy, amount;

    void Add(double& px, double& py) const {
        const double square = (px - x) * (px - x) + (py - y) * (py - y);
        const double k = std::floor(square / radius);
        if (k >= radius) return;
        const double f = std::pow(0.5 + 0.5 * std::cos(3.141592653589793 * std::sqrt(k / radius)), 0.7) * amount;
        px -= dx * f;
        py -= dy * f;
    }
};

// Forty events of three strokes that cross each other.
std::vector<Push> ThreeStrokes() {
    std::vector<Push> pushes;
    for (int i = 0; i < 15; ++i) pushes.push_back({150 + 3 * i, 200 + i, 120, 3, 1, 0.6});
    for (int i = 0; i < 15; ++i) pushes.push_back({210 - i, 160 + 4 * i, 90, -1, 4, 1.0});
    for (int i = 0; i < 10; ++i) pushes.push_back({240 - 5 * i, 230 - 2 * i, 100, -5, -2, 0.8});
    return pushes;
}

void Apply(CWarpField& field, const Push& push) {
    field.SetRadius(push.radius);
    field.SetAmount(push.amount);
    field.Deform(push.x, push.y, push.x - static_cast<int>(push.dx), push.y - static_cast<int>(push.dy),
                 CWarpField::Move);
}

// Where the source of a place lies after all pushes. The last one is seen first.
void Trace(const std::vector<Push>& pushes, double& x, double& y) {
    for (auto push = pushes.rbegin(); push != pushes.rend(); ++push) push->Add(x, y);
}

double Bilinear(const Bitmap& bitmap, double x, double y) {
    const int ix = static_cast<int>(x), iy = static_cast<int>(y);
    const auto at = [&](int px, int py) { return double(bitmap.Row(py)[4 * px]); };
    const double top = at(ix, iy) + (at(ix + 1, iy) - at(ix, iy)) * (x - ix);
    const double bottom = at(ix, iy + 1) + (at(ix + 1, iy + 1) - at(ix, iy + 1)) * (x - ix);
    return std::floor(top + (bottom - top) * (y - iy));
}

// Sum of the squared differences of neighbours in a part: what blur takes first.
double FineEnergy(const Bitmap& bitmap) {
    double energy = 0.0;
    for (int y = 120; y < 280; ++y)
        for (int x = 120; x < 280; ++x) {
            const double across = double(bitmap.Row(y)[4 * x + 4]) - bitmap.Row(y)[4 * x];
            const double down = double(bitmap.Row(y + 1)[4 * x]) - bitmap.Row(y)[4 * x];
            energy += across * across + down * down;
        }
    return energy;
}

// The least orientation of the triangles of the displaced grid of lines `pitch` apart: 1 where nothing is displaced,
// below 0 in a fold.
double LeastOrientation(const CWarpField& field, int pitch) {
    double least = 1.0;
    const auto at = [&](int x, int y, double& px, double& py) {
        px = x + double(field.FieldAt(x, y)[0]);
        py = y + double(field.FieldAt(x, y)[1]);
    };
    for (int y = 0; y + pitch < field.Height(); y += pitch)
        for (int x = 0; x + pitch < field.Width(); x += pitch) {
            double ax, ay, bx, by, cx, cy, dx, dy;
            at(x, y, ax, ay);
            at(x + pitch, y, bx, by);
            at(x, y + pitch, cx, cy);
            at(x + pitch, y + pitch, dx, dy);
            least = std::min(least, ((bx - ax) * (cy - ay) - (cx - ax) * (by - ay)) / (pitch * pitch));
            least = std::min(least, ((dx - cx) * (dy - by) - (dx - bx) * (dy - cy)) / (pitch * pitch));
        }
    return least;
}

// Squared differences from the exact warp: those of the pushed picture, and those of one bilinear sample of the source
// at the exact places.
struct Distance {
    double own = 0.0, ofOneSample = 0.0, count = 0.0;
    double farthest = 0.0;  // of a pixel's source from its exact place

    Distance(const Scene& scene, const std::vector<Push>& pushes) {
        const Bitmap picture = Drawn(scene);
        CWarpField field;
        field.SetImage(&picture, nullptr);
        for (const Push& push : pushes) Apply(field, push);
        for (int y = 40; y < Side - 40; ++y)
            for (int x = 40; x < Side - 40; ++x) {
                double sx = x, sy = y;
                Trace(pushes, sx, sy);
                const double exact = scene(sx, sy);
                own += Squared(field.Output().Row(y)[4 * x] - exact);
                ofOneSample += Squared(Bilinear(picture, sx, sy) - exact);
                ++count;
                const float* const at = field.FieldAt(x, y);
                farthest = std::max(farthest, std::hypot(at[0] - (sx - x), at[1] - (sy - y)));
            }
    }
    double Psnr() const { return 10 * std::log10(255.0 * 255.0 * count / own); }
    double PsnrOfOneSample() const { return 10 * std::log10(255.0 * 255.0 * count / ofOneSample); }

  private:
    static double Squared(double v) { return v * v; }
};

}  // namespace

class WarpedScene : public testing::TestWithParam<NamedScene> {};

TEST_P(WarpedScene, IsAsNearTheExactWarpAsOneBilinearSample) {
    for (const Push& push : {Push{200, 200, 150, 12, 5, 0.8}, Push{180, 210, 80, -9, 14, 1.0}}) {
        const Distance distance(GetParam().level, {push});
        EXPECT_GE(distance.Psnr(), distance.PsnrOfOneSample() - 0.05);
        EXPECT_LT(distance.farthest, 1e-4);
        RecordProperty("psnr", std::to_string(distance.Psnr()));
    }
}

TEST_P(WarpedScene, StaysNearTheExactWarpOverFortyEvents) {
    // The steps of the fall-off's table, a few hundredths of a pixel, are smoothed as the field is read between its
    // pixels; nothing else adds up.
    const Distance distance(GetParam().level, ThreeStrokes());
    EXPECT_GE(distance.Psnr(), distance.PsnrOfOneSample() - 3.0);
    EXPECT_LT(distance.farthest, 1.0);
    RecordProperty("psnr", std::to_string(distance.Psnr()));
    RecordProperty("one", std::to_string(distance.PsnrOfOneSample()));
}

INSTANTIATE_TEST_SUITE_P(Analytic, WarpedScene, testing::ValuesIn(Scenes),
                         [](const auto& entry) { return std::string(entry.param.name); });

TEST(WarpQuality, FiftyStrokesThereAndBackBlurNoMoreThanOne) {
    const Bitmap picture = Drawn([](double x, double y) {
        return 127.5 + 40 * std::sin(x) + 40 * std::sin(0.4 * x + 0.8 * y) + 30 * std::sin(0.7 * x - 0.5 * y);
    });
    // Eight events along a way of eighteen pixels, there or back.
    const auto stroke = [](CWarpField& field, int direction) {
        for (int i = -8; i < 8; i += 2)
            field.Deform(200 + direction * (i + 2), 200 + direction * (i / 2 + 1), 200 + direction * i,
                         200 + direction * (i / 2), CWarpField::Move);
    };
    const auto fresh = [](CWarpField& field, const Bitmap& bitmap) {
        field.SetImage(&bitmap, nullptr);
        field.SetRadius(150);
        field.SetAmount(0.2);
    };
    CWarpField one, many;
    fresh(one, picture);
    fresh(many, picture);
    stroke(one, 1);
    for (int i = 0; i < 50; ++i) stroke(many, i % 2 ? -1 : 1);
    EXPECT_GE(FineEnergy(many.Output()), 0.95 * FineEnergy(one.Output()));
    RecordProperty("energy", std::to_string(FineEnergy(many.Output()) / FineEnergy(one.Output())));
    // The other way, a picture that is sampled again at each stroke, loses it.
    Bitmap resampled = picture;
    for (int i = 0; i < 50; ++i) {
        CWarpField again;
        fresh(again, resampled);
        stroke(again, i % 2 ? -1 : 1);
        resampled = again.Output();
    }
    EXPECT_LT(FineEnergy(resampled), 0.5 * FineEnergy(one.Output()));
}

TEST(WarpQuality, TheGridKeepsItsOrientationUpToFullAmount) {
    const Bitmap picture = Drawn(Scenes[1].level);
    for (const double amount : {0.2, 0.6, 1.0})
        for (const int radius : {20, 60, 140}) {
            CWarpField step, drag, events, grow;
            for (CWarpField* field : {&step, &drag, &events, &grow}) {
                field->SetImage(&picture, nullptr);
                field->SetRadius(radius);
                field->SetAmount(amount);
            }
            step.Deform(200 + radius / 2 - 1, 200, 200, 200, CWarpField::Move);  // the longest that stays one step
            drag.Deform(200 + radius, 200, 200, 200, CWarpField::Move);
            for (int i = 0; i < radius; i += 4) events.Deform(200 + i, 200, 196 + i, 200, CWarpField::Move);
            for (int i = 0; i < 5; ++i) grow.Deform(200, 200, 0, 0, CWarpField::Grow);
            for (const CWarpField* field : {&drag, &events, &grow})
                EXPECT_GT(LeastOrientation(*field, 1), 0.0) << amount << ", " << radius;
            // In the one step that moves farthest the table's own steps show between neighbours, not between lines.
            EXPECT_GT(LeastOrientation(step, amount < 1.0 ? 1 : 4), 0.0) << amount << ", " << radius;
        }
}
