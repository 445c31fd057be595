// SPDX-License-Identifier: GPL-3.0-or-later
// Red eye: the pupil goes dark, everything else stays.
#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "ColourDifference.h"
#include "Marks.h"
#include "Parallel.h"
#include "PC_Dsp.h"

namespace {

struct Rgb {
    int r, g, b;
};

// A disc with an edge of one pixel that mixes.
void Paint(Bitmap& bitmap, double x, double y, double radius, Rgb colour) {
    ForDisc(bitmap, x, y, radius + 1.0, [&](int u, int v) {
        const double share = std::clamp(radius + 0.5 - std::hypot(u - x, v - y), 0.0, 1.0);
        const std::uint8_t* p = bitmap.Row(v) + 4 * u;
        const auto mix = [&](int from, int to) { return static_cast<int>(std::lround(from + share * (to - from))); };
        SetPixel(bitmap, u, v, mix(p[2], colour.r), mix(p[1], colour.g), mix(p[0], colour.b));
    });
}

constexpr Rgb Brown{92, 58, 38}, Blue{88, 120, 150}, Red{214, 30, 42}, Highlight{250, 250, 252};

// An eye of iris radius 3 `pupil` in the middle of skin.
Bitmap Eye(int width, int height, double pupil, Rgb iris = Blue, Rgb red = Red) {
    Bitmap bitmap = Skin(width, height, 3);
    Paint(bitmap, width / 2, height / 2, 5.0 * pupil, {222, 216, 212});
    Paint(bitmap, width / 2, height / 2, 3.0 * pupil, iris);
    Paint(bitmap, width / 2, height / 2, pupil, red);
    Paint(bitmap, width / 2 - 0.4 * pupil, height / 2 - 0.4 * pupil, 0.2 * pupil, Highlight);
    return bitmap;
}

PixelRect Around(int x, int y, int half) {
    return {x - half, y - half, x + half, y + half};
}

Bitmap Repaired(const Bitmap& source, const PixelRect& rect) {
    Bitmap picture = source;
    EXPECT_NE(PC_Dsp::RedEyeRemove(picture, rect), 0);
    return picture;
}

Lab LabAt(const Bitmap& bitmap, int x, int y) {
    const std::uint8_t* p = bitmap.Row(y) + 4 * x;
    return LabOf(p[2], p[1], p[0]);
}

}  // namespace

TEST(RedEye, ThePupilIsDarkAndGreyAtEverySizeAndOnEveryIris) {
    for (const double radius : {4.0, 7.0, 15.0, 40.0})
        for (const Rgb& iris : {Blue, Brown}) {
            const int side = static_cast<int>(12 * radius) + 20, middle = side / 2;
            const Bitmap source = Eye(side, side, radius, iris);
            const Bitmap result = Repaired(source, Around(middle, middle, static_cast<int>(3 * radius)));
            for (int y = 0; y < side; ++y)
                for (int x = 0; x < side; ++x) {
                    const double away = std::hypot(x - middle, y - middle);
                    if (away > radius + 2.5) {
                        ASSERT_EQ(TestPictures::PixelAt(result, x, y), TestPictures::PixelAt(source, x, y))
                            << radius << ": " << x << ", " << y;
                        continue;
                    }
                    const double shine = std::hypot(x - (middle - 0.4 * radius), y - (middle - 0.4 * radius));
                    if (away > radius - 1.0 || shine < 0.2 * radius + 1.5) continue;
                    ASSERT_LE(LabAt(result, x, y).a, 5.0) << radius << ": " << x << ", " << y;
                    ASSERT_LT(LabAt(result, x, y).l, 30.0) << radius << ": " << x << ", " << y;
                }
        }
}

TEST(RedEye, TheHighlightStays) {
    const Bitmap source = Eye(200, 200, 15.0), result = Repaired(source, Around(100, 100, 40));
    EXPECT_EQ(TestPictures::PixelAt(result, 94, 94), TestPictures::PixelAt(source, 94, 94));
}

TEST(RedEye, ADimAndAPinkPupilAreFoundToo) {
    for (const Rgb& red : {Rgb{96, 18, 20}, Rgb{255, 96, 118}}) {
        const Bitmap source = Eye(160, 160, 10.0, Blue, red), result = Repaired(source, Around(80, 80, 30));
        EXPECT_LE(LabAt(result, 84, 84).a, 5.0);
        EXPECT_LT(LabAt(result, 84, 84).l, 30.0);
    }
}

TEST(RedEye, ASecondClickChangesNothingMore) {
    for (const double radius : {4.0, 15.0}) {
        const Bitmap once = Repaired(Eye(200, 200, radius), Around(100, 100, 45));
        EXPECT_TRUE(Repaired(once, Around(100, 100, 45)) == once);
        EXPECT_TRUE(Repaired(once, Around(97, 104, 60)) == once);
    }
}

TEST(RedEye, WhereNothingIsRedNothingChangesAndNothingIsCopied) {
    const Bitmap skin = Skin(120, 90, 5);
    Bitmap picture = skin;
    ASSERT_NE(PC_Dsp::RedEyeRemove(picture, {10, 10, 110, 80}), 0);
    EXPECT_TRUE(picture.SharesPixelsWith(skin));
}

TEST(RedEye, LipsLidsPimplesAndABrownIrisKeepEveryPixel) {
    Bitmap lips = Skin(300, 160, 3), pimple = Skin(120, 120, 3), lid = Skin(200, 120, 3);
    for (int y = 0; y < 160; ++y)
        for (int x = 0; x < 300; ++x)
            if (std::hypot((x - 150) / 110.0, (y - 80) / 30.0) < 1.0) SetPixel(lips, x, y, 178, 40, 62);
    EXPECT_TRUE(Repaired(lips, Around(150, 80, 50)) == lips);
    EXPECT_TRUE(Repaired(lips, {0, 0, 300, 160}) == lips);
    Paint(pimple, 60, 60, 8.0, {196, 84, 80});
    EXPECT_TRUE(Repaired(pimple, Around(60, 60, 30)) == pimple);
    for (int x = 20; x < 180; ++x)
        for (int y = 0; y < 5; ++y) SetPixel(lid, x, 50 + y, 190, 70, 74);
    EXPECT_TRUE(Repaired(lid, Around(100, 52, 40)) == lid);
    const Bitmap brown = Eye(160, 160, 12.0, Brown, {14, 10, 10});
    EXPECT_TRUE(Repaired(brown, Around(80, 80, 50)) == brown);
}

TEST(RedEye, AllRedIsNoPupil) {
    const Bitmap red = TestPictures::Plain(90, 90, 0xFFD01820);
    EXPECT_TRUE(Repaired(red, {20, 20, 60, 60}) == red);
    EXPECT_TRUE(Repaired(red, {0, 0, 90, 90}) == red);
    const Bitmap one = TestPictures::Plain(1, 1, 0xFFD01820);
    EXPECT_TRUE(Repaired(one, {0, 0, 1, 1}) == one);
}

TEST(RedEye, NothingOutsideTheRectangleChangesWhateverItIs) {
    const Bitmap source = Eye(140, 120, 12.0);
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        const auto between = [&](int low, int high) {
            return low + static_cast<int>(random() % static_cast<unsigned>(high - low));
        };
        const int left = between(-60, 180), top = between(-60, 160);
        PixelRect rect{left, top, left + between(-5, 120), top + between(-5, 120)};
        if (round % 20 == 0) rect = {INT_MIN, INT_MIN, INT_MIN + round, INT_MAX};
        const Bitmap result = Repaired(source, rect);
        for (int y = 0; y < 120; ++y)
            for (int x = 0; x < 140; ++x) {
                const bool isIn = x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
                if (!isIn) {
                    ASSERT_EQ(TestPictures::PixelAt(result, x, y), TestPictures::PixelAt(source, x, y));
                }
            }
    }
}

TEST(RedEye, NoiseOfAnySizeIsSafeAndKeepsItsAlpha) {
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        const int width = 1 + static_cast<int>(random() % 60), height = 1 + static_cast<int>(random() % 60);
        const Bitmap source = TestPictures::Noise(width, height, static_cast<std::uint32_t>(round), false);
        const Bitmap result = Repaired(source, {INT_MIN, INT_MIN, INT_MAX, INT_MAX});
        for (std::size_t i = 3; i < source.ByteCount(); i += 4) ASSERT_EQ(result.Pixels()[i], source.Pixels()[i]);
    }
}
