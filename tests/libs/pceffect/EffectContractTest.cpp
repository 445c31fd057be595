// SPDX-License-Identifier: GPL-3.0-or-later
// What each of the fifty owes its callers.
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "EffectKernels.h"
#include "EffectTable.h"
#include "LookShelf.h"
#include "Parallel.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

namespace {

class EveryEffect : public testing::TestWithParam<int> {
  protected:
    void TearDown() override {
        SetWorkerCount(0);
        SelectKernelSet(-1);
    }
    int Run(Bitmap& bitmap, CObjProgress* sink = nullptr, int start = 0, int end = 100) const {
        return EffectFunctions[GetParam()](bitmap.MutablePixels(), bitmap.Width(), bitmap.Height(), LooksFolderText(),
                                           sink, start, end);
    }
};

}  // namespace

TEST_P(EveryEffect, ChangesThePictureAndLeavesAlpha) {
    const Bitmap source = TestPictures::Noise(61, 47, 5, false);
    Bitmap result = source;
    ASSERT_NE(Run(result), 0);
    for (std::size_t i = 3; i < source.ByteCount(); i += 4) ASSERT_EQ(result.Pixels()[i], source.Pixels()[i]);
    EXPECT_GT(TestPictures::LargestDifference(source, result), 20);
}

TEST_P(EveryEffect, FadedToNothingIsTheSourceItself) {
    Bitmap source = TestPictures::Face(60, 75);
    Bitmap result = source.Clone();
    ASSERT_NE(Run(result), 0);
    CEffect::Effect_AlphaAdJust(result.MutablePixels(), source.MutablePixels(), 60, 75, 1.0);
    EXPECT_TRUE(result == source);
}

TEST_P(EveryEffect, TakesTheSmallestAndTheNarrowestPictures) {
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 77}, {77, 1}, {2, 3}}) {
        Bitmap picture = TestPictures::Noise(width, height, 9);
        EXPECT_NE(Run(picture), 0) << width << "x" << height;
    }
}

TEST_P(EveryEffect, GivesTheSameBytesForAnyNumberOfThreadsAndInstructionSet) {
    const Bitmap source = TestPictures::Face(411, 337);
    SetWorkerCount(1);
    SelectKernelSet(0);
    Bitmap plain = source;
    ASSERT_NE(Run(plain), 0);
    SetWorkerCount(5);
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        Bitmap result = source;
        ASSERT_NE(Run(result), 0);
        EXPECT_TRUE(result == plain) << EffectKernelSet(set).name;
    }
}

TEST_P(EveryEffect, ReportsRisingProgressUpToItsEnd) {
    Bitmap picture = TestPictures::Face(90, 400);
    WatchfulSink sink;
    sink.SetValue(10);
    ASSERT_NE(Run(picture, &sink, 10, 89), 0);
    EXPECT_FALSE(sink.ranBackwards);
    EXPECT_FLOAT_EQ(sink.GetValue(), 89.0f);
}

TEST_P(EveryEffect, StopsWhenAskedAndSaysSo) {
    static const Bitmap source = TestPictures::Face(1000, 300);
    for (const int allowed : {0, 1, 3}) {
        Bitmap picture = source;
        WatchfulSink sink(allowed);
        EXPECT_EQ(Run(picture, &sink), 0) << allowed;
        EXPECT_LT(sink.GetValue(), 100.0f);
    }
}

TEST_P(EveryEffect, RefusesWhatIsNoPicture) {
    std::uint8_t pixel[4] = {1, 2, 3, 4};
    EXPECT_EQ(EffectFunctions[GetParam()](nullptr, 1, 1, LooksFolderText(), nullptr, 0, 100), 0);
    EXPECT_EQ(EffectFunctions[GetParam()](pixel, 0, 1, LooksFolderText(), nullptr, 0, 100), 0);
    EXPECT_EQ(EffectFunctions[GetParam()](pixel, 1, -1, LooksFolderText(), nullptr, 0, 100), 0);
    EXPECT_EQ(pixel[0], 1);
}

INSTANTIATE_TEST_SUITE_P(Fifty, EveryEffect, testing::Range(0, 50));

TEST(EffectTable, HoldsFiftyDistinctFunctionsAndFiles) {
    EXPECT_EQ(std::set<EffectFunction>(EffectFunctions.begin(), EffectFunctions.end()).size(), 50u);
    std::set<std::string> files;
    for (int i = 0; i < 50; ++i) files.insert(LookShelf::FileName(i));
    EXPECT_EQ(files.size(), 50u);
    EXPECT_EQ(LookShelf::FileName(-1), "");
    EXPECT_EQ(LookShelf::FileName(50), "");
}

TEST(EffectFolder, NoneStandsForTheOneBefore) {
    Bitmap first = TestPictures::Face(40, 50), second = first;
    ASSERT_NE(EffectFunctions[3](first.MutablePixels(), 40, 50, LooksFolderText(), nullptr, 0, 100), 0);
    ASSERT_NE(EffectFunctions[3](second.MutablePixels(), 40, 50, nullptr, nullptr, 0, 100), 0);
    EXPECT_TRUE(first == second);
}

TEST(EffectFolder, AMissingOrDamagedRecipeChangesNothing) {
    const auto folder = std::filesystem::temp_directory_path() / "quince_test_looks";
    std::filesystem::create_directories(folder / "Effects");
    std::wstring text = folder.wstring();
    const Bitmap source = TestPictures::Face(40, 50);
    Bitmap picture = source;
    EXPECT_EQ(EffectFunctions[0](picture.MutablePixels(), 40, 50, text.data(), nullptr, 0, 100), 0);
    std::ofstream(folder / "Effects" / LookShelf::FileName(0)) << "[look]\ntitle = X\n[grain]\namount = many\n";
    EXPECT_EQ(EffectFunctions[0](picture.MutablePixels(), 40, 50, text.data(), nullptr, 0, 100), 0);
    std::string error;
    EXPECT_EQ(LookShelf::Take(folder, 0, &error), nullptr);
    EXPECT_EQ(error, LookShelf::FileName(0) + ": line 4: \"many\" is not a number");
    EXPECT_TRUE(picture == source);
    // Mended while the program runs.
    std::ofstream(folder / "Effects" / LookShelf::FileName(0)) << "[look]\ntitle = X\n[colour]\nsaturation = 0\n";
    EXPECT_NE(EffectFunctions[0](picture.MutablePixels(), 40, 50, text.data(), nullptr, 0, 100), 0);
    EXPECT_FALSE(picture == source);
    std::filesystem::remove_all(folder);
    EXPECT_NE(LookShelf::Take(LooksFolder(), 0), nullptr);
}
