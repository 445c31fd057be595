// SPDX-License-Identifier: GPL-3.0-or-later
// How near a resized picture comes to the scene that it shows, against other resamplers. A scene is a function of
// place, the source its values at the source's pixels, and the truth its values at the result's pixels. Where the
// picture is reduced, the truth leaves out what lies beyond half a wave per result pixel, since no picture of that size
// can carry it: whatever shows of it is false pattern.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

#include "OtherResamplers.h"
#include "PC_Dsp.h"
#include "PictureQuality.h"

namespace {

constexpr double Pi = std::numbers::pi;
using Scene = std::function<double(double x, double y)>;

// Rings about the middle of a square of `side` pixels, finer and finer: `finest` waves per pixel at the middle of each
// side. What is finer than `limit` in x or y is left out.
Scene ZonePlate(int side, double finest, double limit) {
    return [=](double x, double y) {
        const double u = x - 0.5 * side, v = y - 0.5 * side, rise = finest / (0.5 * side);
        if (rise * std::abs(u) > limit || rise * std::abs(v) > limit) return 127.5;
        return 127.5 + 120.0 * std::cos(Pi * rise * (u * u + v * v));
    };
}

// Distance from a line through the middle that leans by `degrees` from the upright.
double FromLine(int side, double degrees, double x, double y) {
    const double angle = degrees * Pi / 180.0;
    return (x - 0.5 * side) * std::cos(angle) + (y - 0.5 * side) * std::sin(angle);
}

double EdgeLevel(double part) {
    return 30.0 + 195.0 * part;
}

// An edge as a lens draws it, blurred by a Gaussian of `blur` pixels.
Scene Edge(int side, double degrees, double blur) {
    return [=](double x, double y) {
        return EdgeLevel(0.5 + 0.5 * std::erf(FromLine(side, degrees, x, y) / (blur * std::numbers::sqrt2)));
    };
}

// The same without what is finer than `limit` waves per pixel in x: the sum of its waves up to there.
class LimitedEdge {
  public:
    LimitedEdge(int side, double degrees, double blur, double limit) : m_side(side), m_degrees(degrees) {
        const double finest = limit / std::cos(degrees * Pi / 180.0);
        for (int i = 0; i <= side * PerPixel; ++i) m_levels.push_back(LevelAt(double(i) / PerPixel, blur, finest));
    }
    double operator()(double x, double y) const {
        const double distance = FromLine(m_side, m_degrees, x, y), at = std::abs(distance) * PerPixel;
        const auto index = static_cast<std::size_t>(at);
        const double part = at - static_cast<double>(index);
        const double rise = m_levels[index] + (m_levels[index + 1] - m_levels[index]) * part;
        return EdgeLevel(0.5 + std::copysign(rise, distance));
    }

  private:
    static constexpr int PerPixel = 20;

    // Half the edge's height less or more.
    static double LevelAt(double distance, double blur, double finest) {
        constexpr int Steps = 1000;
        double sum = 0.0;
        for (int i = 0; i < Steps; ++i) {
            const double waves = (i + 0.5) * finest / Steps;
            const double share = std::exp(-2.0 * Pi * Pi * blur * blur * waves * waves);
            sum += share * std::sin(2.0 * Pi * waves * distance) / waves;
        }
        return sum * finest / Steps / Pi;
    }

    int m_side;
    double m_degrees;
    std::vector<double> m_levels;
};

double PsnrOf(const Bitmap& picture, const Bitmap& source, const Scene& truth) {
    const double scaleX = double(source.Width()) / picture.Width(), scaleY = double(source.Height()) / picture.Height();
    SquaredError error;
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x)
            error.Add(picture.Row(y)[4 * x], std::clamp(truth((x + 0.5) * scaleX, (y + 0.5) * scaleY), 0.0, 255.0));
    return error.Psnr();
}

void ExpectNearest(const Bitmap& source, int size, const Scene& truth) {
    const double own = PsnrOf(PC_Dsp::Resample(source, size, size), source, truth);
    ::testing::Test::RecordProperty("own", std::to_string(own));
    for (const auto& [name, picture] : ResampledElsewhere(source, size, size)) {
        const double other = PsnrOf(picture, source, truth);
        std::printf("    %d -> %d %-15s %6.2f dB, own %6.2f dB\n", source.Width(), size, name.c_str(), other, own);
        EXPECT_GE(own, other) << name << ", " << source.Width() << " to " << size;
    }
}

constexpr int LargeSide = 300, SmallSide = 160;
const int ReducedSides[] = {100, 141, 212, 270};
const int EnlargedSides[] = {200, 226, 320, 592};

}  // namespace

TEST(ResampleQuality, AReducedZonePlateHasTheLeastFalsePattern) {
    const Bitmap source = Drawn(LargeSide, LargeSide, ZonePlate(LargeSide, 0.5, 1.0));
    for (const int side : ReducedSides) {
        SCOPED_TRACE(side);
        ExpectNearest(source, side, ZonePlate(LargeSide, 0.5, 0.5 * side / LargeSide));
    }
}

TEST(ResampleQuality, AReducedSlantedEdgeComesNearestToTheScene) {
    for (const double degrees : {5.0, 12.0})
        for (const double blur : {0.35, 0.7}) {
            const Bitmap source = Drawn(LargeSide, LargeSide, Edge(LargeSide, degrees, blur));
            for (const int side : ReducedSides) {
                SCOPED_TRACE(degrees);
                ExpectNearest(source, side, LimitedEdge(LargeSide, degrees, blur, 0.5 * side / LargeSide));
            }
        }
}

TEST(ResampleQuality, AnEnlargedZonePlateComesNearestToTheScene) {
    for (const double finest : {0.25, 0.4, 0.5}) {
        const Scene scene = ZonePlate(SmallSide, finest, 1.0);
        const Bitmap source = Drawn(SmallSide, SmallSide, scene);
        for (const int side : EnlargedSides) {
            SCOPED_TRACE(finest);
            ExpectNearest(source, side, scene);
        }
    }
}

TEST(ResampleQuality, AnEnlargedSlantedEdgeComesNearestToTheScene) {
    for (const double degrees : {5.0, 12.0})
        for (const double blur : {0.5, 0.7, 1.0}) {
            const Scene scene = Edge(SmallSide, degrees, blur);
            const Bitmap source = Drawn(SmallSide, SmallSide, scene);
            for (const int side : EnlargedSides) {
                SCOPED_TRACE(blur);
                ExpectNearest(source, side, scene);
            }
        }
}
