// SPDX-License-Identifier: GPL-3.0-or-later
#include "AdjustChain.h"

#include <gtest/gtest.h>

#include <set>

#include "AdjustFixture.h"
#include "PC_Dsp.h"

namespace {

using Kind = AdjustCall::Kind;
using Calls = std::vector<AdjustCall>;

BasicAdjustParams Basic(int brightness, int contrast, int saturation, int sharpness) {
    BasicAdjustParams basic;
    basic.Brightness = brightness;
    basic.Contrast = contrast;
    basic.Saturation = saturation;
    basic.Sharpness = sharpness;
    return basic;
}

AdvanceAdjustParams Advance(int exposure, int hue, int red, int green, int blue) {
    AdvanceAdjustParams advance;
    advance.Exposure = exposure;
    advance.Hue = hue;
    advance.Red = red;
    advance.Green = green;
    advance.Blue = blue;
    return advance;
}

TEST(AdjustChain, NoValueMakesNoCall) {
    EXPECT_TRUE(AdjustChain({}, {}, 1.0).empty());
}

TEST(AdjustChain, BrightnessOfFiveCallsWithStepZero) {
    EXPECT_EQ(AdjustChain(Basic(5, 0, 0, 0), {}, 1.0), (Calls{{Kind::LightNew, 0, 3}}));
    EXPECT_EQ(AdjustChain(Basic(-9, 0, 0, 0), {}, 1.0), (Calls{{Kind::LightNew, 0, 3}}));
}

TEST(AdjustChain, BrightnessMovesInStepsOfTenTowardsZero) {
    EXPECT_EQ(AdjustChain(Basic(19, 0, 0, 0), {}, 1.0), (Calls{{Kind::LightNew, 1, 3}}));
    EXPECT_EQ(AdjustChain(Basic(-19, 0, 0, 0), {}, 1.0), (Calls{{Kind::LightNew, -1, 3}}));
    EXPECT_EQ(AdjustChain(Basic(100, 0, 0, 0), {}, 1.0), (Calls{{Kind::LightNew, 10, 3}}));
}

TEST(AdjustChain, SharpnessFollowsTheZoomAndIsFourTimesAsStrongAboveZero) {
    EXPECT_EQ(AdjustChain(Basic(0, 0, 0, -10), {}, 0.5), (Calls{{Kind::UsmSharp, 1.1f, -0.05f}}));
    EXPECT_EQ(AdjustChain(Basic(0, 0, 0, 10), {}, 0.5), (Calls{{Kind::UsmSharp, 1.1f, 0.2f}}));
    EXPECT_EQ(AdjustChain(Basic(0, 0, 0, 10), {}, 1.0), (Calls{{Kind::UsmSharp, 1.1f, 0.4f}}));
}

TEST(AdjustChain, ExposureOfOneIsAboveNeutralByAFixedPart) {
    EXPECT_EQ(AdjustChain({}, Advance(1, 0, 0, 0, 0), 1.0), (Calls{{Kind::ExposureFilter, 1.585f}}));
    EXPECT_EQ(AdjustChain({}, Advance(-10, 0, 0, 0, 0), 1.0), (Calls{{Kind::ExposureFilter, 0.65f}}));
}

TEST(AdjustChain, CallsComeInTheirFixedOrder) {
    EXPECT_EQ(AdjustChain(Basic(20, -30, 40, 50), Advance(2, 90, 1, -2, 3), 1.0), (Calls{{Kind::UsmSharp, 1.1f, 2.0f},
                                                                                         {Kind::LightNew, 2, 3},
                                                                                         {Kind::Light, 0, -30},
                                                                                         {Kind::Saturateconst, 40, 1},
                                                                                         {Kind::ExposureFilter, 1.67f},
                                                                                         {Kind::SetHue, 90},
                                                                                         {Kind::SetColor, 1, -2, 3}}));
}

TEST(AdjustChain, OneColourIsEnoughForTheColourCall) {
    EXPECT_EQ(AdjustChain({}, Advance(0, 0, 0, 7, 0), 1.0), (Calls{{Kind::SetColor, 0, 7, 0}}));
    EXPECT_EQ(AdjustChain({}, Advance(0, 0, 0, 0, -7), 1.0), (Calls{{Kind::SetColor, 0, 0, -7}}));
}

TEST(AdjustChain, OnlySharpnessDependsOnTheScale) {
    const auto advance = Advance(3, 20, 5, 6, 7);
    EXPECT_EQ(AdjustChain(Basic(20, 30, 40, 0), advance, 0.25), AdjustChain(Basic(20, 30, 40, 0), advance, 1.0));
}

TEST(AdjustChain, AnyIntegerIsTaken) {
    for (const int value : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        Bitmap bitmap = TestPictures::Noise(9, 7, 3);
        EXPECT_TRUE(RunAdjustChain(
            bitmap, AdjustChain(Basic(value, value, value, value), Advance(value, value, value, value, value), 1.0)));
    }
}

TEST(RunAdjustChain, EqualsTheSeparateCallsUpToRounding) {
    const Bitmap source = TestPictures::Face(97, 61);
    Bitmap fused = source;
    ASSERT_TRUE(RunAdjustChain(fused, AdjustChain(Basic(30, 20, -25, 40), Advance(2, 15, 10, -10, 5), 1.0)));
    Bitmap plain = source;
    std::uint8_t* pixels = plain.MutablePixels();
    PC_Dsp::UsmSharp(pixels, 97, 61, 1.1f, 1.6f, nullptr, 0, 100);
    PC_Dsp::LightNew(pixels, 97, 61, 3, 3, nullptr, 0, 100);
    PC_Dsp::Light(pixels, 97, 61, 0, 20, nullptr, 0, 100);
    PC_Dsp::Saturateconst(pixels, 97, 61, -25, 1, nullptr, 0, 100);
    PC_Dsp::ExposureFilter(pixels, 97, 61, 1.67f, nullptr, 0, 100);
    PC_Dsp::SetHue(pixels, 97, 61, 15, nullptr, 0, 100);
    PC_Dsp::SetColor(pixels, 97, 61, 10, -10, 5, nullptr, 0, 100);
    // Six calls round to a byte each, the fused pass once: half a level each, stretched by the calls that follow.
    EXPECT_LE(TestPictures::LargestDifference(fused, plain), 6);
    EXPECT_GT(TestPictures::LargestDifference(fused, source), 20);
}

TEST(RunAdjustChain, StopsWhenTheSinkSaysSo) {
    Bitmap bitmap = TestPictures::Face(64, 64);
    RecordingProgress sink(0.0f);
    EXPECT_FALSE(RunAdjustChain(bitmap, AdjustChain(Basic(30, 0, 0, 0), {}, 1.0), {&sink, 0, 100}));
}

TEST(RunAdjustChain, TakesANullBitmap) {
    Bitmap none;
    EXPECT_TRUE(RunAdjustChain(none, AdjustChain(Basic(30, 0, 0, 10), {}, 1.0)));
    EXPECT_TRUE(none.IsNull());
}

TEST(AdjustSliders, EveryIndexAndPlaceStandsForOneSlider) {
    std::set<int> indexes, places;
    for (const AdjustSlider& slider : AdjustSliders) {
        indexes.insert(slider.index);
        places.insert(slider.panelPlace);
        EXPECT_EQ(slider.group == AdjustGroup::Basic, slider.basicField != nullptr) << slider.control;
        EXPECT_EQ(slider.group == AdjustGroup::Advance, slider.advanceField != nullptr) << slider.control;
        EXPECT_LT(slider.minimum, AdjustSlider::Neutral);
        EXPECT_GT(slider.maximum, AdjustSlider::Neutral);
        EXPECT_EQ(FindAdjustSlider(slider.index), &slider);
        EXPECT_EQ(FindAdjustSlider(QString(slider.Control())), &slider);
    }
    EXPECT_EQ(indexes, (std::set<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(places, (std::set<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(FindAdjustSlider(9), nullptr);
    EXPECT_EQ(FindAdjustSlider(-1), nullptr);
}

TEST(AdjustSliders, IndexesAreTheFixedOnes) {
    const auto index = [](const char* name) { return FindAdjustSlider(QString::fromLatin1(name))->index; };
    EXPECT_EQ(index("Liangdu"), 2);
    EXPECT_EQ(index("Duibidu"), 3);
    EXPECT_EQ(index("Baohedu"), 1);
    EXPECT_EQ(index("Ruidu"), 4);
    EXPECT_EQ(index("Baoguang"), 8);
    EXPECT_EQ(index("SliderSeXiang"), 0);
    EXPECT_EQ(index("SliderR"), 5);
    EXPECT_EQ(index("SliderG"), 6);
    EXPECT_EQ(index("SliderB"), 7);
}

TEST(AdjustScenes, ButtonsStandForTheirSceneAndType) {
    const auto row = [](int scenario) { return FindAdjustScene(scenario); };
    EXPECT_STREQ(row(1)->button, "BtnScenery");
    EXPECT_EQ(row(1)->type, 5);
    EXPECT_STREQ(row(2)->button, "BtnPortrait");
    EXPECT_EQ(row(2)->type, 2);
    EXPECT_STREQ(row(3)->button, "BtnObjects");
    EXPECT_EQ(row(3)->type, 4);
    EXPECT_STREQ(row(4)->button, "BtnFood");
    EXPECT_EQ(row(4)->type, 3);
    EXPECT_EQ(row(0), nullptr);
    EXPECT_EQ(row(5), nullptr);
}

}  // namespace
