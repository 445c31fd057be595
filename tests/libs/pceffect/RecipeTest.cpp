// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "EffectTable.h"
#include "LookShelf.h"
#include "RecipeReader.h"

namespace {

const std::string Head = "[look]\ntitle = Test\n";

// The error of a text that follows the head, whose own lines are 1 and 2.
std::string ErrorOf(const std::string& text) {
    const RecipeResult result = ParseRecipe(Head + text);
    EXPECT_NE(result.error.empty(), !result.recipe.has_value());
    return result.error;
}

}  // namespace

TEST(Recipe, EveryFileOfTheProgramIsRight) {
    for (int i = 0; i < 50; ++i) {
        const RecipeResult result = ReadRecipe(LooksFolder() / "Effects" / LookShelf::FileName(i));
        EXPECT_EQ(result.error, "");
    }
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(LooksFolder() / "Effects"))
        files += entry.path().extension() == ".look";
    EXPECT_EQ(files, 50);
}

TEST(Recipe, ReadsWhatItSays) {
    const RecipeResult result = ParseRecipe(
        "\xEF\xBB\xBF# a comment\r\n[look]\r\ntitle = Two words # and a comment\r\n\r\n[tone]\r\n"
        "master = 0 10, 128.5 140 , 255 250\r\n[hues]\nblue = -10 20 5\n[leak]\nshape = band\nstrength=50\n[leak]\nx = "
        "-20\n"
        "[split]\nshadows = 200 12\n[grain]\namount = +3\n");
    ASSERT_TRUE(result.recipe) << result.error;
    const Recipe& recipe = *result.recipe;
    EXPECT_EQ(recipe.title, "Two words");
    ASSERT_EQ(recipe.master.size(), 3u);
    EXPECT_EQ(recipe.master[1].x, 128.5);
    EXPECT_EQ(recipe.hues[5].turn, -10);
    EXPECT_EQ(recipe.hues[5].light, 5);
    ASSERT_EQ(recipe.leaks.size(), 2u);
    EXPECT_EQ(recipe.leaks[0].shape, Leak::Shape::Band);
    EXPECT_EQ(recipe.leaks[1].x, -20);
    EXPECT_EQ(recipe.shadows.strength, 12);
    EXPECT_EQ(recipe.grain.amount, 3);
    EXPECT_FALSE(recipe.grey);
}

TEST(Recipe, AnErrorNamesItsLineAndWhatIsWrong) {
    EXPECT_EQ(ErrorOf("[tones]\n"), "line 3: unknown section [tones]");
    EXPECT_EQ(ErrorOf("[grain]\namuont = 3\n"), "line 4: unknown key \"amuont\" in [grain]");
    EXPECT_EQ(ErrorOf("[grain]\namount = 3\namount = 4\n"), "line 5: \"amount\" is given twice in [grain]");
    EXPECT_EQ(ErrorOf("[grain]\n[grain]\n"), "line 4: [grain] is opened twice");
    EXPECT_EQ(ErrorOf("[grain]\namount = 31\n"), "line 4: amount must be from 0 to 30");
    EXPECT_EQ(ErrorOf("[grain]\namount = nan\n"), "line 4: \"nan\" is not a number");
    EXPECT_EQ(ErrorOf("[grain]\namount = 1e999\n"), "line 4: \"1e999\" is not a number");
    EXPECT_EQ(ErrorOf("[grain]\namount = 1 2\n"), "line 4: amount takes 1 number");
    EXPECT_EQ(ErrorOf("[fade]\nblack = 1 2\n"), "line 4: black takes 3 numbers");
    EXPECT_EQ(ErrorOf("[grain]\namount\n"), "line 4: neither a [section] nor key = value: \"amount\"");
    EXPECT_EQ(ErrorOf("[grain]\namount =\n"), "line 4: \"amount\" has no value");
    EXPECT_EQ(ErrorOf("[grain\n"), "line 3: a section ends with ]");
    EXPECT_EQ(ErrorOf("[tone]\nmaster = 0 0\n"), "line 4: a curve has two points or more");
    EXPECT_EQ(ErrorOf("[tone]\nmaster = 0 9, 255 8\n"), "line 4: the points of a curve rise, at least 4 levels apart");
    EXPECT_EQ(ErrorOf("[tone]\nmaster = 0 0, 256 255\n"), "line 4: a point of a curve lies within 0 to 255");
    EXPECT_EQ(ErrorOf("[tone]\nmaster = 0 0 0, 255 255\n"), "line 4: a point of a curve is two numbers: in and out");
    EXPECT_EQ(ErrorOf("[leak]\nshape = star\n"), "line 4: shape is glow, band or border");
    EXPECT_EQ(ErrorOf("[split]\nshadows = 10 -1\n"), "line 4: the strength of a tint is from 0 to 100");
    EXPECT_EQ(ErrorOf("[vignette]\nend = 20\n"), "line 4: the vignette ends before it starts");
    EXPECT_EQ(ParseRecipe("[grain]\n").error, "line 1: [look] has no title");
    EXPECT_EQ(ParseRecipe("").error, "line 0: [look] has no title");
    EXPECT_EQ(ParseRecipe("a = 1").error, "line 1: \"a\" stands before the first section");
}

TEST(Recipe, HostileTextIsRefusedNotBelieved) {
    std::string leaks = Head;
    for (int i = 0; i < 13; ++i) leaks += "[leak]\n";
    EXPECT_EQ(ParseRecipe(leaks).error, "line 15: more than 12 leaks");
    EXPECT_EQ(ParseRecipe(std::string(70000, '#')).error, "line 1: larger than 64 kB");
    EXPECT_EQ(ErrorOf(std::string("[\0\x80]\n", 5)), "line 3: unknown section [??]");
    std::string points = "[tone]\nmaster = 0 0";
    for (int i = 1; i < 40; ++i) points += ", " + std::to_string(4 * i) + " " + std::to_string(4 * i);
    EXPECT_EQ(ErrorOf(points), "line 4: more than 24 points");
}

TEST(Recipe, ReadsWhatComesBeforeItOnFaces) {
    const RecipeResult read = ParseRecipe(
        "[look]\ntitle = T\n[face]\nsmooth = 1.5\neven = 40\nlight = -2\nturn = 7\nsaturation = 90\nclarity = 12\n");
    ASSERT_TRUE(read.recipe) << read.error;
    const Recipe::Face& face = read.recipe->face;
    EXPECT_EQ(face.smooth, 1.5);
    EXPECT_EQ(face.even, 40);
    EXPECT_EQ(face.light, -2);
    EXPECT_EQ(face.turn, 7);
    EXPECT_EQ(face.saturation, 90);
    EXPECT_EQ(face.clarity, 12);
    EXPECT_FALSE(face.IsNeutral());
    EXPECT_TRUE(Recipe().face.IsNeutral());
}

TEST(Recipe, AMissingFileIsAnError) {
    EXPECT_EQ(ReadRecipe(LooksFolder() / "Effects" / "none.look").error, "none.look: cannot be read");
    EXPECT_EQ(ReadRecipe(LooksFolder()).error, "resources: cannot be read");
}
