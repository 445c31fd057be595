// SPDX-License-Identifier: GPL-3.0-or-later
// What every look owes a face, whatever its skin: shading that is still there, and no channel burnt out.
#include <gtest/gtest.h>

#include <algorithm>

#include "EffectTable.h"
#include "LookShelf.h"
#include "SkinPatches.h"

namespace {

// Looks that lay one tone over everything, which is what they are for.
constexpr EffectId Toned[] = {EffectId::Effect_LiuNian,    EffectId::Effect_EarlyBird, EffectId::Effect_YiZhouQuince,
                              EffectId::Effect_FuGuQuince, EffectId::Effect_GuTongSe,  EffectId::Effect_VSCO_P2,
                              EffectId::Effect_VSCO_1970,  EffectId::Effect_VSCO_S4,   EffectId::Effect_VSCO_SE2};

// By its function, as the program runs it.
std::vector<SkinPatches::Patch> Whole(int index) {
    return SkinPatches::Measure([=](Bitmap& portrait) { portrait = WithEffect(index, portrait); });
}

// Outside of its leaks, whose light lies over the skin.
std::vector<SkinPatches::Patch> OutsideLeaks(int index) {
    const auto look = LookShelf::Take(LooksFolder(), index);
    EXPECT_TRUE(look);
    Recipe recipe = look->GetRecipe();
    recipe.leaks.clear();
    const Look bare(recipe);
    return SkinPatches::Measure([&](Bitmap& portrait) {
        EXPECT_NE(bare.Apply(portrait.MutablePixels(), portrait.Width(), portrait.Height(), {}), 0);
    });
}

class EveryLookOnSkin : public testing::TestWithParam<int> {};

}  // namespace

TEST(SkinPatches, SeeWhatIsDoneToThem) {
    for (const auto& patch : SkinPatches::Measure([](Bitmap&) {})) {
        EXPECT_EQ(patch.newlyClipped, 0.0);
        EXPECT_NEAR(patch.contrast, 1.0, 1e-9);
        EXPECT_EQ(patch.chromaAfter, patch.chromaBefore);
    }
    const auto halved = SkinPatches::Measure([](Bitmap& portrait) {
        std::uint8_t* p = portrait.MutablePixels();
        for (std::size_t i = 0; i < portrait.ByteCount(); ++i)
            if (i % 4 < 2)
                p[i] /= 2;
            else if (i % 4 == 2)
                p[i] = 255;
    });
    for (const auto& patch : halved) {
        EXPECT_GT(patch.newlyClipped, 30.0) << patch.Name();
        EXPECT_LT(patch.contrast, 0.5) << patch.Name();
        EXPECT_GT(patch.chromaAfter, 1.5 * patch.chromaBefore) << patch.Name();
    }
}

TEST_P(EveryLookOnSkin, BurnsOutNoChannel) {
    for (const auto& patch : Whole(GetParam())) EXPECT_LE(patch.newlyClipped, 3.0) << patch.Name();
}

TEST_P(EveryLookOnSkin, KeepsFourFifthsOfTheShading) {
    for (const auto& patch : OutsideLeaks(GetParam())) EXPECT_GE(patch.contrast, 0.8) << patch.Name();
}

TEST_P(EveryLookOnSkin, KeepsTheOrderOfLightness) {
    const auto patches = Whole(GetParam());
    for (const auto& light : patches)
        for (const auto& dark : patches)
            if (light.place == dark.place && light.tone < dark.tone) {
                EXPECT_GT(light.lumaAfter, dark.lumaAfter) << light.Name() << ", " << dark.Name();
            }
}

TEST_P(EveryLookOnSkin, RaisesItsChromaByLittleUnlessItTonesEverything) {
    const auto is = [](EffectId effect) { return IndexOf(effect) == GetParam(); };
    if (std::any_of(std::begin(Toned), std::end(Toned), is)) {
        const auto look = LookShelf::Take(LooksFolder(), GetParam());
        ASSERT_TRUE(look);
        EXPECT_GT(look->GetRecipe().mostSkin, 135) << "a toned look says so in its recipe";
        return;
    }
    for (const auto& patch : OutsideLeaks(GetParam()))
        EXPECT_LE(patch.chromaAfter, 1.35 * patch.chromaBefore) << patch.Name();
}

INSTANTIATE_TEST_SUITE_P(Fifty, EveryLookOnSkin, testing::Range(0, EffectListCount));
