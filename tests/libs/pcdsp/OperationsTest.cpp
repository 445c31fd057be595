// SPDX-License-Identifier: GPL-3.0-or-later
// What every operation of the library owes its callers, walked over one table.
#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "Kernels.h"
#include "Operations.h"
#include "Parallel.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

namespace {

const std::pair<int, int> Sizes[] = {{1, 1}, {1, 31}, {31, 1}, {2, 2}, {7, 13}, {127, 61}, {211, 199}};
constexpr eScenarioType NoScene = static_cast<eScenarioType>(9);

class EveryOperation : public testing::TestWithParam<Operation> {
  protected:
    void TearDown() override {
        SetWorkerCount(0);
        SelectKernelSet(-1);
    }
    int Run(Bitmap& bitmap, CObjProgress* sink = nullptr, int start = 0, int end = 100) const {
        return GetParam().run(bitmap.MutablePixels(), bitmap.Width(), bitmap.Height(), sink, start, end);
    }
};

}  // namespace

TEST_P(EveryOperation, ChangesThePictureAndLeavesAlpha) {
    for (const auto& [width, height] : Sizes) {
        const Bitmap source = TestPictures::Noise(width, height, 5, false);
        Bitmap result = source;
        ASSERT_NE(Run(result), 0);
        for (std::size_t i = 3; i < source.ByteCount(); i += 4) ASSERT_EQ(result.Pixels()[i], source.Pixels()[i]);
        if (width * height > 100) {
            EXPECT_GT(TestPictures::LargestDifference(source, result), 0);
        }
    }
}

TEST_P(EveryOperation, GivesTheSameBytesForAnyNumberOfThreads) {
    for (const auto& [width, height] :
         {std::pair(1, 31), std::pair(31, 1), std::pair(211, 397), std::pair(1031, 263)}) {
        const Bitmap source = TestPictures::Noise(width, height, 3);
        SetWorkerCount(1);
        Bitmap alone = source;
        ASSERT_NE(Run(alone), 0);
        for (const int threads : {2, 3, 16}) {
            SetWorkerCount(threads);
            Bitmap together = source;
            ASSERT_NE(Run(together), 0);
            EXPECT_TRUE(alone == together) << threads << " threads, " << width << " x " << height;
        }
    }
}

TEST_P(EveryOperation, GivesTheSameBytesAgain) {
    const Bitmap source = TestPictures::Face(173, 211);
    Bitmap first = source, second = source;
    Run(first);
    Run(second);
    EXPECT_TRUE(first == second);
}

TEST_P(EveryOperation, DiffersByAtMostOneLevelBetweenInstructionSets) {
    for (const Bitmap& source : {TestPictures::Noise(211, 97, 11), TestPictures::Face(230, 301)}) {
        SelectKernelSet(0);
        Bitmap plain = source;
        Run(plain);
        for (int set = 1; set < KernelSetCount(); ++set) {
            SelectKernelSet(set);
            Bitmap wide = source;
            Run(wide);
            EXPECT_LE(TestPictures::LargestDifference(plain, wide), 1) << KernelSet(set).name;
        }
    }
}

TEST_P(EveryOperation, ReportsForwardToItsEnd) {
    Bitmap picture = TestPictures::Face(301, 403);
    WatchfulSink sink;
    sink.SetValue(34);
    ASSERT_NE(Run(picture, &sink, 34, 85), 0);
    EXPECT_FALSE(sink.ranBackwards);
    EXPECT_FLOAT_EQ(sink.GetValue(), 85.0f);
}

TEST_P(EveryOperation, ASinkDoesNotChangeTheResult) {
    Bitmap without = TestPictures::Noise(229, 601, 4), with = without;
    WatchfulSink sink;
    Run(without);
    Run(with, &sink);
    EXPECT_TRUE(without == with);
}

TEST_P(EveryOperation, CancelledInTheMiddleEveryRowIsEitherDoneOrAsItWas) {
    const Bitmap source = TestPictures::Noise(331, 1200, 8);
    Bitmap done = source;
    Run(done);
    bool partly = false;
    for (const int allowed : {0, 1, 2, 3, 4, 6}) {
        Bitmap picture = source;
        WatchfulSink sink(allowed);
        if (Run(picture, &sink) != 0) continue;
        EXPECT_LT(sink.GetValue(), 100.0f);
        int finished = 0;
        for (int y = 0; y < source.Height(); ++y) {
            const bool isDone = std::equal(picture.Row(y), picture.Row(y) + picture.Stride(), done.Row(y));
            const bool isSource = std::equal(picture.Row(y), picture.Row(y) + picture.Stride(), source.Row(y));
            ASSERT_TRUE(isDone || isSource) << "row " << y << " after " << allowed;
            finished += isDone;
        }
        if (allowed == 0) {
            EXPECT_TRUE(picture == source);
        }
        partly = partly || (finished > 0 && finished < source.Height());
    }
    EXPECT_TRUE(partly) << "no cancel came in the middle";
}

TEST_P(EveryOperation, RefusesNoPixelsAndBadSizes) {
    Bitmap picture = TestPictures::Noise(8, 8, 1);
    const Bitmap before = picture.Clone();
    const Operation& operation = GetParam();
    EXPECT_EQ(operation.run(nullptr, 8, 8, nullptr, 0, 100), 0);
    for (const auto& [width, height] : {std::pair(0, 8), std::pair(8, 0), std::pair(-1, 8), std::pair(8, INT_MIN),
                                        std::pair(INT_MAX, INT_MAX), std::pair(INT_MAX, 1)})
        EXPECT_EQ(operation.run(picture.MutablePixels(), width, height, nullptr, 0, 100), 0);
    EXPECT_TRUE(picture == before);
}

INSTANTIATE_TEST_SUITE_P(PcDsp, EveryOperation, testing::ValuesIn(AllOperations()),
                         [](const auto& entry) { return std::string(entry.param.name); });

TEST(NeutralValues, GiveTheSameBytes) {
    const Bitmap source = TestPictures::Noise(131, 67, 21, false);
    for (const Operation& operation : NeutralOperations()) {
        Bitmap picture = source;
        WatchfulSink sink;
        EXPECT_NE(operation.run(picture.MutablePixels(), 131, 67, &sink, 5, 60), 0) << operation.name;
        EXPECT_TRUE(picture == source) << operation.name;
        EXPECT_FLOAT_EQ(sink.GetValue(), 60.0f) << operation.name;
    }
}

TEST(BadNumbers, AreRefusedAndTouchNothing) {
    const float none = std::numeric_limits<float>::quiet_NaN(), endless = std::numeric_limits<float>::infinity();
    Bitmap picture = TestPictures::Noise(16, 16, 2);
    const Bitmap source = picture.Clone();
    unsigned char* p = picture.MutablePixels();
    EXPECT_EQ(PC_Dsp::ExposureFilter(p, 16, 16, none, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::ExposureFilter(p, 16, 16, endless, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::UsmSharp(p, 16, 16, 1.1f, none, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::UsmSharp(p, 16, 16, none, 1.0f, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::UsmSharp(p, 16, 16, 0.0f, 1.0f, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::LightNew(p, 16, 16, 2, 1, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::ScenarioBeauty(p, 16, 16, 64, NoScene, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::ScenarioBeauty(p, 16, 16, 63, ScenarioFood, nullptr, 0, 100), 0);
    const PointOp ops[] = {{PointOp::Kind::LightNew, 3}, {PointOp::Kind::SetHue, none}};
    EXPECT_EQ(PC_Dsp::ApplyPointOps(p, 16, 16, ops, 2, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::ApplyPointOps(p, 16, 16, nullptr, 2, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::ApplyPointOps(p, 16, 16, ops, -1, nullptr, 0, 100), 0);
    EXPECT_TRUE(picture == source);
}

// A number beyond its range acts as the end of the range.
TEST(ExtremeNumbers, AreHeldAtTheEndOfTheirRange) {
    const Bitmap source = TestPictures::Noise(64, 33, 6);
    const auto after = [&](auto call) {
        Bitmap picture = source;
        EXPECT_NE(call(picture.MutablePixels()), 0);
        return picture;
    };
    for (const int sign : {-1, 1}) {
        const long huge = sign > 0 ? LONG_MAX : LONG_MIN;
        const int large = sign > 0 ? INT_MAX : INT_MIN;
        EXPECT_TRUE(after([&](auto* p) { return PC_Dsp::LightNew(p, 64, 33, huge, 3, nullptr, 0, 100); }) ==
                    after([&](auto* p) { return PC_Dsp::LightNew(p, 64, 33, 10 * sign, 3, nullptr, 0, 100); }));
        EXPECT_TRUE(after([&](auto* p) { return PC_Dsp::Light(p, 64, 33, 0, huge, nullptr, 0, 100); }) ==
                    after([&](auto* p) { return PC_Dsp::Light(p, 64, 33, 0, 100 * sign, nullptr, 0, 100); }));
        EXPECT_TRUE(after([&](auto* p) { return PC_Dsp::Saturateconst(p, 64, 33, huge, 1, nullptr, 0, 100); }) ==
                    after([&](auto* p) { return PC_Dsp::Saturateconst(p, 64, 33, 100 * sign, 1, nullptr, 0, 100); }));
        EXPECT_TRUE(after([&](auto* p) { return PC_Dsp::SetColor(p, 64, 33, large, 0, 0, nullptr, 0, 100); }) ==
                    after([&](auto* p) { return PC_Dsp::SetColor(p, 64, 33, 100 * sign, 0, 0, nullptr, 0, 100); }));
        EXPECT_TRUE(after([&](auto* p) { return PC_Dsp::SetHue(p, 64, 33, large, nullptr, 0, 100); }) ==
                    after([&](auto* p) { return PC_Dsp::SetHue(p, 64, 33, large % 360, nullptr, 0, 100); }));
        EXPECT_TRUE(
            after([&](auto* p) { return PC_Dsp::ExposureFilter(p, 64, 33, sign * 3e38f, nullptr, 0, 100); }) ==
            after([&](auto* p) { return PC_Dsp::ExposureFilter(p, 64, 33, 1.5f + sign * 17, nullptr, 0, 100); }));
        EXPECT_TRUE(after([&](auto* p) { return PC_Dsp::UsmSharp(p, 64, 33, 1.1f, sign * 3e38f, nullptr, 0, 100); }) ==
                    after([&](auto* p) {
                        return PC_Dsp::UsmSharp(p, 64, 33, 1.1f, sign > 0 ? 20.0f : -1.0f, nullptr, 0, 100);
                    }));
    }
}

TEST(SharpenAndApply, LeavesTheBytesOfBothCalls) {
    const PointOp ops[] = {{PointOp::Kind::LightNew, 2}, {PointOp::Kind::Light, 20}, {PointOp::Kind::SetHue, 15}};
    for (const auto& [width, height] : {std::pair{1, 1}, {31, 2}, {5, 97}, {67, 301}})
        for (const float amount : {0.0f, 1.2f, -0.6f})
            for (const int count : {0, 3})
                for (int set = 0; set < KernelSetCount(); ++set) {
                    SCOPED_TRACE(testing::Message() << width << " x " << height << ", " << amount << ", " << count);
                    SelectKernelSet(set);
                    const Bitmap source = TestPictures::Noise(width, height, 3, false), kept = source.Clone();
                    Bitmap expected = source, target(width, height);
                    std::uint8_t* pixels = expected.MutablePixels();
                    PC_Dsp::UsmSharp(pixels, width, height, 1.1f, amount, nullptr, 0, 100);
                    PC_Dsp::ApplyPointOps(pixels, width, height, ops, count, nullptr, 0, 100);
                    for (const int threads : {1, 3}) {
                        SetWorkerCount(threads);
                        target.Fill(0);
                        EXPECT_NE(PC_Dsp::SharpenAndApply(source.Pixels(), target.MutablePixels(), width, height, 1.1f,
                                                          amount, ops, count, nullptr, 0, 100),
                                  0);
                        EXPECT_TRUE(target == expected);
                        EXPECT_TRUE(source == kept);
                    }
                }
    SelectKernelSet(-1);
    SetWorkerCount(0);
}

TEST(SharpenAndApply, RefusesWhatOneOfTheCallsRefuses) {
    const Bitmap source = TestPictures::Face(9, 9);
    Bitmap target(9, 9);
    std::uint8_t* to = target.MutablePixels();
    const PointOp good{PointOp::Kind::Light, 20}, bad{PointOp::Kind::Light, std::numeric_limits<float>::quiet_NaN()};
    const auto run = [&](const std::uint8_t* from, float radius, const PointOp* ops, int count) {
        return PC_Dsp::SharpenAndApply(from, to, 9, 9, radius, 1.0f, ops, count, nullptr, 0, 100);
    };
    EXPECT_EQ(run(nullptr, 1.0f, &good, 1), 0);
    EXPECT_EQ(run(source.Pixels(), 0.0f, &good, 1), 0);
    EXPECT_EQ(run(source.Pixels(), 1.0f, &bad, 1), 0);
    EXPECT_EQ(run(source.Pixels(), 1.0f, nullptr, 1), 0);
    EXPECT_EQ(run(source.Pixels(), 1.0f, &good, -1), 0);
    EXPECT_TRUE(target == Bitmap(9, 9));
    EXPECT_NE(run(source.Pixels(), 1.0f, &good, 1), 0);
}
