// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>

#include "HistorySteps.h"

using namespace HistorySteps;

namespace {

std::unique_ptr<CUndoRedoParams> Basic(int order, int brightness = 0) {
    auto record = std::make_unique<SampleParams>();
    record->order = order;
    record->Brightness = brightness;
    return record;
}

TEST(HistoryStep, RecordsAreInOrderWhateverOrderTheyWereAddedIn) {
    const std::vector<std::vector<int>> additions{{0, 1, 2, 3}, {3, 2, 1, 0}, {2, 0, 3, 1}};
    for (const auto& orders : additions) {
        CHistoryStep step;
        for (int order : orders) step.AddParams(Basic(order));
        ASSERT_EQ(step.Params().size(), 4u);
        for (int i = 0; i < 4; ++i) EXPECT_EQ(step.Params()[i]->order, i);
    }
}

TEST(HistoryStep, RecordsOfEqualOrderAllStay) {
    CHistoryStep step;
    for (int brightness : {1, 2, 3}) step.AddParams(Basic(1, brightness));
    step.AddParams(Basic(0));
    ASSERT_EQ(step.Params().size(), 4u);
    EXPECT_EQ(step.Params()[0]->order, 0);
}

TEST(HistoryStep, NullRecordIsIgnored) {
    CHistoryStep step;
    step.AddParams(nullptr);
    EXPECT_TRUE(step.Params().empty());
}

TEST(HistoryStep, CloneHasTheNameAndAnOwnCloneOfEachRecord) {
    const auto step = Parameters(Colour(5), 7);
    step->SetNameFromKey(QStringLiteral("ids_bianji"));
    const auto clone = step->Clone();
    EXPECT_EQ(clone->GetName(), step->GetName());
    ASSERT_EQ(clone->Params().size(), 2u);
    EXPECT_NE(clone->Params()[1].get(), step->Params()[1].get());
    EXPECT_EQ(RecordAs<SampleParams>(*clone->Params()[1])->Brightness, 7);
}

TEST(HistoryStep, NameIsTheLanguageFilesText) {
    CHistoryStep step;
    step.SetNameFromKey(QStringLiteral("ids_caijian"));
    EXPECT_EQ(step.GetName(), QStringLiteral("ids_caijian!"));
    step.SetNameFromKey(QStringLiteral("no such key"));
    EXPECT_TRUE(step.GetName().isEmpty());
}

TEST(HistoryStep, StepWithoutPixelRecordReadsNothingAndHasNoPath) {
    CHistoryStep empty;
    EXPECT_FALSE(empty.ReadImage());
    EXPECT_TRUE(empty.GetImagePath().isEmpty());
    EXPECT_FALSE(empty.SaveImage(QStringLiteral("nowhere.bin")));
    CHistoryStep other;
    other.AddParams(Basic(0));
    EXPECT_FALSE(other.Image());
    EXPECT_FALSE(other.ReadImage());
    EXPECT_TRUE(other.GetImagePath().isEmpty());
}

TEST(HistoryStep, SaveImageWritesNamesTheFileAndLetsGoOfTheBitmap) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.bin"));
    const auto step = Snapshot(TestPictures::Noise(3, 5, 4, false));
    ASSERT_TRUE(step->SaveImage(path));
    EXPECT_EQ(step->GetImagePath(), path);
    EXPECT_FALSE(step->Image()->image);
    EXPECT_TRUE(step->ReadImage() == TestPictures::Noise(3, 5, 4, false));
}

TEST(HistoryStep, SaveImageThatFailsLeavesTheStepAsItWas) {
    const QTemporaryDir folder;
    const auto step = Snapshot(Colour(1));
    EXPECT_FALSE(step->SaveImage(folder.filePath(QStringLiteral("missing/a.bin"))));
    EXPECT_TRUE(step->GetImagePath().isEmpty());
    EXPECT_EQ(ColourOf(step->Image()->image), 1);
}

TEST(HistoryStep, SetImagePathLetsGoOfEveryPixelRecordsBitmapWithoutSaving) {
    const auto step = Snapshot(Colour(1));
    auto second = std::make_unique<ImageParams>();
    second->order = 1;
    second->image = Colour(2);
    step->AddParams(std::move(second));
    step->SetImagePath(QStringLiteral("base.bin"));
    EXPECT_EQ(step->GetImagePath(), QStringLiteral("base.bin"));
    for (const auto& record : step->Params()) EXPECT_FALSE(RecordAs<ImageParams>(*record)->image);
}

TEST(HistoryStep, MissingFileReadsAsNothing) {
    const auto step = Snapshot(Colour(1));
    step->SetImagePath(QStringLiteral("missing.bin"));
    EXPECT_FALSE(step->ReadImage());
}

}  // namespace
