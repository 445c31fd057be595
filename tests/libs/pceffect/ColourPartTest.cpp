// SPDX-License-Identifier: GPL-3.0-or-later
// The colour part of a look: exact, and as the lattice gives it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "ColourPart.h"
#include "EffectKernels.h"
#include "EffectTable.h"
#include "LookShelf.h"
#include "TestPictures.h"

namespace {

double Luma(const Triple& c) {
    return 0.2126 * c[0] + 0.7152 * c[1] + 0.0722 * c[2];
}

Triple Held(Triple c) {
    for (double& v : c) v = std::clamp(v, 0.0, 1.0);
    return c;
}

class EveryColourPart : public testing::TestWithParam<int> {
  protected:
    const std::shared_ptr<const Look> m_look = LookShelf::Take(LooksFolder(), GetParam());
};

// Colours everywhere, greys and the edges of the cube among them.
std::vector<std::uint32_t> SampleColours() {
    std::vector<std::uint32_t> colours;
    for (unsigned v = 0; v < 256; ++v) {
        colours.push_back(v << 16 | v << 8 | v);
        colours.push_back(255u << 16 | v << 8 | 128u);
        colours.push_back(v << 16);
        colours.push_back(v << 8 | 255u);
    }
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) colours.push_back(random() & 0xFFFFFF);
    return colours;
}

}  // namespace

TEST_P(EveryColourPart, TheLatticeIsWithinOneLevelOfTheRecipe) {
    ASSERT_TRUE(m_look);
    const auto colours = SampleColours();
    Bitmap picture(static_cast<int>(colours.size()), 1);
    std::uint8_t* p = picture.MutablePixels();
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const std::uint32_t pixel = 0xFF000000u | colours[i];
        std::copy_n(reinterpret_cast<const std::uint8_t*>(&pixel), 4, p + 4 * i);
    }
    // Without grain: of a copy of the recipe.
    Recipe recipe = m_look->GetRecipe();
    recipe.grain.amount = 0;
    const Look smooth(recipe);
    EffectKernelsInUse().lookRow(p, picture.Width(), smooth.Colour3D().View(), nullptr, nullptr, {});
    double worst = 0.0, sum = 0.0;
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const std::uint8_t* in = reinterpret_cast<const std::uint8_t*>(&colours[i]);
        const Triple exact = Held(smooth.Colours().At({in[2] / 255.0, in[1] / 255.0, in[0] / 255.0}));
        for (int c = 0; c < 3; ++c) {
            // The lattice's error alone: the result's rounding allows half a level.
            const double difference = std::abs(p[4 * i + 2 - c] - 255.0 * exact[c]) - 0.5;
            worst = std::max(worst, difference);
            sum += std::max(0.0, difference);
        }
    }
    EXPECT_LT(worst, 1.0);
    EXPECT_LT(sum / (3.0 * double(colours.size())), 0.05);
}

TEST_P(EveryColourPart, GreysRiseInLumaByAtMostThreeLevels) {
    ASSERT_TRUE(m_look);
    double before = -1.0;
    for (int level = 0; level <= 255; ++level) {
        const double v = level / 255.0;
        const double luma = 255.0 * Luma(Held(m_look->Colours().At({v, v, v})));
        if (level > 0) {
            EXPECT_GE(luma, before - 1e-6) << level;
            EXPECT_LE(luma - before, 3.0) << level;
        }
        before = luma;
    }
}

INSTANTIATE_TEST_SUITE_P(Fifty, EveryColourPart, testing::Range(0, 50));

TEST(ColourPart, ARecipeThatSaysNothingChangesNothing) {
    Recipe recipe;
    recipe.title = "nothing";
    const Look look(recipe);
    const Bitmap source = TestPictures::Noise(300, 20, 3, false);
    Bitmap picture = source;
    ASSERT_NE(look.Apply(picture.MutablePixels(), 300, 20, {}), 0);
    EXPECT_TRUE(picture == source);
}

TEST(ColourPart, HueBandsLeaveGreysAndOtherHuesAlone) {
    Recipe recipe;
    recipe.hues[5] = {30, -50, 0};  // blue
    const ColourPart part(recipe);
    const Triple grey = part.At({0.5, 0.5, 0.5}), red = part.At({0.8, 0.2, 0.2}), blue = part.At({0.2, 0.2, 0.8});
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(grey[i], 0.5, 1e-12);
        EXPECT_NEAR(red[i], i == 0 ? 0.8 : 0.2, 1e-12);
    }
    EXPECT_GT(blue[0], blue[1] + 0.05);
    EXPECT_NEAR(Luma(blue), Luma({0.2, 0.2, 0.8}), 1e-12);
}

TEST(ColourPart, SplitTonesKeepTheLumaOfGreys) {
    Recipe recipe;
    recipe.shadows = {200, 40};
    recipe.highlights = {40, 30};
    const ColourPart part(recipe);
    for (double v = 0.0; v <= 1.0; v += 0.05) EXPECT_NEAR(Luma(part.At({v, v, v})), v, 1e-12);
    const Triple dark = part.At({0.2, 0.2, 0.2}), light = part.At({0.8, 0.8, 0.8});
    EXPECT_GT(dark[2], dark[0]);
    EXPECT_GT(light[0], light[2]);
}

TEST(ColourPart, FadeMovesBlackAndWhiteWhereItSays) {
    Recipe recipe;
    recipe.black = {40, 30, 20};
    recipe.white = {250, 240, 230};
    const ColourPart part(recipe);
    const Triple black = part.At({0, 0, 0}), white = part.At({1, 1, 1});
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(255 * black[i], 40 - 10 * i, 1e-9);
        EXPECT_NEAR(255 * white[i], 250 - 10 * i, 1e-9);
    }
}

TEST(ColourPart, WarmColoursBendBelowTheTopAndKeepTheirLuma) {
    Recipe recipe;
    recipe.saturation = 170;
    recipe.mostSkin = 1000;
    const ColourPart part(recipe);
    for (const Triple& skin : {Triple{0.95, 0.78, 0.67}, {0.98, 0.86, 0.78}, {0.85, 0.63, 0.5}}) {
        const Triple c = part.At(skin);
        EXPECT_LT(c[0], 0.985);
        EXPECT_NEAR(Luma(c), Luma(skin), 1e-9);
    }
    // Where there is room they get what the recipe says.
    const Triple dark = part.At({0.5, 0.36, 0.29});
    EXPECT_NEAR(dark[0] - dark[2], 1.7 * 0.21, 1e-9);
}

TEST(ColourPart, SkinGetsNoMoreChromaThanTheRecipeAllows) {
    const Triple skin{0.7, 0.5, 0.4};
    const auto spread = [&](double most) {
        Recipe recipe;
        recipe.saturation = 190;
        recipe.mostSkin = most;
        const Triple c = ColourPart(recipe).At(skin);
        return (c[0] - c[2]) / (skin[0] - skin[2]);
    };
    EXPECT_LT(spread(120), 1.2);
    EXPECT_LT(spread(150), 1.5);
    EXPECT_GT(spread(150), spread(120) + 0.1);
    EXPECT_GT(spread(1000), 1.8);
}

TEST(ColourPart, BlackAndWhiteMixesByItsWeights) {
    Recipe recipe;
    recipe.grey = true;
    recipe.mix = {0.5, 0.3, 0.2};
    const Triple grey = ColourPart(recipe).At({0.4, 0.6, 1.0});
    for (const double v : grey) EXPECT_NEAR(v, 0.58, 1e-12);
}

TEST(ToneCurve, PassesItsPointsRisesAndGoesOnBeyondItsEnds) {
    const ToneCurve curve({{0, 10}, {60, 40}, {128, 150}, {200, 150}, {255, 240}});
    for (const auto& [x, y] : {std::pair{0.0, 10.0}, {60.0, 40.0}, {128.0, 150.0}, {200.0, 150.0}, {255.0, 240.0}})
        EXPECT_NEAR(255 * curve.At(x / 255), y, 0.05);
    double before = curve.At(-0.2);
    EXPECT_LT(before, 10 / 255.0);
    for (double x = -0.19; x < 1.2; x += 0.001) {
        EXPECT_GE(curve.At(x), before - 1e-7);
        before = curve.At(x);
    }
    EXPECT_TRUE(ToneCurve({}).IsIdentity());
}
