// SPDX-License-Identifier: GPL-3.0-or-later
// The fifty side by side: no two alike, kind to skin, and the same at every size.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "ColourDifference.h"
#include "EffectTable.h"
#include "LookShelf.h"
#include "PC_Dsp.h"
#include "PortraitBitmap.h"
#include "SkinPatches.h"
#include "TestPictures.h"

namespace {

// Hues across, from dull to strong and from dark to light down.
Bitmap Chart() {
    Bitmap chart(24, 24);
    std::uint8_t* p = chart.MutablePixels();
    for (int y = 0; y < 24; ++y)
        for (int x = 0; x < 24; ++x, p += 4) {
            const double light = 0.1 + 0.8 * (y % 6) / 5.0, strength = (y / 6) / 3.0;
            for (int c = 0; c < 3; ++c) {
                const double wave = 0.5 + 0.5 * std::cos((x / 24.0 - (2 - c) / 3.0) * 2 * std::acos(-1.0));
                p[c] = static_cast<std::uint8_t>(255 * light * (1 - strength + strength * wave) + 0.5);
            }
            p[3] = 255;
        }
    return chart;
}

std::vector<Lab> LabsOf(const Bitmap& bitmap) {
    std::vector<Lab> labs;
    for (std::size_t i = 0; i < bitmap.ByteCount(); i += 4)
        labs.push_back(LabOf(bitmap.Pixels()[i + 2], bitmap.Pixels()[i + 1], bitmap.Pixels()[i]));
    return labs;
}

double MeanDifference(const std::vector<Lab>& a, const std::vector<Lab>& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += DeltaE2000(a[i], b[i]);
    return sum / double(a.size());
}

// The pairs of the fifty, and of them and the source, that are too alike.
std::string Alike(const Bitmap& source) {
    std::vector<std::vector<Lab>> results;
    for (int i = 0; i < 50; ++i) results.push_back(LabsOf(WithEffect(i, source)));
    results.push_back(LabsOf(source));
    std::string pairs;
    for (std::size_t a = 0; a < results.size(); ++a)
        for (std::size_t b = a + 1; b < results.size(); ++b) {
            const double difference = MeanDifference(results[a], results[b]);
            if (difference <= 3.0)
                pairs += std::to_string(a) + "-" + std::to_string(b) + " " + std::to_string(difference) + "; ";
        }
    return pairs;
}

double TurnBetween(double a, double b) {
    const double d = std::fmod(std::abs(a - b), 360.0);
    return std::min(d, 360.0 - d);
}

class EveryFamilyMember : public testing::TestWithParam<int> {};
class EveryKindToSkin : public testing::TestWithParam<int> {};

}  // namespace

TEST(Fifty, NoTwoAreAlikeOnThePortrait) {
    EXPECT_EQ(Alike(PortraitBitmap(32)), "");
}

TEST(Fifty, NoTwoAreAlikeOnAColourChart) {
    EXPECT_EQ(Alike(Chart()), "");
}

TEST_P(EveryFamilyMember, AThumbnailShowsTheLookOfTheWholePicture) {
    static const Bitmap whole = TestPictures::Face(1200, 1500);
    static const Bitmap thumbnail = PC_Dsp::Resample(whole, 72, 90);
    const Bitmap reduced = PC_Dsp::Resample(WithEffect(GetParam(), whole), 72, 90);
    EXPECT_LT(MeanDeltaE(WithEffect(GetParam(), thumbnail), reduced), 2.0);
}

INSTANTIATE_TEST_SUITE_P(Fifty, EveryFamilyMember, testing::Range(0, 50));

TEST_P(EveryKindToSkin, KeepsTheHueOfSixTones) {
    const auto look = LookShelf::Take(LooksFolder(), GetParam());
    ASSERT_TRUE(look);
    for (const std::uint32_t tone : SkinPatches::Tones) {
        const double r = tone >> 16 & 255, g = tone >> 8 & 255, b = tone & 255;
        const Triple c = look->Colours().At({r / 255, g / 255, b / 255});
        const double turn = TurnBetween(HueOf(LabOf(255 * c[0], 255 * c[1], 255 * c[2])), HueOf(LabOf(r, g, b)));
        EXPECT_LT(turn, 12.0) << std::hex << tone;
    }
}

INSTANTIATE_TEST_SUITE_P(Film, EveryKindToSkin, testing::Range(0, 8));
INSTANTIATE_TEST_SUITE_P(Pola, EveryKindToSkin, testing::Range(8, 15));
INSTANTIATE_TEST_SUITE_P(Fade, EveryKindToSkin, testing::Range(30, 36));
