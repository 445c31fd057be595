// SPDX-License-Identifier: GPL-3.0-or-later
// What the repairs of marked places owe their callers, whatever the marks.
#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "Marks.h"
#include "Parallel.h"
#include "PC_Dsp.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

namespace {

constexpr PixelRect Everything{INT_MIN, INT_MIN, INT_MAX, INT_MAX};

// A repair that reads a mask, on a rectangle of it.
struct MaskRepair {
    const char* name;
    int (*inPart)(Bitmap& picture, const Bitmap& mask, const PixelRect& part, CObjProgress* sink);
    int (*inAll)(Bitmap& picture, const Bitmap& mask);
};

const MaskRepair MaskRepairs[] = {
    {"Spots",
     [](Bitmap& p, const Bitmap& m, const PixelRect& part, CObjProgress* sink) {
         return PC_Dsp::ImageProcessWithInpaint(p.MutablePixels(), p.Width(), p.Height(), m.Pixels(), SpotColour, part,
                                                sink, 10, 90);
     },
     [](Bitmap& p, const Bitmap& m) {
         return PC_Dsp::ImageProcessWithInpaint(p.MutablePixels(), p.Width(), p.Height(), m.Pixels(), SpotColour,
                                                nullptr, 0, 100);
     }},
    {"DarkCircles",
     [](Bitmap& p, const Bitmap& m, const PixelRect& part, CObjProgress* sink) {
         return PC_Dsp::BlackEye(p.MutablePixels(), p.Width(), p.Height(), m.Pixels(), 12, 10, part, sink, 10, 90);
     },
     [](Bitmap& p, const Bitmap& m) {
         return PC_Dsp::BlackEye(p.MutablePixels(), p.Width(), p.Height(), m.Pixels(), 12, 10, nullptr, 0, 100);
     }},
};

class EveryMaskRepair : public testing::TestWithParam<MaskRepair> {
  protected:
    void TearDown() override { SetWorkerCount(0); }
    // How often the repair asks whether it may go on.
    int QuestionsOf(Bitmap picture, const Bitmap& mask) const {
        struct : CObjProgress {
            int CanContinue() override { return ++asked; }
            int asked = 0;
        } sink;
        EXPECT_NE(GetParam().inPart(picture, mask, Everything, &sink), 0);
        return sink.asked;
    }
    Bitmap Repaired(Bitmap picture, const Bitmap& mask, const PixelRect& part = Everything) const {
        EXPECT_NE(GetParam().inPart(picture, mask, part, nullptr), 0);
        return picture;
    }
};

// Discs, single pixels and bars at any place, partly outside.
Bitmap RandomMarks(int width, int height, std::mt19937& random) {
    Bitmap mask(width, height);
    const auto upTo = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const int count = 1 + upTo(4);
    for (int i = 0; i < count; ++i) {
        const int x = upTo(width + 20) - 10, y = upTo(height + 20) - 10;
        switch (upTo(4)) {
            case 0:
                MarkBox(mask, {x, y, x + 1, y + 1});
                break;
            case 1:
                MarkBox(mask, {x, y, x + 1 + upTo(width), y + 1 + upTo(5)});
                break;
            case 2:
                MarkBox(mask, {x, y, x + 1 + upTo(5), y + 1 + upTo(height)});
                break;
            default:
                MarkDisc(mask, x, y, 1 + upTo(14));
        }
    }
    return mask;
}

PixelRect RandomRect(int width, int height, std::mt19937& random) {
    const auto between = [&](int low, int high) {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low));
    };
    switch (random() % 5) {
        case 0:
            return {INT_MIN, INT_MIN, INT_MIN + 5, INT_MAX};
        case 1:
            return {INT_MAX - 1, 3, INT_MAX, INT_MAX};
        case 2:
            return {10, 10, 2, 2};
        default: {
            const int left = between(-width, 2 * width), top = between(-height, 2 * height);
            return {left, top, left + between(1, 2 * width + 2), top + between(1, 2 * height + 2)};
        }
    }
}

bool IsIn(const PixelRect& rect, int x, int y) {
    return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

}  // namespace

TEST_P(EveryMaskRepair, ChangesNothingButColoursOfMarkedPixelsInTheRectangle) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const int width = 1 + static_cast<int>(random() % 70), height = 1 + static_cast<int>(random() % 70);
        const Bitmap source = TestPictures::Noise(width, height, random() % 100, false);
        const Bitmap mask = RandomMarks(width, height, random);
        const PixelRect part = round % 3 ? RandomRect(width, height, random) : Everything;
        const Bitmap result = Repaired(source, mask, part);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const std::uint32_t was = TestPictures::PixelAt(source, x, y), is = TestPictures::PixelAt(result, x, y);
                if (TestPictures::PixelAt(mask, x, y) && IsIn(part, x, y))
                    ASSERT_EQ(was >> 24, is >> 24) << "alpha of " << x << ", " << y << " in round " << round;
                else
                    ASSERT_EQ(was, is) << x << ", " << y << " in round " << round;
            }
    }
}

TEST_P(EveryMaskRepair, AMarkOverEverythingLeavesThePicture) {
    for (const auto& [width, height] : {std::pair(1, 1), std::pair(1, 31), std::pair(31, 1), std::pair(57, 43)}) {
        const Bitmap source = TestPictures::Noise(width, height, 4);
        Bitmap mask(width, height);
        mask.Fill(static_cast<std::uint32_t>(SpotColour));
        EXPECT_TRUE(Repaired(source, mask) == source) << width << " x " << height;
    }
}

TEST_P(EveryMaskRepair, NoMarkLeavesThePicture) {
    const Bitmap source = TestPictures::Noise(40, 30, 4);
    EXPECT_TRUE(Repaired(source, Bitmap(40, 30)) == source);
}

TEST_P(EveryMaskRepair, GivesTheSameBytesAgainAndForAnyNumberOfThreads) {
    const Bitmap source = Skin(301, 257, 5);
    Bitmap mask(301, 257);
    MarkDisc(mask, 70, 60, 30);
    MarkBox(mask, {120, 150, 260, 190});
    SetWorkerCount(1);
    const Bitmap alone = Repaired(source, mask);
    EXPECT_FALSE(alone == source);
    for (const int threads : {1, 2, 3, 16}) {
        SetWorkerCount(threads);
        EXPECT_TRUE(Repaired(source, mask) == alone) << threads << " threads";
    }
}

TEST_P(EveryMaskRepair, ARectangleRoundAllMarksIsTheWholePicture) {
    const Bitmap source = Skin(160, 120, 6);
    Bitmap mask(160, 120), whole = source;
    MarkDisc(mask, 60, 40, 15);
    ASSERT_NE(GetParam().inAll(whole, mask), 0);
    EXPECT_TRUE(Repaired(source, mask, {45, 25, 76, 56}) == whole);
    EXPECT_TRUE(Repaired(source, mask) == whole);
}

TEST_P(EveryMaskRepair, CancelledEveryGroupIsEitherDoneOrAsItWas) {
    const Bitmap source = Skin(300, 80, 8);
    Bitmap mask(300, 80);
    for (int i = 0; i < 5; ++i) MarkDisc(mask, 30 + 60 * i, 40, 12);
    const Bitmap done = Repaired(source, mask);
    bool partly = false;
    const int asked = QuestionsOf(source, mask);
    for (int allowed = 0; allowed < asked; allowed += std::max(1, asked / 40)) {
        Bitmap picture = source;
        WatchfulSink sink(allowed);
        ASSERT_EQ(GetParam().inPart(picture, mask, Everything, &sink), 0);
        EXPECT_LT(sink.GetValue(), 90.0f);
        int changed = 0;
        for (int i = 0; i < 5; ++i) {
            bool isDone = true, isSource = true;
            for (int y = 0; y < 80; ++y)
                for (int x = 60 * i; x < 60 * i + 60; ++x) {
                    const std::uint32_t is = TestPictures::PixelAt(picture, x, y);
                    isDone = isDone && is == TestPictures::PixelAt(done, x, y);
                    isSource = isSource && is == TestPictures::PixelAt(source, x, y);
                }
            ASSERT_TRUE(isDone || isSource) << "group " << i << " after " << allowed;
            changed += isDone && !isSource;
        }
        partly = partly || (changed > 0 && changed < 5);
    }
    EXPECT_TRUE(partly) << "no cancel came in the middle";
}

TEST_P(EveryMaskRepair, AsksOftenDuringOneLargeMarkAndLeavesThePictureWhenStopped) {
    const Bitmap source = Skin(640, 480, 8);
    Bitmap mask(640, 480);
    MarkDisc(mask, 320, 240, 120);
    const int asked = QuestionsOf(source, mask);
    EXPECT_GE(asked, 10);
    for (const int allowed : {0, 1, asked / 4, asked / 2, asked - asked / 4, asked - 1}) {
        Bitmap picture = source;
        WatchfulSink sink(allowed);
        EXPECT_EQ(GetParam().inPart(picture, mask, Everything, &sink), 0) << allowed << " of " << asked;
        EXPECT_TRUE(picture == source) << allowed << " of " << asked;
        EXPECT_LT(sink.GetValue(), 90.0f);
    }
}

TEST_P(EveryMaskRepair, ReportsForwardToItsEnd) {
    Bitmap picture = Skin(120, 80, 8), mask(120, 80);
    MarkDisc(mask, 30, 40, 9);
    MarkDisc(mask, 80, 40, 9);
    WatchfulSink sink, idle;
    ASSERT_NE(GetParam().inPart(picture, mask, Everything, &sink), 0);
    EXPECT_FALSE(sink.ranBackwards);
    EXPECT_FLOAT_EQ(sink.GetValue(), 90.0f);
    // Outside the picture there is nothing to do, but the bar still fills.
    ASSERT_NE(GetParam().inPart(picture, mask, {500, 500, 600, 600}, &idle), 0);
    EXPECT_FLOAT_EQ(idle.GetValue(), 90.0f);
}

INSTANTIATE_TEST_SUITE_P(PcDsp, EveryMaskRepair, testing::ValuesIn(MaskRepairs),
                         [](const auto& entry) { return std::string(entry.param.name); });

TEST(Repairs, RefuseNoPixelsNoMaskAndBadSizes) {
    Bitmap picture = Skin(8, 8, 1), mask(8, 8);
    MarkBox(mask, {2, 2, 5, 5});
    const Bitmap before = picture.Clone();
    unsigned char* const pixels = picture.MutablePixels();
    EXPECT_EQ(PC_Dsp::ImageProcessWithInpaint(nullptr, 8, 8, mask.Pixels(), SpotColour, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::ImageProcessWithInpaint(pixels, 8, 8, nullptr, SpotColour, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::BlackEye(nullptr, 8, 8, mask.Pixels(), 5, 10, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::BlackEye(pixels, 8, 8, nullptr, 5, 10, nullptr, 0, 100), 0);
    EXPECT_EQ(PC_Dsp::BlackEye(pixels, 8, 8, mask.Pixels(), 0, 10, nullptr, 0, 100), 0);
    for (const auto& [width, height] : {std::pair(0, 8), std::pair(8, -1), std::pair(INT_MAX, INT_MAX)}) {
        EXPECT_EQ(PC_Dsp::ImageProcessWithInpaint(pixels, width, height, mask.Pixels(), SpotColour, nullptr, 0, 100),
                  0);
        EXPECT_EQ(PC_Dsp::BlackEye(pixels, width, height, mask.Pixels(), 5, 10, nullptr, 0, 100), 0);
    }
    Bitmap none;
    EXPECT_EQ(PC_Dsp::RedEyeRemove(none, {0, 0, 8, 8}), 0);
    EXPECT_EQ(PC_Dsp::RedEyeRemove(nullptr, {0, 0, 8, 8}), 0);
    EXPECT_TRUE(picture == before);
}
