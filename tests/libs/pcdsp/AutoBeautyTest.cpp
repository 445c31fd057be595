// SPDX-License-Identifier: GPL-3.0-or-later
// What the eight looks of beauty owe their callers. What they owe faces is measured in BeautyQualityTest.cpp.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <QtCore/QTemporaryDir>

#include "BeautyShelf.h"
#include "ColourDifference.h"
#include "InstructionSets.h"
#include "LookShelf.h"
#include "Parallel.h"
#include "PC_Dsp.h"
#include "Portrait.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

namespace {

namespace fs = std::filesystem;

int RunLook(int type, Bitmap& picture, std::wstring folder = fs::path(QUINCE_RESOURCES).wstring(),
            CObjProgress* sink = nullptr, int start = 0, int end = 100) {
    return PC_Dsp::AutoBeauty(type, picture.MutablePixels(), picture.Width(), picture.Height(), 0, 0, 0, 0,
                              folder.data(), sink, start, end);
}

Bitmap With(int type, Bitmap picture) {
    EXPECT_NE(RunLook(type, picture), 0) << type;
    return picture;
}

Bitmap PortraitOf(int width) {
    const PortraitPixels painted = PaintPortrait(width, PortraitLook());
    Bitmap bitmap = Bitmap::Uninitialised(painted.width, painted.height);
    std::uint8_t* to = bitmap.MutablePixels();
    for (std::size_t i = 0; i < painted.rgb.size(); i += 3, to += 4) {
        for (int c = 0; c < 3; ++c) to[2 - c] = painted.rgb[i + c];
        to[3] = 255;
    }
    return bitmap;
}

// A picture full of skin. Old skin has dark lines a hundredth of a face wide between coarse pores; young skin has faint
// waves as wide as blotches are.
Bitmap Skin(bool old) {
    constexpr int width = 660, height = 820, Pore = 3;
    const Bitmap noise = TestPictures::Noise(width / Pore + 1, height / Pore + 1, 11);
    Bitmap skin = Bitmap::Uninitialised(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double down = y + 0.15 * x, across = x - 0.15 * y;
            const double way = std::remainder(down, 24.0) / 2.6;
            const double pores = (noise.Row(y / Pore)[4 * (x / Pore)] - 127.5) / 10.0;
            const double level =
                old ? pores - 14.0 * std::exp(-0.5 * way * way) : 3.0 * std::sin(down * 0.2) * std::sin(across * 0.2);
            std::uint8_t* const to = skin.MutablePixels() + skin.Stride() * y + std::ptrdiff_t{4} * x;
            constexpr double colour[] = {122, 150, 200};
            for (int c = 0; c < 3; ++c) to[c] = static_cast<std::uint8_t>(std::lround(colour[c] + level));
            to[3] = 255;
        }
    return skin;
}

// How much of the contrast of green in the middle of a picture is left.
double ContrastLeft(const Bitmap& was, const Bitmap& is) {
    const auto deviation = [](const Bitmap& picture) {
        double sum = 0, squares = 0, count = 0;
        for (int y = 200; y < 620; ++y)
            for (int x = 160; x < 500; ++x, ++count) {
                const double level = picture.Row(y)[4 * x + 1];
                sum += level;
                squares += level * level;
            }
        return std::sqrt(squares / count - sum * sum / (count * count));
    };
    return deviation(is) / deviation(was);
}

class EveryBeauty : public testing::TestWithParam<int> {
  protected:
    void TearDown() override {
        SetWorkerCount(0);
        SelectKernelSet(-1);
    }
};

}  // namespace

TEST_P(EveryBeauty, HasARecipeThatSaysWhatItDoesToFaces) {
    std::string error;
    const auto look = BeautyShelf::Take(QUINCE_RESOURCES, GetParam(), &error);
    ASSERT_TRUE(look) << error;
    EXPECT_FALSE(look->GetRecipe().face.IsNeutral());
    EXPECT_EQ(look->GetRecipe().grain.amount, 0.0) << "a look of beauty has no grain";
}

TEST_P(EveryBeauty, ChangesThePictureAndLeavesAlpha) {
    for (const auto& [width, height] : {std::pair(1, 1), std::pair(1, 31), std::pair(31, 1), std::pair(2, 2),
                                        std::pair(127, 61), std::pair(211, 199)}) {
        const Bitmap source = TestPictures::Noise(width, height, 5, false);
        const Bitmap result = With(GetParam(), source);
        for (std::size_t i = 3; i < source.ByteCount(); i += 4) ASSERT_EQ(result.Pixels()[i], source.Pixels()[i]);
        if (width * height > 100) {
            EXPECT_GT(TestPictures::LargestDifference(source, result), 0);
        }
    }
}

TEST_P(EveryBeauty, GivesTheSameBytesForAnyNumberOfThreads) {
    for (const Bitmap& source : {TestPictures::Noise(31, 1, 3), TestPictures::Face(331, 497)}) {
        SetWorkerCount(1);
        const Bitmap alone = With(GetParam(), source);
        for (const int threads : {2, 3, 16}) {
            SetWorkerCount(threads);
            EXPECT_TRUE(With(GetParam(), source) == alone) << threads;
        }
    }
}

TEST_P(EveryBeauty, DiffersByAtMostTwoLevelsBetweenInstructionSets) {
    const Bitmap source = TestPictures::Face(230, 301);
    SelectKernelSet(0);
    const Bitmap plain = With(GetParam(), source);
    for (int set = 1; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        // One level of the retouch, which a steep tone curve may make two.
        EXPECT_LE(TestPictures::LargestDifference(plain, With(GetParam(), source)), 2) << KernelSetName(set);
    }
}

TEST_P(EveryBeauty, ReportsForwardToItsEnd) {
    Bitmap picture = TestPictures::Face(301, 403), without = picture;
    WatchfulSink sink;
    sink.SetValue(34);
    ASSERT_NE(RunLook(GetParam(), picture, fs::path(QUINCE_RESOURCES).wstring(), &sink, 34, 85), 0);
    EXPECT_FALSE(sink.ranBackwards);
    EXPECT_FLOAT_EQ(sink.GetValue(), 85.0f);
    EXPECT_TRUE(picture == With(GetParam(), without)) << "a sink does not change the result";
}

TEST_P(EveryBeauty, CancelledEveryRowIsEitherDoneOrAsItWas) {
    const Bitmap source = TestPictures::Face(331, 1200);
    const Bitmap done = With(GetParam(), source);
    bool partly = false;
    for (const int allowed : {0, 1, 3, 6, 8, 9, 10, 12, 15}) {
        Bitmap picture = source;
        WatchfulSink sink(allowed);
        if (RunLook(GetParam(), picture, fs::path(QUINCE_RESOURCES).wstring(), &sink) != 0) continue;
        EXPECT_LT(sink.GetValue(), 100.0f);
        int changed = 0, left = 0;
        for (int y = 0; y < source.Height(); ++y) {
            const bool isDone = std::equal(picture.Row(y), picture.Row(y) + picture.Stride(), done.Row(y));
            const bool isSource = std::equal(picture.Row(y), picture.Row(y) + picture.Stride(), source.Row(y));
            ASSERT_TRUE(isDone || isSource) << "row " << y << " after " << allowed;
            changed += isDone && !isSource;
            left += isSource && !isDone;
        }
        partly = partly || (changed > 0 && left > 0);
    }
    EXPECT_TRUE(partly) << "no cancel came in the middle";
}

TEST_P(EveryBeauty, TakesNoChannelToAnEndOfTheScale) {
    // All levels beside each other, a face, and colours that have little room.
    const Bitmap sources[] = {TestPictures::Noise(211, 199, 7), TestPictures::Face(230, 301),
                              TestPictures::Checker(64, 64, 3, 0xFFFE0180, 0xFF02FEFB)};
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        for (const Bitmap& source : sources) {
            const Bitmap result = With(GetParam(), source);
            for (std::size_t i = 0; i < source.ByteCount(); ++i) {
                const int was = source.Pixels()[i], is = result.Pixels()[i];
                if (i % 4 != 3 && (is == 0 || is == 255)) {
                    ASSERT_EQ(was, is) << KernelSetName(set) << ", byte " << i;
                }
            }
        }
    }
}

TEST_P(EveryBeauty, LeavesAnOldFaceItsCharacter) {
    const Bitmap old = Skin(true), young = Skin(false);
    const double ofOld = ContrastLeft(old, With(GetParam(), old)),
                 ofYoung = ContrastLeft(young, With(GetParam(), young));
    EXPECT_GT(ofOld, 0.5) << "ironed out";
    EXPECT_LT(ofOld, 0.97) << "not softened";
    EXPECT_LT(ofYoung, ofOld - 0.05) << "even skin bears more";
}

TEST_P(EveryBeauty, ThumbnailViewAndFullPictureShowTheSame) {
    static const Bitmap full = PortraitOf(1500);
    const Bitmap result = With(GetParam(), full);
    for (const int width : {77, 400, 900}) {
        const int height = width * full.Height() / full.Width();
        const Bitmap small = With(GetParam(), PC_Dsp::Resample(full, width, height));
        EXPECT_LT(MeanDeltaE(PC_Dsp::Resample(result, width, height), small), 2.0) << width;
    }
}

INSTANTIATE_TEST_SUITE_P(Types, EveryBeauty, testing::Range(1, 9));

TEST(AutoBeauty, OtherTypesAndSenselessPicturesAreRefused) {
    Bitmap picture = TestPictures::Noise(8, 8, 1);
    const Bitmap before = picture.Clone();
    for (const int type : {INT_MIN, -1, 0, 9, INT_MAX}) EXPECT_EQ(RunLook(type, picture), 0) << type;
    std::wstring folder = fs::path(QUINCE_RESOURCES).wstring();
    EXPECT_EQ(PC_Dsp::AutoBeauty(1, nullptr, 8, 8, 0, 0, 0, 0, folder.data()), 0);
    for (const auto& [width, height] : {std::pair(0, 8), std::pair(8, -1), std::pair(INT_MAX, INT_MAX)})
        EXPECT_EQ(PC_Dsp::AutoBeauty(1, picture.MutablePixels(), width, height, 0, 0, 0, 0, folder.data()), 0);
    EXPECT_TRUE(picture == before);
}

TEST(AutoBeauty, AFolderWithoutTheRecipesIsRefusedAndTheLastOneIsRemembered) {
    const Bitmap source = TestPictures::Face(64, 80);
    Bitmap picture = source;
    EXPECT_EQ(RunLook(1, picture, L"/no/such/folder"), 0);
    EXPECT_TRUE(picture == source);
    const Bitmap named = With(1, source);
    Bitmap again = source;
    EXPECT_NE(PC_Dsp::AutoBeauty(1, again.MutablePixels(), 64, 80, 0, 0, 0, 0, nullptr), 0);
    EXPECT_TRUE(again == named);
}

TEST(AutoBeauty, AChangedRecipeIsReadAgainAndADamagedOneIsRefused) {
    const QTemporaryDir folder;
    const fs::path program = folder.path().toStdString();
    fs::create_directories(program / "Beauty");
    const auto write = [&](const char* text) { std::ofstream(program / "Beauty" / BeautyShelf::FileName(2)) << text; };
    const Bitmap source = TestPictures::Face(64, 80);
    Bitmap picture = source;
    write("[look]\ntitle = Nothing\n");
    EXPECT_NE(RunLook(2, picture, program.wstring()), 0);
    EXPECT_TRUE(picture == source) << "a recipe that says nothing changes nothing";
    write("[look]\ntitle = Much\n[face]\nsmooth = 3\nlight = 4\n");
    EXPECT_NE(RunLook(2, picture, program.wstring()), 0);
    EXPECT_FALSE(picture == source);
    picture = source;
    write("[look]\ntitle = Wrong\n[face]\nsmooth = 11\n");
    EXPECT_EQ(RunLook(2, picture, program.wstring()), 0);
    EXPECT_TRUE(picture == source);
    std::string error;
    EXPECT_FALSE(BeautyShelf::Take(program, 2, &error));
    EXPECT_EQ(error, "Nuannuan.look: line 4: smooth must be from 0 to 10");
}

TEST(AutoBeauty, WhatKnowsFacesIsNoEffect) {
    const QTemporaryDir folder;
    const fs::path program = folder.path().toStdString();
    fs::create_directories(program / "Effects");
    std::ofstream(program / "Effects" / LookShelf::FileName(3)) << "[look]\ntitle = C1\n[face]\nlight = 2\n";
    std::string error;
    EXPECT_FALSE(LookShelf::Take(program, 3, &error));
    EXPECT_EQ(error, "C1.look: [face] is for looks of beauty");
    LookShelf::Take(QUINCE_RESOURCES, 3);
}

TEST(AutoBeauty, APictureWithoutSkinOnlyGetsTheColourOfTheLook) {
    // The sea: no smoothing, so that the same colour becomes the same colour wherever it lies.
    Bitmap sea = TestPictures::Checker(240, 200, 5, 0xFF204A78, 0xFF2A5684);
    const Bitmap result = With(6, sea);
    for (const auto& [x, y] : {std::pair(2, 2), std::pair(7, 2), std::pair(122, 102), std::pair(127, 102)}) {
        const std::uint32_t first = TestPictures::PixelAt(result, x % 10, 2);
        const std::uint32_t here = TestPictures::PixelAt(result, x, y);
        for (int shift = 0; shift < 24; shift += 8)
            EXPECT_NEAR(int(first >> shift & 255), int(here >> shift & 255), 3) << x << ", " << y;
    }
}
