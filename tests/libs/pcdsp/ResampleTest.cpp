// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "CubicTaps.h"
#include "Kernels.h"
#include "Parallel.h"
#include "PC_Dsp.h"
#include "PlainRotate.h"
#include "TestPictures.h"

TEST(Resample, GivesTheSameBytesAtTheSameSize) {
    const Bitmap source = TestPictures::Noise(37, 23, 1, false);
    EXPECT_TRUE(PC_Dsp::Resample(source, 37, 23) == source);
    Bitmap view = Bitmap::Uninitialised(20, 10);
    PC_Dsp::ResampleRect(source, 5, 7, 20, 10, view, ResampleQuality::Best);
    EXPECT_TRUE(view == PC_Dsp::Clone(source, 5, 7, 20, 10));
}

TEST(Resample, KeepsFlatAreasFlat) {
    for (const std::uint32_t colour : {0xFF000000u, 0xFFFFFFFFu, 0xFF0180FEu, 0x80C04010u}) {
        const Bitmap source = TestPictures::Plain(53, 31, colour);
        for (const auto& [w, h] : {std::pair(7, 5), std::pair(52, 30), std::pair(101, 97), std::pair(1, 1)})
            EXPECT_LE(
                TestPictures::LargestDifference(PC_Dsp::Resample(source, w, h), TestPictures::Plain(w, h, colour)), 0);
    }
}

TEST(Resample, ColourOfTransparentPixelsDoesNotBleed) {
    const Bitmap source = TestPictures::Checker(64, 64, 1, 0xFFFF0000, 0x0000FF00);
    Bitmap view = Bitmap::Uninitialised(8, 8);
    PC_Dsp::ResampleRect(source, 0, 0, 64, 64, view, ResampleQuality::Best);
    EXPECT_LE(TestPictures::LargestDifference(view, TestPictures::Plain(8, 8, 0x80FF0000)), 1);
}

TEST(Resample, AViewIsTheMeanOfTheAreaItCovers) {
    const Bitmap source = TestPictures::Noise(60, 40, 3);
    Bitmap view = Bitmap::Uninitialised(20, 10);
    PC_Dsp::ResampleRect(source, 0, 0, 60, 40, view, ResampleQuality::Fast);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 20; ++x)
            for (int c = 0; c < 3; ++c) {
                double sum = 0.0;
                for (int v = 0; v < 4; ++v)
                    for (int u = 0; u < 3; ++u) sum += source.Row(4 * y + v)[4 * (3 * x + u) + c];
                ASSERT_NEAR(view.Row(y)[4 * x + c], sum / 12.0, 1.0);
            }
}

TEST(Resample, AnEnlargedViewIsTheCubicOfTheSixteenPixelsAround) {
    const Bitmap source = TestPictures::Noise(43, 37, 8);
    const double sx = 6.3, sy = 4.1, sw = 30.0, sh = 29.5;
    Bitmap target(97, 113);
    PC_Dsp::ResampleRect(source, sx, sy, sw, sh, target, ResampleQuality::Best);
    for (int y = 0; y < 113; ++y)
        for (int x = 0; x < 97; ++x) {
            const double u = sx + (x + 0.5) * sw / 97 - 0.5, v = sy + (y + 0.5) * sh / 113 - 0.5;
            for (int c = 0; c < 3; ++c) {
                double sum = 0.0;
                for (int j = int(v) - 1; j < int(v) + 3; ++j)
                    for (int i = int(u) - 1; i < int(u) + 3; ++i)
                        sum += CatmullRom(u - i) * CatmullRom(v - j) * source.Row(j)[4 * i + c];
                // Weights are in 1/16384, and the sums of a column are kept in 1/64 level.
                ASSERT_LE(std::abs(std::clamp(sum, 0.0, 255.0) - target.Row(y)[4 * x + c]), 0.55) << x << ", " << y;
            }
        }
}

TEST(Resample, APartOfAViewIsThatPartOfTheWholeView) {
    const Bitmap source = TestPictures::Face(600, 400);
    for (const double scale : {2.5, 1.0, 0.4}) {
        const int w = static_cast<int>(600 / scale), h = static_cast<int>(400 / scale);
        for (const ResampleQuality quality : {ResampleQuality::Fast, ResampleQuality::Best}) {
            Bitmap whole = Bitmap::Uninitialised(w, h), part = Bitmap::Uninitialised(50, 40);
            PC_Dsp::ResampleRect(source, 0, 0, w * scale, h * scale, whole, quality);
            PC_Dsp::ResampleRect(source, 60 * scale, 30 * scale, 50 * scale, 40 * scale, part, quality);
            EXPECT_LE(TestPictures::LargestDifference(part, PC_Dsp::Clone(whole, 60, 30, 50, 40)), 1);
        }
    }
}

TEST(Resample, GivesTheSameBytesForAnyThreadsAndInstructionSet) {
    const Bitmap source = TestPictures::Noise(331, 257, 9, false);
    SetWorkerCount(1);
    SelectKernelSet(0);
    const Bitmap reduced = PC_Dsp::Resample(source, 100, 61), enlarged = PC_Dsp::Resample(source, 500, 611);
    const Bitmap opaque = TestPictures::Noise(331, 257, 4);
    const auto view = [&](int width, int height) {
        Bitmap target(width, height);
        PC_Dsp::ResampleRect(opaque, 3.5, 2.25, 300, 200, target, ResampleQuality::Best);
        return target;
    };
    const Bitmap third = view(101, 67), larger = view(517, 431);
    for (int set = 0; set < KernelSetCount(); ++set)
        for (const int threads : {2, 3, 16}) {
            SelectKernelSet(set);
            SetWorkerCount(threads);
            EXPECT_TRUE(PC_Dsp::Resample(source, 100, 61) == reduced);
            EXPECT_TRUE(PC_Dsp::Resample(source, 500, 611) == enlarged);
            EXPECT_TRUE(view(101, 67) == third);
            EXPECT_TRUE(view(517, 431) == larger);
        }
    SelectKernelSet(-1);
    SetWorkerCount(0);
}

TEST(Resample, RefusesWhatMakesNoSense) {
    const Bitmap source = TestPictures::Noise(8, 8, 1);
    EXPECT_TRUE(PC_Dsp::Resample({}, 4, 4).IsNull());
    EXPECT_TRUE(PC_Dsp::Resample(source, 0, 4).IsNull());
    Bitmap view = TestPictures::Plain(4, 4, 0xFF123456);
    const Bitmap before = view.Clone();
    PC_Dsp::ResampleRect(source, 0, 0, 0, 4, view, ResampleQuality::Best);
    PC_Dsp::ResampleRect(source, NAN, 0, 4, 4, view, ResampleQuality::Best);
    PC_Dsp::ResampleRect({}, 0, 0, 4, 4, view, ResampleQuality::Best);
    EXPECT_TRUE(view == before);
}

TEST(Rotate, EqualsThePlainTwinForEveryCode) {
    for (const auto& [w, h] :
         {std::pair(1, 1), std::pair(1, 31), std::pair(31, 1), std::pair(97, 131), std::pair(300, 65)})
        for (int code = 0; code < 8; ++code) {
            const Bitmap source = TestPictures::Noise(w, h, 4, false);
            Bitmap turned = source;
            ASSERT_NE(PC_Dsp::SingleRotate(turned, static_cast<RotateFlipType>(code)), 0);
            EXPECT_TRUE(turned == PlainRotate(source, code)) << code;
        }
    Bitmap none;
    EXPECT_EQ(PC_Dsp::SingleRotate(none, Rotate90FlipNone), 0);
    EXPECT_EQ(PC_Dsp::SingleRotate(nullptr, Rotate90FlipNone), 0);
    Bitmap one = TestPictures::Plain(2, 2, 0xFF000000);
    EXPECT_EQ(PC_Dsp::SingleRotate(one, static_cast<RotateFlipType>(8)), 0);
}

TEST(Clone, TakesThePartThatLiesInside) {
    const Bitmap source = TestPictures::Noise(20, 10, 5);
    EXPECT_TRUE(PC_Dsp::Clone(source, -5, -5, 100, 100) == source);
    EXPECT_EQ(PC_Dsp::Clone(source, 15, 8, 10, 10).Width(), 5);
    EXPECT_TRUE(PC_Dsp::Clone(source, 20, 0, 5, 5).IsNull());
    EXPECT_TRUE(PC_Dsp::Clone({}, 0, 0, 5, 5).IsNull());
}

TEST(Sharpen, NoPixelLeavesItsNeighboursRangeByMoreThanTheHalo) {
    const Bitmap source = TestPictures::Checker(120, 90, 11, 0xFF404040, 0xFFB0B0B0);
    Bitmap sharp = source;
    ASSERT_NE(PC_Dsp::UsmSharp(sharp.MutablePixels(), 120, 90, 1.1f, 20.0f, nullptr, 0, 100), 0);
    for (std::size_t i = 0; i < sharp.ByteCount(); i += 4) {
        ASSERT_GE(sharp.Pixels()[i], 0x40 - 10);
        ASSERT_LE(sharp.Pixels()[i], 0xB0 + 10);
    }
}

TEST(Sharpen, SofteningNeverInvertsAnEdge) {
    const Bitmap edge = TestPictures::Checker(40, 4, 20, 0xFF404040, 0xFFB0B0B0);
    for (const float amount : {-0.5f, -1.0f, -50.0f}) {
        Bitmap soft = edge;
        ASSERT_NE(PC_Dsp::UsmSharp(soft.MutablePixels(), 40, 4, 1.1f, amount, nullptr, 0, 100), 0);
        for (int x = 1; x < 40; ++x) ASSERT_GE(soft.Row(1)[4 * x], soft.Row(1)[4 * x - 4]);
    }
}
