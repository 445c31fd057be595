// SPDX-License-Identifier: GPL-3.0-or-later
// Dark circles: the shadow goes towards the cheek below, and nothing else does.
#include <gtest/gtest.h>

#include <climits>

#include "ColourDifference.h"
#include "Marks.h"
#include "PC_Dsp.h"

namespace {

constexpr int Width = 320, Height = 260;

// Skin with a soft bluish shadow in the middle, over an oval of 90 x 28.
Bitmap Shadowed(int grain, int r = 206, int g = 158, int b = 132, double depth = 1.0) {
    Bitmap skin = Skin(Width, Height, grain, r, g, b);
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x) {
            const double d = std::hypot((x - 160) / 90.0, (y - 100) / 28.0);
            const double share = depth * std::clamp(1.3 - d, 0.0, 1.0);
            const std::uint8_t* p = skin.Row(y) + 4 * x;
            SetPixel(skin, x, y, static_cast<int>(p[2] * (1.0 - 0.22 * share)),
                     static_cast<int>(p[1] * (1.0 - 0.24 * share)), static_cast<int>(p[0] * (1.0 - 0.12 * share)));
        }
    return skin;
}

Bitmap Stroke() {
    Bitmap mask(Width, Height);
    for (int x = 60; x <= 260; x += 4) MarkDisc(mask, x, 100, 34);
    return mask;
}

Bitmap Lightened(Bitmap picture, int strength, const Bitmap& mask = Stroke()) {
    EXPECT_NE(PC_Dsp::BlackEye(picture.MutablePixels(), Width, Height, mask.Pixels(), 34, strength, nullptr, 0, 100),
              0);
    return picture;
}

Lab MeanIn(const Bitmap& bitmap, int left, int top, int right, int bottom) {
    double sums[3] = {};
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            for (int c = 0; c < 3; ++c) sums[c] += bitmap.Row(y)[4 * x + c];
    const double per = 1.0 / (double(right - left) * (bottom - top));
    return LabOf(sums[2] * per, sums[1] * per, sums[0] * per);
}

double GapClosed(const Bitmap& before, const Bitmap& after, double Lab::*value) {
    const double cheek = MeanIn(before, 90, 145, 230, 165).*value;
    return 1.0 - (cheek - MeanIn(after, 90, 80, 230, 120).*value) / (cheek - MeanIn(before, 90, 80, 230, 120).*value);
}

// Differences of neighbours, squared and added up.
double Texture(const Bitmap& bitmap) {
    double sum = 0.0;
    for (int y = 80; y < 120; ++y)
        for (int x = 90; x < 230; ++x) {
            const double d = double(bitmap.Row(y)[4 * x + 1]) - bitmap.Row(y)[4 * x + 5];
            sum += d * d;
        }
    return sum;
}

}  // namespace

TEST(DarkCircles, StrengthZeroIsNoChange) {
    const Bitmap picture = Shadowed(4);
    EXPECT_TRUE(Lightened(picture, 0) == picture);
    EXPECT_TRUE(Lightened(picture, -3) == picture);
}

TEST(DarkCircles, TheGreatestStrengthClosesMostOfTheGapInLightAndColour) {
    const Bitmap picture = Shadowed(4), result = Lightened(picture, 10);
    EXPECT_GT(GapClosed(picture, result, &Lab::l), 0.6);
    EXPECT_LT(GapClosed(picture, result, &Lab::l), 0.95);
    EXPECT_GT(GapClosed(picture, result, &Lab::b), 0.6);
    EXPECT_TRUE(Lightened(picture, INT_MAX) == result);
}

TEST(DarkCircles, MoreStrengthClosesMore) {
    const Bitmap picture = Shadowed(4);
    double before = 0.0;
    for (int strength = 1; strength <= 10; ++strength) {
        const double now = GapClosed(picture, Lightened(picture, strength), &Lab::l);
        EXPECT_GT(now, before) << strength;
        before = now;
    }
}

TEST(DarkCircles, TextureStays) {
    const Bitmap picture = Shadowed(6);
    const double kept = Texture(Lightened(picture, 10)) / Texture(picture);
    EXPECT_GT(kept, 0.9);
    EXPECT_LT(kept, 1.15);
}

TEST(DarkCircles, EvenSkinHardlyMoves) {
    const Bitmap picture = Skin(Width, Height, 4);
    EXPECT_LE(TestPictures::LargestDifference(Lightened(picture, 10), picture), 6);
}

TEST(DarkCircles, LashesStayDark) {
    Bitmap picture = Shadowed(3);
    for (int x = 100; x < 220; x += 12)
        for (int y = 76; y < 90; ++y) SetPixel(picture, x, y, 40, 26, 22);
    const Bitmap result = Lightened(picture, 10);
    for (int x = 100; x < 220; x += 12) EXPECT_LE(result.Row(84)[4 * x + 1], 45) << x;
}

TEST(DarkCircles, AnEyeUnderTheMarkStays) {
    Bitmap picture = Shadowed(3);
    // A white with a brown iris and a pupil, as wide as half the mark is thick.
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x) {
            const double d = std::hypot((x - 160) / 3.0, y - 95.0), iris = std::hypot(x - 160, y - 95);
            if (iris < 5.0)
                SetPixel(picture, x, y, 22, 18, 16);
            else if (iris < 12.0)
                SetPixel(picture, x, y, 74, 46, 30);
            else if (d < 14.0)
                SetPixel(picture, x, y, 208, 202, 198);
        }
    const Bitmap result = Lightened(picture, 10);
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x) {
            if (std::hypot((x - 160) / 3.0, y - 95.0) >= 11.0) continue;
            for (int c = 0; c < 3; ++c)
                ASSERT_NEAR(result.Row(y)[4 * x + c], picture.Row(y)[4 * x + c], 12) << x << ", " << y;
        }
}

TEST(DarkCircles, TheBorderOfTheMarkIsInvisible) {
    const Bitmap picture = Shadowed(0), result = Lightened(picture, 10);
    // Down through the mark, from 66 to 134: no step that the picture did not have.
    for (const int x : {110, 160, 210})
        for (int y = 50; y < 150; ++y) {
            const int was = picture.Row(y + 1)[4 * x + 1] - picture.Row(y)[4 * x + 1];
            const int is = result.Row(y + 1)[4 * x + 1] - result.Row(y)[4 * x + 1];
            EXPECT_LE(std::abs(is - was), 5) << x << ", " << y;
        }
}

TEST(DarkCircles, DarkSkinKeepsItsHueAndChroma) {
    const Bitmap picture = Shadowed(3, 112, 72, 52), result = Lightened(picture, 10);
    const Lab cheek = MeanIn(picture, 90, 145, 230, 165), now = MeanIn(result, 90, 80, 230, 120);
    EXPECT_GT(ChromaOf(now), 0.85 * ChromaOf(cheek));
    EXPECT_LT(std::abs(std::remainder(HueOf(now) - HueOf(cheek), 360.0)), 6.0);
}

// Gloss is as grey as the light: the skin above takes on the cheek's light, and the colour of what shines less.
TEST(DarkCircles, DarkSkinTakesNoGreyFromAGlossyCheek) {
    Bitmap picture = Shadowed(3, 112, 72, 52);
    for (int y = 138; y < 200; ++y)
        for (int x = 0; x < Width; ++x) {
            const std::uint8_t* p = picture.Row(y) + 4 * x;
            const int gloss = (x / 24 + y / 16) % 2 ? 34 : 0;
            SetPixel(picture, x, y, p[2] + gloss, p[1] + gloss, p[0] + gloss);
        }
    const Lab before = MeanIn(picture, 90, 80, 230, 120), cheek = MeanIn(picture, 90, 145, 230, 165),
              bare = MeanIn(picture, 90, 220, 230, 250), now = MeanIn(Lightened(picture, 10), 90, 80, 230, 120);
    EXPECT_GT(now.l, before.l + 0.5 * (cheek.l - before.l));
    EXPECT_LT(ChromaOf(cheek) / cheek.l, 0.85 * ChromaOf(bare) / bare.l) << "the cheek is greyer than the skin";
    EXPECT_GT(ChromaOf(now) / now.l, 0.92 * ChromaOf(bare) / bare.l);
}

TEST(DarkCircles, AMarkAtThePicturesFootGoesByTheSkinAround) {
    Bitmap picture = Skin(Width, 100, 3), mask(Width, 100);
    MarkBox(mask, {100, 60, 220, 100});
    for (int y = 70; y < 100; ++y)
        for (int x = 120; x < 200; ++x) {
            const std::uint8_t* p = picture.Row(y) + 4 * x;
            SetPixel(picture, x, y, p[2] - 40, p[1] - 40, p[0] - 30);
        }
    const int before = picture.Row(85)[4 * 160 + 1];
    ASSERT_NE(PC_Dsp::BlackEye(picture.MutablePixels(), Width, 100, mask.Pixels(), 20, 10, nullptr, 0, 100), 0);
    EXPECT_GT(picture.Row(85)[4 * 160 + 1], before + 15);
}
