// SPDX-License-Identifier: GPL-3.0-or-later
// Tone curves against their plain twin, with every instruction set, and the cubics that stand for them with some.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "CurvePieces.h"
#include "PC_Dsp.h"
#include "PlainTone.h"
#include "PointCurves.h"
#include "TestPictures.h"

namespace {

struct Tone {
    const char* name;
    PointOp op;
    double (*curve)(double, double);
    double amount;
};

std::ostream& operator<<(std::ostream& out, const Tone& tone) {
    return out << tone.name;
}

std::vector<Tone> Tones() {
    std::vector<Tone> tones;
    for (const float step : {-10.0f, -4.0f, 1.0f, 3.0f, 10.0f})
        tones.push_back({"Brightness", {PointOp::Kind::LightNew, step}, PointCurves::Brightness, step});
    for (const float contrast : {-100.0f, -20.0f, 1.0f, 20.0f, 60.0f, 100.0f})
        tones.push_back({"Contrast", {PointOp::Kind::Light, contrast}, PointCurves::Contrast, contrast});
    for (const float value : {-15.5f, -7.0f, -2.0f, 1.4f, 1.6f, 3.2f, 5.75f, 10.0f, 14.25f, 18.5f})
        tones.push_back(
            {"Exposure", {PointOp::Kind::ExposureFilter, value}, PointCurves::Exposure, PointCurves::StopsOf(value)});
    return tones;
}

LevelCurve LevelsOf(const Tone& tone) {
    LevelCurve levels;
    for (int i = 0; i < 256; ++i) levels[i] = static_cast<float>(255.0 * tone.curve(i / 255.0, tone.amount));
    return levels;
}

// Every pair of a smallest and a largest channel, with one between them.
Bitmap EveryPairOfEnds() {
    Bitmap picture(256, 256);
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x) {
            std::uint8_t* p = picture.MutablePixels() + (std::ptrdiff_t{y} * 256 + x) * 4;
            p[y % 3] = static_cast<std::uint8_t>(x);
            p[(y + 1) % 3] = static_cast<std::uint8_t>(y);
            p[(y + 2) % 3] = static_cast<std::uint8_t>((x + 2 * y) / 3);
            p[3] = 255;
        }
    return picture;
}

float At(const CurvePieces& pieces, float level) {
    const auto bits = std::bit_cast<std::uint32_t>(std::fma(pieces.scale, level, 1.0f));
    const auto piece = bits >> pieces.shift & 7;
    float value = 0.0f;
    for (int power = 3; power >= 0; --power) value = std::fma(value, level, pieces.terms[power][piece]);
    return value;
}

class EveryTone : public testing::TestWithParam<Tone> {
  protected:
    void TearDown() override { SelectKernelSet(-1); }
};

}  // namespace

// Half a level of rounding, and the tenth that the cubics may be off, which the luma's share of the excess can raise.
TEST_P(EveryTone, IsNearItsPlainTwinWithEveryInstructionSet) {
    const Tone& tone = GetParam();
    const Bitmap source = EveryPairOfEnds();
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        Bitmap result = source;
        ASSERT_NE(PC_Dsp::ApplyPointOps(result.MutablePixels(), 256, 256, &tone.op, 1, nullptr, 0, 100), 0);
        double largest = 0.0;
        for (std::size_t i = 0; i < source.ByteCount(); i += 4) {
            const std::uint8_t *in = source.Pixels() + i, *out = result.Pixels() + i;
            const PlainPixel plain = PlainTone({double(in[2]), double(in[1]), double(in[0])},
                                               [&](double x) { return tone.curve(x, tone.amount); });
            for (int c = 0; c < 3; ++c)
                largest = std::max(largest, std::abs(std::clamp(plain[c], 0.0, 255.0) - out[2 - c]));
        }
        EXPECT_LT(largest, 0.75) << KernelSet(set).name;
    }
}

TEST_P(EveryTone, KeepsTheOrderOfGreysBlackAndWhiteWithEveryInstructionSet) {
    const LevelCurve levels = LevelsOf(GetParam());
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        Bitmap ramp = TestPictures::Ramp(256, 1);
        PC_Dsp::ApplyPointOps(ramp.MutablePixels(), 256, 1, &GetParam().op, 1, nullptr, 0, 100);
        for (int x = 1; x < 256; ++x) ASSERT_GE(ramp.Row(0)[4 * x], ramp.Row(0)[4 * x - 4]) << KernelSet(set).name;
        EXPECT_EQ(ramp.Row(0)[0], std::lround(levels[0])) << KernelSet(set).name;
        EXPECT_EQ(ramp.Row(0)[4 * 255], std::lround(levels[255])) << KernelSet(set).name;
    }
}

TEST_P(EveryTone, CubicsThatCallThemselvesGoodAreWithinATenthOfALevel) {
    const PointCurve curve = PackCurve(LevelsOf(GetParam()));
    const CurvePieces whole = FitPieces(curve, CurveReading::WholeLevels);
    const CurvePieces between = FitPieces(curve, CurveReading::BetweenLevels);
    for (int i = 0; i < 255; ++i) {
        if (whole.good) {
            ASSERT_NEAR(At(whole, float(i)), curve.value[i] / 256.0, 0.1) << i;
        }
        for (const float part : {0.0f, 0.25f, 0.5f, 0.75f})
            if (between.good) {
                ASSERT_NEAR(At(between, float(i) + part), (curve.value[i] + part * curve.rise[i]) / 256.0, 0.1) << i;
            }
    }
    if (whole.good) {
        EXPECT_NEAR(At(whole, 255.0f), curve.value[255] / 256.0, 0.005);
        EXPECT_NEAR(At(whole, 0.0f), curve.value[0] / 256.0, 0.005);
    }
}

INSTANTIATE_TEST_SUITE_P(PcDsp, EveryTone, testing::ValuesIn(Tones()),
                         [](const auto& entry) { return std::string(entry.param.name) + std::to_string(entry.index); });

// What a slider can ask for is read from cubics: tables would be the slow way.
TEST(CurvePieces, AreGoodForEveryCurveOfTheSliders) {
    for (int value = -100; value <= 100; ++value) {
        const Tone tones[] = {{"", {}, PointCurves::Brightness, value / 10.0},
                              {"", {}, PointCurves::Contrast, double(value)},
                              {"", {}, PointCurves::Exposure, PointCurves::StopsOf(1.5 + 0.085 * value)}};
        for (const Tone& tone : tones)
            EXPECT_TRUE(FitPieces(PackCurve(LevelsOf(tone)), CurveReading::WholeLevels).good)
                << value << " of curve " << &tone - tones;
    }
}

TEST(CurvePieces, AreNotGoodForACurveWithAStep) {
    LevelCurve step;
    for (int i = 0; i < 256; ++i) step[i] = i < 117 ? 0.1f * float(i) : 200.0f;
    EXPECT_FALSE(FitPieces(PackCurve(step), CurveReading::WholeLevels).good);
    EXPECT_FALSE(FitPieces(PackCurve(step), CurveReading::BetweenLevels).good);
}

TEST(InstructionSets, HaveTheNamesOfTheirKernels) {
    for (int set = 0; set < 3; ++set) EXPECT_EQ(KernelSetName(set), KernelSet(set).name);
}
