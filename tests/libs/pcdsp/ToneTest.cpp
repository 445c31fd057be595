// SPDX-License-Identifier: GPL-3.0-or-later
// How the operations treat tones, colours and skin.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "ColourDifference.h"
#include "Operations.h"
#include "TestPictures.h"

namespace {

// Skin from pale to very dark.
constexpr std::uint32_t Tones[] = {0xFFF6DCCB, 0xFFE8BFA3, 0xFFD9A184, 0xFFB77C5C, 0xFF8A5A3F, 0xFF553526};

Bitmap After(const Operation& operation, const Bitmap& source) {
    Bitmap out = source;
    EXPECT_NE(operation.run(out.MutablePixels(), out.Width(), out.Height(), nullptr, 0, 100), 0);
    return out;
}

Bitmap WithOp(const PointOp& op, const Bitmap& source) {
    Bitmap out = source;
    EXPECT_NE(PC_Dsp::ApplyPointOps(out.MutablePixels(), out.Width(), out.Height(), &op, 1, nullptr, 0, 100), 0);
    return out;
}

Lab LabAt(const Bitmap& bitmap, int x, int y) {
    const std::uint32_t c = TestPictures::PixelAt(bitmap, x, y);
    return LabOf(c >> 16 & 255, c >> 8 & 255, c & 255);
}

// A colour that covers the picture, after an operation of single pixels.
Bitmap Patch(std::uint32_t colour) {
    return TestPictures::Plain(8, 4, colour);
}

// All colours of a coarse cube.
Bitmap ColourCube() {
    Bitmap cube(18 * 18, 18);
    std::uint8_t* p = cube.MutablePixels();
    for (int i = 0; i < 18 * 18 * 18; ++i, p += 4) {
        p[0] = static_cast<std::uint8_t>(i % 18 * 15);
        p[1] = static_cast<std::uint8_t>(i / 18 % 18 * 15);
        p[2] = static_cast<std::uint8_t>(i / 324 * 15);
        p[3] = 255;
    }
    return cube;
}

double TurnBetween(double a, double b) {
    const double d = std::fmod(std::abs(a - b), 360.0);
    return std::min(d, 360.0 - d);
}

class PointOperation : public testing::TestWithParam<Operation> {};
class SceneOperation : public testing::TestWithParam<Operation> {};

const auto Name = [](const auto& entry) { return std::string(entry.param.name); };

}  // namespace

TEST_P(PointOperation, KeepsARampARampWithoutBanding) {
    const Bitmap ramp = After(GetParam(), TestPictures::Ramp(256, 2));
    int largest = 0;
    for (int c = 0; c < 3; ++c)
        for (int x = 1; x < 256; ++x) {
            const int step = ramp.Row(0)[4 * x + c] - ramp.Row(0)[4 * x - 4 + c];
            ASSERT_GE(step, 0) << "channel " << c << " at " << x;
            largest = std::max(largest, step);
        }
    EXPECT_LE(largest, 4);
}

TEST_P(PointOperation, TreatsEveryPixelByItself) {
    const Bitmap cube = ColourCube(), whole = After(GetParam(), cube);
    for (int x = 0; x < cube.Width(); x += 7) {
        const Bitmap one = After(GetParam(), PC_Dsp::Clone(cube, x, 5, 1, 1));
        EXPECT_EQ(TestPictures::PixelAt(one, 0, 0), TestPictures::PixelAt(whole, x, 5));
    }
}

INSTANTIATE_TEST_SUITE_P(PcDsp, PointOperation, testing::ValuesIn(PointOperations()), Name);

struct Slider {
    const char* name;
    PointOp::Kind kind;
    int field;          // 0 to 2: a, b or c moves
    float first, last;  // range of the slider in the operation's unit
    float step;         // one slider step
    int mostPixel;      // levels by which one step may move any colour
};

std::ostream& operator<<(std::ostream& out, const Slider& slider) {
    return out << slider.name;
}

class EverySlider : public testing::TestWithParam<Slider> {};

// The amount of hue is that of pure light yellow and cyan; Hue.StepsAreSmallForOrdinaryColours has the rest.
TEST_P(EverySlider, OneStepMovesNoPixelByMoreThanStated) {
    const Slider& slider = GetParam();
    const Bitmap cube = ColourCube();
    const auto at = [&](float value) {
        PointOp op{slider.kind, 0, slider.kind == PointOp::Kind::Saturateconst ? 1.0f : 0.0f, 0};
        (slider.field == 0 ? op.a : slider.field == 1 ? op.b : op.c) = value;
        return WithOp(op, cube);
    };
    Bitmap before = at(slider.first);
    int largest = 0;
    for (float value = slider.first + slider.step; value <= slider.last + 1e-3f; value += slider.step) {
        Bitmap now = at(value);
        largest = std::max(largest, TestPictures::LargestDifference(before, now));
        before = std::move(now);
    }
    EXPECT_LE(largest, slider.mostPixel);
    EXPECT_GE(largest, 1);
}

INSTANTIATE_TEST_SUITE_P(PcDsp, EverySlider,
                         testing::Values(Slider{"Brightness", PointOp::Kind::LightNew, 0, -10, 10, 1, 9},
                                         Slider{"Contrast", PointOp::Kind::Light, 0, -100, 100, 1, 2},
                                         Slider{"Saturation", PointOp::Kind::Saturateconst, 0, -100, 100, 1, 8},
                                         Slider{"Exposure", PointOp::Kind::ExposureFilter, 0, -7, 10, 0.085f, 3},
                                         Slider{"Hue", PointOp::Kind::SetHue, 0, -180, 180, 1, 96},
                                         Slider{"Red", PointOp::Kind::SetColor, 0, -100, 100, 1, 1},
                                         Slider{"Green", PointOp::Kind::SetColor, 1, -100, 100, 1, 1},
                                         Slider{"Blue", PointOp::Kind::SetColor, 2, -100, 100, 1, 1}),
                         Name);

TEST(Fused, EqualsTheCallsInARowUpToTheirRounding) {
    const PointOp ops[] = {
        {PointOp::Kind::LightNew, 3}, {PointOp::Kind::Light, 30}, {PointOp::Kind::ExposureFilter, 2.5f}};
    Bitmap fused = TestPictures::Face(200, 150), single = fused;
    ASSERT_NE(PC_Dsp::ApplyPointOps(fused.MutablePixels(), 200, 150, ops, 3, nullptr, 0, 100), 0);
    for (const PointOp& op : ops) single = WithOp(op, single);
    EXPECT_LE(TestPictures::LargestDifference(fused, single), 3);
    EXPECT_LT(MeanDeltaE(fused, single), 0.5);
}

TEST(Brightness, KeepsBlackAndWhite) {
    for (const float step : {-10.0f, -3.0f, 5.0f, 10.0f}) {
        const Bitmap ramp = WithOp({PointOp::Kind::LightNew, step}, TestPictures::Ramp(256, 1));
        EXPECT_EQ(TestPictures::PixelAt(ramp, 0, 0), 0xFF000000u);
        EXPECT_EQ(TestPictures::PixelAt(ramp, 255, 0), 0xFFFFFFFFu);
    }
    EXPECT_EQ(WithOp({PointOp::Kind::LightNew, 10}, Patch(0xFF808080)).Pixels()[0], 185);
}

TEST(Contrast, ClipsNothing) {
    const Bitmap strong = WithOp({PointOp::Kind::Light, 100}, TestPictures::Ramp(256, 1));
    int black = 0, white = 0;
    for (int x = 0; x < 256; ++x) {
        black += strong.Row(0)[4 * x] == 0;
        white += strong.Row(0)[4 * x] == 255;
    }
    // A slope of 0.28 gives two levels the end's value by rounding.
    EXPECT_LE(black, 2);
    EXPECT_LE(white, 2);
    EXPECT_EQ(WithOp({PointOp::Kind::Light, -100}, Patch(0xFFFFFFFF)).Pixels()[0], 179);
    EXPECT_NEAR(WithOp({PointOp::Kind::Light, 100}, Patch(0xFF808080)).Pixels()[0], 128, 1);
}

TEST(Saturation, GoesToGreyOfTheSameLuminance) {
    const Bitmap cube = ColourCube(), grey = WithOp({PointOp::Kind::Saturateconst, -100, 1}, cube);
    for (std::size_t i = 0; i < cube.ByteCount(); i += 4) {
        const std::uint8_t* g = grey.Pixels() + i;
        ASSERT_TRUE(g[0] == g[1] && g[1] == g[2]);
        const std::uint8_t* c = cube.Pixels() + i;
        ASSERT_NEAR(LabOf(g[2], g[1], g[0]).l, LabOf(c[2], c[1], c[0]).l, 4.5);
    }
}

TEST(Saturation, RaisesColourWithoutClippingIt) {
    const Bitmap cube = ColourCube(), strong = WithOp({PointOp::Kind::Saturateconst, 100, 0}, cube);
    for (std::size_t i = 0; i < cube.ByteCount(); ++i) {
        if (cube.Pixels()[i] < 255) {
            ASSERT_LT(strong.Pixels()[i], 255);
        }
    }
    EXPECT_GT(ChromaOf(LabAt(WithOp({PointOp::Kind::Saturateconst, 100, 1}, Patch(0xFF5070A0)), 0, 0)),
              1.4 * ChromaOf(LabOf(0x50, 0x70, 0xA0)));
}

TEST(Exposure, IsALightOfTwoPerStopInTheShadowsAndRollsOff) {
    // One stop is 4.25; a dark grey of linear 0.0152 doubles.
    const Bitmap dark = WithOp({PointOp::Kind::ExposureFilter, 1.5f + 4.25f}, Patch(0xFF222222));
    EXPECT_NEAR(dark.Pixels()[0], 50, 1);
    const Bitmap ramp = WithOp({PointOp::Kind::ExposureFilter, 10.0f}, TestPictures::Ramp(256, 1));
    EXPECT_EQ(ramp.Row(0)[4 * 255], 255);
    EXPECT_LT(ramp.Row(0)[4 * 235], 255);
    EXPECT_NEAR(WithOp({PointOp::Kind::ExposureFilter, 1.5f - 4.25f}, Patch(0xFFFFFFFF)).Pixels()[0], 188, 1);
}

TEST(Hue, KeepsLuminanceAndGreys) {
    const Bitmap ramp = TestPictures::Ramp(256, 1);
    for (int degrees = -170; degrees <= 180; degrees += 35) {
        const PointOp op{PointOp::Kind::SetHue, static_cast<float>(degrees)};
        EXPECT_LE(TestPictures::LargestDifference(WithOp(op, ramp), ramp), 1);
        for (const std::uint32_t tone : Tones)
            EXPECT_NEAR(LabAt(WithOp(op, Patch(tone)), 0, 0).l, LabAt(Patch(tone), 0, 0).l, 2.5) << degrees;
    }
}

TEST(Hue, StepsAreSmallForOrdinaryColours) {
    Bitmap cube = ColourCube();
    std::uint8_t* p = cube.MutablePixels();
    for (std::size_t i = 0; i < cube.ByteCount(); ++i)
        if (i % 4 != 3) p[i] = static_cast<std::uint8_t>(60 + p[i] * 135 / 255);
    Bitmap before = WithOp({PointOp::Kind::SetHue, -180}, cube);
    for (int degrees = -179; degrees <= 180; ++degrees) {
        Bitmap now = WithOp({PointOp::Kind::SetHue, static_cast<float>(degrees)}, cube);
        ASSERT_LE(TestPictures::LargestDifference(before, now), 9) << degrees;
        before = std::move(now);
    }
}

TEST(Hue, OfAThirdOfATurnMovesRedToGreen) {
    const std::uint32_t c = TestPictures::PixelAt(WithOp({PointOp::Kind::SetHue, 120}, Patch(0xFFB04040)), 0, 0);
    EXPECT_GT(c >> 8 & 255, (c >> 16 & 255) + 40);
    EXPECT_GT(c >> 8 & 255, (c & 255) + 40);
}

TEST(ColourBalance, KeepsBlackWhiteAndTheLumaOfGreys) {
    const Bitmap ramp = WithOp({PointOp::Kind::SetColor, 100, 0, -50}, TestPictures::Ramp(256, 1));
    EXPECT_EQ(TestPictures::PixelAt(ramp, 0, 0), 0xFF000000u);
    EXPECT_EQ(TestPictures::PixelAt(ramp, 255, 0), 0xFFFFFFFFu);
    for (int x = 0; x < 256; ++x) {
        const std::uint8_t* p = ramp.Row(0) + 4 * x;
        EXPECT_NEAR(0.2126 * p[2] + 0.7152 * p[1] + 0.0722 * p[0], x, 1.0);
    }
    EXPECT_GE(ramp.Row(0)[4 * 128 + 2], 128 + 20);
}

TEST(Skin, StaysUnclippedAndItsHueUnderEveryToneAndSaturationSlider) {
    const PointOp ops[] = {
        {PointOp::Kind::LightNew, 4},          {PointOp::Kind::LightNew, -6},      {PointOp::Kind::Light, 60},
        {PointOp::Kind::Saturateconst, 60, 1}, {PointOp::Kind::ExposureFilter, 4}, {PointOp::Kind::ExposureFilter, -2},
        {PointOp::Kind::Saturateconst, 100, 1}};
    for (const std::uint32_t tone : Tones)
        for (const PointOp& op : ops) {
            const Bitmap patch = WithOp(op, Patch(tone));
            for (int c = 0; c < 3; ++c) {
                EXPECT_LT(patch.Pixels()[c], 255) << std::hex << tone;
                EXPECT_GT(patch.Pixels()[c], 0) << std::hex << tone;
            }
            EXPECT_LT(TurnBetween(HueOf(LabAt(patch, 0, 0)), HueOf(LabAt(Patch(tone), 0, 0))), 8.0)
                << std::hex << tone << " op " << static_cast<int>(op.kind);
        }
}

TEST(Skin, GainsLessColourThanTheRestSoThatItDoesNotTurnOrange) {
    for (const std::uint32_t tone : Tones) {
        const double before = ChromaOf(LabAt(Patch(tone), 0, 0));
        const double guarded = ChromaOf(LabAt(WithOp({PointOp::Kind::Saturateconst, 100, 1}, Patch(tone)), 0, 0));
        const double plain = ChromaOf(LabAt(WithOp({PointOp::Kind::Saturateconst, 100, 0}, Patch(tone)), 0, 0));
        EXPECT_LT(guarded, 1.4 * before) << std::hex << tone;
        EXPECT_LT(guarded - before, 0.6 * (plain - before)) << std::hex << tone;
    }
}

TEST_P(SceneOperation, LeavesSkinUnclippedAndNearItsHue) {
    for (const std::uint32_t tone : Tones) {
        const Bitmap source = TestPictures::Face(300, 400, tone), result = After(GetParam(), source);
        int clipped = 0;
        for (int y = 220; y < 250; ++y)
            for (int x = 120; x < 180; ++x)
                for (int c = 0; c < 3; ++c)
                    clipped += source.Row(y)[4 * x + c] < 250 && result.Row(y)[4 * x + c] == 255;
        EXPECT_EQ(clipped, 0) << std::hex << tone;
        const Bitmap before = PC_Dsp::Resample(PC_Dsp::Clone(source, 120, 220, 60, 30), 1, 1);
        const Bitmap after = PC_Dsp::Resample(PC_Dsp::Clone(result, 120, 220, 60, 30), 1, 1);
        EXPECT_LT(TurnBetween(HueOf(LabAt(before, 0, 0)), HueOf(LabAt(after, 0, 0))), 12.0) << std::hex << tone;
    }
}

INSTANTIATE_TEST_SUITE_P(PcDsp, SceneOperation, testing::ValuesIn(SceneOperations()), Name);

TEST(Portrait, SmoothsFineGrainOfSkinAndKeepsTheEyes) {
    const Bitmap source = TestPictures::Face(600, 800);
    const Operation portrait = SceneOperations()[1];
    const Bitmap result = After(portrait, source);
    const auto grain = [](const Bitmap& bitmap) {
        double sum = 0.0;
        for (int y = 440; y < 500; ++y)
            for (int x = 280; x < 320; ++x) sum += std::abs(bitmap.Row(y)[4 * x + 1] - bitmap.Row(y)[4 * x + 5]);
        return sum;
    };
    EXPECT_LT(grain(result), 0.8 * grain(source));
    const auto span = [](const Bitmap& bitmap) { return bitmap.Row(352)[4 * 252 + 1] - bitmap.Row(352)[4 * 228 + 1]; };
    EXPECT_GT(span(result), 0.9 * span(source));
}

class ScaleConsistent : public testing::TestWithParam<Operation> {};

TEST_P(ScaleConsistent, ReducingBeforeOrAfterLooksTheSame) {
    const Bitmap source = TestPictures::Face(1200, 1600);
    const Bitmap after = PC_Dsp::Resample(After(GetParam(), source), 400, 533);
    const Bitmap before = After(GetParam(), PC_Dsp::Resample(source, 400, 533));
    EXPECT_LT(MeanDeltaE(before, after), 2.0);
}

std::vector<Operation> ScaledOperations() {
    std::vector<Operation> all = PointOperations();
    for (const Operation& scene : SceneOperations()) all.push_back(scene);
    return all;
}

INSTANTIATE_TEST_SUITE_P(PcDsp, ScaleConsistent, testing::ValuesIn(ScaledOperations()), Name);

// Pairs of the table in Sharma, Wu and Dalal 2005.
TEST(DeltaE, AgreesWithPublishedPairs) {
    EXPECT_NEAR(DeltaE2000({50, 2.6772, -79.7751}, {50, 0, -82.7485}), 2.0425, 1e-4);
    EXPECT_NEAR(DeltaE2000({50, -1.3802, -84.2814}, {50, 0, -82.7485}), 1.0000, 1e-4);
    EXPECT_NEAR(DeltaE2000({50, 2.5, 0}, {73, 25, -18}), 27.1492, 1e-4);
}
