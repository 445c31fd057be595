// SPDX-License-Identifier: GPL-3.0-or-later
// Removal of spots: nobody finds the place.
#include <gtest/gtest.h>

#include "MarkGroups.h"
#include "Marks.h"
#include "Membrane.h"
#include "PatchSearch.h"
#include "PC_Dsp.h"

namespace {

// Heals a disc, over which a dark red spot is laid first.
Bitmap Healed(Bitmap picture, int x, int y, int radius) {
    Bitmap mask(picture.Width(), picture.Height());
    MarkDisc(mask, x, y, radius);
    ForDisc(picture, x, y, radius, [&](int u, int v) {
        const std::uint8_t* p = picture.Row(v) + 4 * u;
        SetPixel(picture, u, v, p[2] - 30, p[1] - 70, p[0] - 60);
    });
    EXPECT_NE(PC_Dsp::ImageProcessWithInpaint(picture.MutablePixels(), picture.Width(), picture.Height(), mask.Pixels(),
                                              SpotColour, nullptr, 0, 100),
              0);
    return picture;
}

double DeviationIn(const Bitmap& bitmap, double x, double y, double radius) {
    double sum = 0.0, squares = 0.0, count = 0.0;
    ForDisc(bitmap, x, y, radius, [&](int u, int v) {
        // Against the neighbours, so that the run of light does not count.
        const double d = bitmap.Row(v)[4 * u + 1] - 0.5 * (bitmap.Row(v)[4 * u - 3] + bitmap.Row(v)[4 * u + 5]);
        sum += d;
        squares += d * d;
        ++count;
    });
    return std::sqrt(squares / count - sum * sum / (count * count));
}

double LargestErrorIn(const Bitmap& a, const Bitmap& b, double x, double y, double radius) {
    double most = 0.0;
    ForDisc(a, x, y, radius, [&](int u, int v) {
        for (int c = 0; c < 3; ++c) most = std::max(most, std::abs(double(a.Row(v)[4 * u + c]) - b.Row(v)[4 * u + c]));
    });
    return most;
}

}  // namespace

TEST(SpotHealing, FlatColourStaysFlat) {
    const Bitmap plain = TestPictures::Plain(120, 100, 0xFFC89A80);
    EXPECT_TRUE(Healed(plain, 60, 50, 12) == plain);
}

TEST(SpotHealing, TheRunOfLightCarriesOn) {
    const Bitmap skin = Skin(200, 160, 0);
    for (const int radius : {1, 4, 12, 30})
        EXPECT_LE(LargestErrorIn(Healed(skin, 100, 80, radius), skin, 100, 80, radius), 3) << radius;
}

TEST(SpotHealing, GrainIsAsStrongAsAround) {
    const Bitmap skin = Skin(260, 220, 8);
    const double around = DeviationIn(skin, 130, 110, 16);
    const double inside = DeviationIn(Healed(skin, 130, 110, 18), 130, 110, 16);
    EXPECT_GT(inside, 0.75 * around);
    EXPECT_LT(inside, 1.25 * around);
}

TEST(SpotHealing, TheMeanColourIsThatOfTheSkin) {
    const Bitmap skin = Skin(260, 220, 8), healed = Healed(skin, 130, 110, 18);
    for (int c = 0; c < 3; ++c) {
        double was = 0.0, is = 0.0, count = 0.0;
        ForDisc(skin, 130, 110, 18, [&](int u, int v) {
            was += skin.Row(v)[4 * u + c];
            is += healed.Row(v)[4 * u + c];
            ++count;
        });
        EXPECT_NEAR(is / count, was / count, 1.5);
    }
}

TEST(SpotHealing, ALineRunsOnThroughTheDisc) {
    Bitmap skin = Skin(260, 220, 3);
    for (int x = 0; x < 260; ++x)
        for (int y = 0; y < 3; ++y) SetPixel(skin, x, 60 + x / 2 + y, 90, 60, 50);
    const Bitmap healed = Healed(skin, 120, 121, 14);
    // On the line dark, beside it light.
    for (int x = 108; x <= 132; ++x) {
        EXPECT_LT(healed.Row(61 + x / 2)[4 * x + 1], 105) << x;
        EXPECT_GT(healed.Row(61 + x / 2 + 6)[4 * x + 1], 130) << x;
        EXPECT_GT(healed.Row(61 + x / 2 - 6)[4 * x + 1], 130) << x;
    }
}

TEST(SpotHealing, AnEdgeKeepsItsPlace) {
    Bitmap skin = Skin(220, 220, 3);
    for (int y = 110; y < 220; ++y)
        for (int x = 0; x < 220; ++x) SetPixel(skin, x, y, 150, 70, 80);
    const Bitmap healed = Healed(skin, 110, 108, 13);
    for (int x = 98; x <= 122; ++x) {
        EXPECT_GT(healed.Row(107)[4 * x + 1], 125) << x;
        EXPECT_LT(healed.Row(112)[4 * x + 1], 95) << x;
    }
}

TEST(SpotHealing, ANeighbouringSpotIsNotCopied) {
    Bitmap skin = Skin(240, 200, 4);
    for (const auto& [x, y] : {std::pair(60, 100), std::pair(180, 100), std::pair(120, 40), std::pair(120, 160)})
        ForDisc(skin, x, y, 7, [&](int u, int v) { SetPixel(skin, u, v, 150, 60, 60); });
    const Bitmap healed = Healed(skin, 120, 100, 14);
    ForDisc(healed, 120, 100, 14, [&](int u, int v) { EXPECT_GT(healed.Row(v)[4 * u + 1], 120) << u << ", " << v; });
}

TEST(SpotHealing, ATraceOfTheSpotRoundTheMarkDoesNotTintTheMiddle) {
    const Bitmap skin = Skin(260, 220, 3);
    Bitmap spotted = skin;
    ForDisc(skin, 130, 110, 40, [&](int u, int v) {
        const std::uint8_t* p = skin.Row(v) + 4 * u;
        const double d = std::hypot(u - 130, v - 110) / 14.0;
        const int less = static_cast<int>(60.0 * std::exp(-d * d));
        SetPixel(spotted, u, v, p[2] - less / 4, p[1] - less, p[0] - less);
    });
    Bitmap mask(260, 220);
    MarkDisc(mask, 130, 110, 18);
    ASSERT_NE(
        PC_Dsp::ImageProcessWithInpaint(spotted.MutablePixels(), 260, 220, mask.Pixels(), SpotColour, nullptr, 0, 100),
        0);
    double was = 0.0, is = 0.0, count = 0.0;
    ForDisc(skin, 130, 110, 9, [&](int u, int v) {
        was += skin.Row(v)[4 * u + 1];
        is += spotted.Row(v)[4 * u + 1];
        ++count;
    });
    // The border has 60 e^-1.65 = 11.5 levels of it.
    EXPECT_NEAR(is / count, was / count, 4.0);
}

TEST(SpotHealing, WorksAtThePicturesEdgesAndCorners) {
    const Bitmap skin = Skin(120, 100, 3);
    for (const auto& [x, y] :
         {std::pair(0, 0), std::pair(119, 0), std::pair(0, 99), std::pair(119, 99), std::pair(60, 0), std::pair(0, 50)})
        EXPECT_LE(LargestErrorIn(Healed(skin, x, y, 12), skin, x, y, 12), 16) << x << ", " << y;
}

TEST(SpotHealing, OnlyTheGivenColourIsAMark) {
    const Bitmap skin = Skin(80, 60, 3);
    Bitmap picture = skin, mask(80, 60);
    MarkDisc(mask, 40, 30, 8);
    ASSERT_NE(
        PC_Dsp::ImageProcessWithInpaint(picture.MutablePixels(), 80, 60, mask.Pixels(), 0x7F38EEFF, nullptr, 0, 100),
        0);
    EXPECT_TRUE(picture == skin);
}

TEST(SpotHealing, WhereNoPatchFitsTheBorderIsCarriedInwards) {
    // All but a frame of two pixels.
    const Bitmap plain = TestPictures::Plain(40, 30, 0xFF9A8070);
    Bitmap picture = plain, mask(40, 30);
    MarkBox(mask, {2, 2, 38, 28});
    for (int y = 2; y < 28; ++y)
        for (int x = 2; x < 38; ++x) SetPixel(picture, x, y, 255, 0, 0);
    ASSERT_NE(
        PC_Dsp::ImageProcessWithInpaint(picture.MutablePixels(), 40, 30, mask.Pixels(), SpotColour, nullptr, 0, 100),
        0);
    EXPECT_LE(TestPictures::LargestDifference(picture, plain), 1);
}

TEST(MembraneFill, ABorderThatIsAPlaneIsFilledWithThePlane) {
    constexpr int side = 60;
    Planes planes(1, side, side);
    HoleMap hole(side, side);
    const auto plane = [](int x, int y) { return 0.7f * static_cast<float>(x) - 0.4f * static_cast<float>(y) + 20.0f; };
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            hole.Row(y)[x] = std::hypot(x - 30, y - 28) < 20.0 ? HoleMap::Own : 0;
            planes.Row(0, y)[x] = hole.Row(y)[x] ? 500.0f : plane(x, y);
        }
    FillWithMembrane(planes, 1, hole, 0.0f);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) ASSERT_NEAR(planes.Row(0, y)[x], plane(x, y), 0.35f) << x << ", " << y;
}

TEST(MembraneFill, ASpringDrawsTheMiddleToZero) {
    constexpr int side = 61;
    Planes planes(1, side, side);
    HoleMap hole(side, side);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            hole.Row(y)[x] = std::hypot(x - 30, y - 30) < 25.0 ? HoleMap::Own : 0;
            planes.Row(0, y)[x] = 10.0f;
        }
    FillWithMembrane(planes, 1, hole, 4.0f);
    EXPECT_LT(planes.Row(0, 30)[30], 0.5f);
    EXPECT_GT(planes.Row(0, 30)[6], 6.0f);
}

TEST(MembraneFill, WithoutABorderThereIsNothing) {
    Planes planes(1, 7, 5);
    HoleMap hole(7, 5);
    std::fill(hole.holes.begin(), hole.holes.end(), HoleMap::Own);
    for (int y = 0; y < 5; ++y) std::fill_n(planes.Row(0, y), 7, 9.0f);
    FillWithMembrane(planes, 1, hole, 0.0f);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x) EXPECT_EQ(planes.Row(0, y)[x], 0.0f);
}

TEST(PatchSearching, FindsThePlaceWithTheSameSurroundings) {
    // Noise that repeats after 48 columns: nothing else fits as well.
    constexpr int width = 150, height = 60;
    const Bitmap noise = TestPictures::Noise(48, height, 2);
    Planes colours(3, width, height);
    HoleMap hole(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < 3; ++c) colours.Row(c, y)[x] = noise.Row(y)[4 * (x % 48) + c];
            hole.Row(y)[x] = std::hypot(x - 75, y - 30) < 5.0 ? HoleMap::Own : 0;
        }
    const std::vector<Patch> patches = FindPatches(colours, hole, 3);
    ASSERT_FALSE(patches.empty());
    EXPECT_EQ(std::abs(patches[0].dx), 48);
    EXPECT_EQ(patches[0].dy, 0);
    for (std::size_t i = 1; i < patches.size(); ++i) EXPECT_GE(patches[i].cost, patches[i - 1].cost);
}

TEST(PatchSearching, AMarkInTheLastOddRowAndColumnIsNotLost) {
    constexpr int width = 201, height = 161;
    const Bitmap noise = TestPictures::Noise(width, height, 6);
    Planes colours(3, width, height);
    HoleMap hole(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < 3; ++c) colours.Row(c, y)[x] = noise.Row(y)[4 * x + c];
    // A bar one pixel high, long enough for several reduced copies.
    std::fill_n(hole.Row(height - 1) + 80, 70, HoleMap::Own);
    EXPECT_FALSE(FindPatches(colours, hole, 4).empty());
    HoleMap corner(width, height);
    for (int y = 100; y < height; ++y) corner.Row(y)[width - 1] = HoleMap::Own;
    EXPECT_FALSE(FindPatches(colours, corner, 4).empty());
}

TEST(PatchSearching, TakesNothingFromAnyMark) {
    constexpr int width = 90, height = 70;
    const Bitmap noise = TestPictures::Noise(width, height, 2);
    Planes colours(3, width, height);
    HoleMap hole(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < 3; ++c) colours.Row(c, y)[x] = noise.Row(y)[4 * x + c];
            if (std::hypot(x - 45, y - 35) < 6.0) hole.Row(y)[x] = HoleMap::Own;
            if (x > 60) hole.Row(y)[x] = HoleMap::Other;
        }
    const std::vector<Patch> patches = FindPatches(colours, hole, 50);
    ASSERT_FALSE(patches.empty());
    for (const Patch& patch : patches)
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                if (hole.Row(y)[x] == HoleMap::Own) {
                    ASSERT_TRUE(x + patch.dx >= 0 && x + patch.dx < width && y + patch.dy >= 0 &&
                                y + patch.dy < height);
                    ASSERT_EQ(hole.Row(y + patch.dy)[x + patch.dx], 0);
                }
}

TEST(MarkGrouping, TouchingRunsAreOneGroupAndCornersTouch) {
    // A ring that closes late, a diagonal neighbour of it, and a lone pixel.
    const std::vector<MarkRun> runs = {{0, 1, 2}, {0, 5, 6}, {1, 1, 2}, {1, 5, 6}, {2, 2, 5}, {3, 6, 7}, {3, 9, 10}};
    const std::vector<MarkGroup> groups = GroupsOf(runs);
    ASSERT_EQ(groups.size(), 3u);
    EXPECT_EQ(groups[0].runs.size(), 5u);
    EXPECT_EQ(groups[0].box.left, 1);
    EXPECT_EQ(groups[0].box.right, 6);
    EXPECT_EQ(groups[0].box.bottom, 3);
    EXPECT_EQ(groups[1].box.left, 6);
    EXPECT_EQ(groups[2].box.left, 9);
    EXPECT_TRUE(GroupsOf({}).empty());
}
