// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Kernels.h"
#include "Parallel.h"
#include "PC_Dsp.h"
#include "PictureQuality.h"
#include "PlainRotate.h"
#include "TestPictures.h"

namespace {

using TestPictures::PixelAt;

constexpr std::uint32_t TransparentWhite = 0x00FFFFFF;

Bitmap Turned(const Bitmap& source, int angle) {
    return PC_Dsp::MultiRotate(source, angle, 0, 0, 0, 0);
}

struct Turn {
    explicit Turn(int degrees)
        : cosine(std::cos(degrees * std::numbers::pi / 180.0)), sine(std::sin(degrees * std::numbers::pi / 180.0)) {}
    double cosine, sine;
};

// Where the source has what stands at (x, y) of the result, both continuous with the first pixel's centre at 0.5.
struct Place {
    double x, y;
};
Place SourceOf(const Bitmap& source, const Bitmap& result, int degrees, double x, double y) {
    const Turn turn(degrees);
    const double u = x - 0.5 * result.Width(), v = y - 0.5 * result.Height();
    return {u * turn.cosine + v * turn.sine + 0.5 * source.Width(),
            v * turn.cosine - u * turn.sine + 0.5 * source.Height()};
}

// The share of a result pixel that the source covers, by counting points.
double CountedShare(const Bitmap& source, const Bitmap& result, int degrees, int x, int y) {
    constexpr int Points = 32;
    int inside = 0;
    for (int v = 0; v < Points; ++v)
        for (int u = 0; u < Points; ++u) {
            const Place at = SourceOf(source, result, degrees, x + (u + 0.5) / Points, y + (v + 0.5) / Points);
            inside += at.x >= 0 && at.y >= 0 && at.x < source.Width() && at.y < source.Height();
        }
    return double(inside) / (Points * Points);
}

double AlphaSum(const Bitmap& bitmap) {
    double sum = 0.0;
    for (std::size_t i = 3; i < bitmap.ByteCount(); i += 4) sum += bitmap.Pixels()[i] / 255.0;
    return sum;
}

}  // namespace

TEST(MultiRotate, IsExactForQuarterTurnsInEitherDirectionAndBeyondOneTurn) {
    for (const auto& [w, h] : {std::pair(1, 1), std::pair(1, 9), std::pair(61, 40)}) {
        const Bitmap source = TestPictures::Noise(w, h, 2, false);
        for (int quarters = -9; quarters <= 9; ++quarters)
            EXPECT_TRUE(Turned(source, 90 * quarters) == PlainRotate(source, (quarters % 4 + 4) % 4)) << quarters;
    }
}

TEST(MultiRotate, TakesAnyWholeNumberOfDegrees) {
    const Bitmap source = TestPictures::Noise(40, 30, 2);
    EXPECT_TRUE(Turned(source, 367) == Turned(source, 7));
    EXPECT_TRUE(Turned(source, -353) == Turned(source, 7));
    EXPECT_TRUE(Turned(source, -7) == Turned(source, 353));
    EXPECT_TRUE(Turned(source, 2147483647) == Turned(source, 2147483647 % 360));
    EXPECT_TRUE(Turned(source, -2147483647 - 1) == Turned(source, (-2147483647 - 1) % 360));
}

TEST(MultiRotate, OfNothingIsNothing) {
    EXPECT_TRUE(Turned({}, 7).IsNull());
    EXPECT_TRUE(Turned({}, 90).IsNull());
}

TEST(MultiRotate, RefusesBoundsThatNoBitmapMayHave) {
    const Bitmap line = TestPictures::Plain(Bitmap::MaxSide, 1, 0xFF808080);
    EXPECT_TRUE(Turned(line, 45).IsNull());
    EXPECT_FALSE(Turned(line, 90).IsNull());
}

TEST(MultiRotate, GivesTheBoundsOfTheTurnedPicture) {
    for (const auto& [w, h] : {std::pair(1, 1), std::pair(300, 200), std::pair(7, 133)}) {
        const Bitmap source = TestPictures::Plain(w, h, 0xFF000000);
        for (int angle = -180; angle <= 180; ++angle) {
            const Turn turn(angle);
            const double width = w * std::abs(turn.cosine) + h * std::abs(turn.sine);
            const double height = h * std::abs(turn.cosine) + w * std::abs(turn.sine);
            const Bitmap result = Turned(source, angle);
            EXPECT_EQ(result.Width(), static_cast<int>(std::ceil(width - 1e-6))) << angle;
            EXPECT_EQ(result.Height(), static_cast<int>(std::ceil(height - 1e-6))) << angle;
            int toldWidth = 0, toldHeight = 0;
            PC_Dsp::MultiRotateSize(w, h, angle, &toldWidth, &toldHeight);
            EXPECT_EQ(toldWidth, result.Width()) << angle;
            EXPECT_EQ(toldHeight, result.Height()) << angle;
        }
    }
}

TEST(MultiRotate, TurnsClockwiseAboutTheCentre) {
    // A spot to the right of the centre goes downwards.
    Bitmap source = TestPictures::Plain(101, 101, 0xFF000000);
    for (int y = 48; y <= 52; ++y)
        for (int x = 88; x <= 92; ++x) reinterpret_cast<std::uint32_t*>(source.MutablePixels())[101 * y + x] = ~0u;
    const Bitmap result = Turned(source, 30);
    double sum = 0, atX = 0, atY = 0;
    for (int y = 0; y < result.Height(); ++y)
        for (int x = 0; x < result.Width(); ++x) {
            if (PixelAt(result, x, y) >> 24 != 255) continue;
            const double light = result.Row(y)[4 * x];
            sum += light;
            atX += light * (x + 0.5);
            atY += light * (y + 0.5);
        }
    EXPECT_NEAR(atX / sum - 0.5 * result.Width(), 40 * std::cos(std::numbers::pi / 6), 0.05);
    EXPECT_NEAR(atY / sum - 0.5 * result.Height(), 40 * std::sin(std::numbers::pi / 6), 0.05);
}

TEST(MultiRotate, LeavesCornersTransparentAndWhite) {
    const Bitmap result = Turned(TestPictures::Noise(200, 120, 4), 20);
    for (const int x : {0, result.Width() - 1})
        for (const int y : {0, result.Height() - 1}) EXPECT_EQ(PixelAt(result, x, y), TransparentWhite);
    for (int y = 0; y < result.Height(); ++y)
        for (int x = 0; x < result.Width(); ++x) {
            const std::uint32_t pixel = PixelAt(result, x, y);
            if (pixel >> 24 == 0) {
                ASSERT_EQ(pixel, TransparentWhite);
            }
        }
}

TEST(MultiRotate, AFlatPictureKeepsItsColourUpToTheLastBorderPixel) {
    const Bitmap source = TestPictures::Plain(90, 61, 0xFF2050B0);
    for (const int angle : {1, 7, 45, 89, 133, -20}) {
        const Bitmap result = Turned(source, angle);
        for (int y = 0; y < result.Height(); ++y)
            for (int x = 0; x < result.Width(); ++x) {
                const std::uint32_t pixel = PixelAt(result, x, y);
                if (pixel >> 24 != 0) {
                    ASSERT_EQ(pixel & 0xFFFFFF, 0x2050B0u) << angle;
                }
            }
    }
}

TEST(MultiRotate, BordersAreCoveredByTheShareOfTheirPixels) {
    const Bitmap source = TestPictures::Plain(40, 27, 0xFF808080);
    for (const int angle : {1, 7, 30, 45, 80, 200}) {
        const Bitmap result = Turned(source, angle);
        for (int y = 0; y < result.Height(); ++y)
            for (int x = 0; x < result.Width(); ++x) {
                const double share = CountedShare(source, result, angle, x, y);
                // Only the four pixels at the picture's corners are not exact.
                const Place at = SourceOf(source, result, angle, x + 0.5, y + 0.5);
                const bool corner = std::min(std::abs(at.x), std::abs(at.x - 40)) < 0.75 &&
                                    std::min(std::abs(at.y), std::abs(at.y - 27)) < 0.75;
                ASSERT_NEAR((PixelAt(result, x, y) >> 24) / 255.0, share, corner ? 0.13 : 0.02)
                    << angle << " at " << x << ", " << y;
            }
    }
}

TEST(MultiRotate, SmallAndThinPicturesKeepTheirArea) {
    for (const auto& [w, h] :
         {std::pair(1, 1), std::pair(2, 2), std::pair(3, 3), std::pair(1, 40), std::pair(40, 1), std::pair(5, 4)}) {
        const Bitmap source = TestPictures::Plain(w, h, 0xFF306090);
        for (int angle = -180; angle <= 180; ++angle) {
            const Bitmap result = Turned(source, angle);
            ASSERT_FALSE(result.IsNull());
            EXPECT_NEAR(AlphaSum(result), w * h, 0.25 + 0.01 * w * h) << w << " x " << h << " by " << angle;
        }
    }
}

TEST(MultiRotate, ColourOfTransparentPixelsDoesNotShow) {
    Bitmap source = TestPictures::Plain(80, 80, 0xFFE02010);
    auto* words = reinterpret_cast<std::uint32_t*>(source.MutablePixels());
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 80; ++x)
            if (std::hypot(x - 40, y - 40) > 25) words[80 * y + x] = 0x0000FF00;
    const Bitmap result = Turned(source, 33);
    for (int y = 0; y < result.Height(); ++y)
        for (int x = 0; x < result.Width(); ++x) {
            const std::uint32_t pixel = PixelAt(result, x, y);
            if (pixel >> 24 != 0) {
                ASSERT_EQ(pixel & 0xFFFFFF, 0xE02010u);
            }
        }
    EXPECT_NEAR(AlphaSum(result), AlphaSum(source), 0.002 * AlphaSum(source));
}

TEST(MultiRotate, TranslucencyStaysWhatItIs) {
    const Bitmap result = Turned(TestPictures::Plain(60, 50, 0x80C04010), 12);
    EXPECT_EQ(PixelAt(result, result.Width() / 2, result.Height() / 2), 0x80C04010u);
}

TEST(MultiRotate, AnOpaquePictureIsOpaqueInside) {
    const Bitmap source = TestPictures::Noise(70, 90, 8);
    const Bitmap result = Turned(source, 25);
    for (int y = 0; y < result.Height(); ++y)
        for (int x = 0; x < result.Width(); ++x) {
            const Place at = SourceOf(source, result, 25, x + 0.5, y + 0.5);
            if (at.x >= 0.71 && at.y >= 0.71 && at.x < 70 - 0.71 && at.y < 90 - 0.71) {
                ASSERT_EQ(PixelAt(result, x, y) >> 24, 255u);
            }
        }
}

TEST(MultiRotate, ComesNearToTheTurnedScene) {
    const auto scene = [](double x, double y) {
        return 127.5 + 60 * std::sin(0.7 * x + 0.3 * y) + 50 * std::cos(0.5 * y - 0.2 * x);
    };
    const Bitmap source = Drawn(150, 110, scene);
    for (const int angle : {3, 45, -71, 160}) {
        const Bitmap result = Turned(source, angle);
        SquaredError error;
        for (int y = 0; y < result.Height(); ++y)
            for (int x = 0; x < result.Width(); ++x) {
                const Place at = SourceOf(source, result, angle, x + 0.5, y + 0.5);
                if (PixelAt(result, x, y) >> 24 == 255) error.Add(result.Row(y)[4 * x], scene(at.x, at.y));
            }
        EXPECT_GT(error.Psnr(), 44.0) << angle;
    }
}

TEST(MultiRotate, GivesTheSameBytesForAnyThreadsAndInstructionSet) {
    const Bitmap opaque = TestPictures::Noise(331, 257, 9), mixed = TestPictures::Noise(190, 201, 9, false);
    SetWorkerCount(1);
    SelectKernelSet(0);
    const Bitmap opaqueAlone = Turned(opaque, 17), mixedAlone = Turned(mixed, 17);
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        SetWorkerCount(1);
        const Bitmap mixedHere = Turned(mixed, 17);
        EXPECT_LE(TestPictures::LargestDifference(mixedHere, mixedAlone), 1) << KernelSet(set).name;
        for (const int threads : {2, 3, 16}) {
            SetWorkerCount(threads);
            EXPECT_TRUE(Turned(opaque, 17) == opaqueAlone) << KernelSet(set).name;
            EXPECT_TRUE(Turned(mixed, 17) == mixedHere) << KernelSet(set).name;
        }
    }
    SelectKernelSet(-1);
    SetWorkerCount(0);
}

TEST(MultiRotate, LeavesItsSourceAlone) {
    const Bitmap source = TestPictures::Noise(64, 64, 1);
    const Bitmap before = source.Clone();
    Turned(source, 31);
    Turned(source, 90);
    EXPECT_TRUE(source == before);
}

TEST(Rotate, ALargeQuarterTurnEqualsThePlainTwin) {
    // Large enough to be written past the caches, with rows that begin at every place of 16 bytes.
    const Bitmap source = TestPictures::Noise(2063, 2057, 6);
    for (const int code : {1, 7}) {
        Bitmap turned = source;
        ASSERT_NE(PC_Dsp::SingleRotate(turned, static_cast<RotateFlipType>(code)), 0);
        EXPECT_TRUE(turned == PlainRotate(source, code)) << code;
    }
}

// A view of the turned picture: one step must show what two show, but for the cubic's softness.
TEST(MultiRotateInto, TurnsAndReducesLikeTurningAndThenReducing) {
    const Bitmap source = PC_Dsp::Resample(TestPictures::Face(30, 20), 300, 200);
    for (const int angle : {7, 45, 120, -33, 90, 180}) {
        const Bitmap turned = Turned(source, angle);
        const int width = turned.Width() * 4 / 5, height = turned.Height() * 4 / 5;
        const Bitmap direct = PC_Dsp::MultiRotateInto(source, angle, 1.25, width, height);
        const Bitmap twice = PC_Dsp::Resample(turned, width, height);
        ASSERT_EQ(direct.Width(), width);
        ASSERT_EQ(direct.Height(), height);
        EXPECT_NEAR(AlphaSum(direct), angle % 90 ? 300 * 200 / (1.25 * 1.25) : width * height, 1.0) << angle;
        for (int y = height * 2 / 5; y < height * 3 / 5; ++y)
            for (int x = width * 2 / 5; x < width * 3 / 5; ++x) {
                const auto got = PixelAt(direct, x, y), wanted = PixelAt(twice, x, y);
                ASSERT_NEAR(double(got & 255), double(wanted & 255), 4) << angle << " at " << x << ", " << y;
                ASSERT_NEAR(double(got >> 8 & 255), double(wanted >> 8 & 255), 4) << angle << " at " << x << ", " << y;
            }
    }
}

TEST(MultiRotateInto, NothingComesOfNoPictureAndOfASizeThatIsNotAllowed) {
    EXPECT_FALSE(PC_Dsp::MultiRotateInto({}, 30, 1.0, 10, 10));
    EXPECT_FALSE(PC_Dsp::MultiRotateInto(TestPictures::Ramp(20, 20), 30, 1.0, 0, 10));
}
