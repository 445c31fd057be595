// SPDX-License-Identifier: GPL-3.0-or-later
// One-click beauty without its window.
#include <gtest/gtest.h>

#include <QtCore/QFile>

#include "AppPaths.h"
#include "BeautyLooks.h"
#include "CMRYiJianMeiYanLogic.h"
#include "ColourDifference.h"
#include "ImageParams.h"
#include "Language.h"
#include "PC_Dsp.h"
#include "PC_File.h"
#include "TestHome.h"
#include "TestPictures.h"
#include "ThumbnailCrop.h"
#include "WatchfulSink.h"

namespace {

Bitmap With(Bitmap picture, int preset) {
    EXPECT_TRUE(BeautyLooks::Run(picture, preset, BeautyLooks::Folder()));
    return picture;
}

class OneClick : public testing::Test {
  protected:
    void SetUp() override {
        history.OpenImage(picture);
        history.SetCurrentBitmap(picture);
        Enter(logic);
    }
    void Enter(CMRYiJianMeiYanLogic& tool) const {
        tool.SetViewSize(260, 320);
        tool.SetSource(picture);
    }
    static const AutoBeautifyParams* RecordOf(const CHistoryStep& step) {
        return step.Params().size() == 2 ? RecordAs<AutoBeautifyParams>(*step.Params()[1]) : nullptr;
    }

    const Bitmap picture = TestPictures::Face(240, 300);
    CHistoryManager history{TestHome::Path() + QStringLiteral("/Temp/OneClick/")};
    CMRYiJianMeiYanLogic logic{history};
};

}  // namespace

TEST_F(OneClick, TheEightLooksHaveTheirTypesInTheOrderOfTheList) {
    constexpr int types[] = {6, 1, 4, 2, 3, 5, 7, 8};
    std::wstring folder = BeautyLooks::Folder();
    for (int preset = 1; preset <= 8; ++preset) {
        Bitmap expected = picture;
        ASSERT_TRUE(
            PC_Dsp::AutoBeauty(types[preset - 1], expected.MutablePixels(), 240, 300, 0, 0, 0, 0, folder.data()));
        ASSERT_TRUE(logic.ApplyLook(preset, nullptr)) << preset;
        EXPECT_TRUE(logic.RenderResult() == expected) << preset;
        EXPECT_FALSE(expected == picture);
        EXPECT_EQ(logic.Preset(), preset);
        EXPECT_EQ(logic.Alpha(), 100);
    }
    EXPECT_EQ(history.m_count, 2) << "one step for the looks of a visit";
}

TEST_F(OneClick, EveryLookHasANameInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        for (int preset = 1; preset <= 8; ++preset) {
            EXPECT_FALSE(BeautyLooks::Name(preset).isEmpty()) << preset;
            EXPECT_FALSE(BeautyLooks::Name(preset).startsWith(QStringLiteral("ids_"))) << preset;
        }
    }
    EXPECT_TRUE(BeautyLooks::Name(0).isEmpty());
    EXPECT_TRUE(BeautyLooks::Name(9).isEmpty());
    EXPECT_EQ(BeautyLooks::Colour(0), 0u);
}

TEST_F(OneClick, NoLookIsNotRun) {
    for (const int preset : {0, -1, 9}) {
        EXPECT_FALSE(logic.ApplyLook(preset, nullptr)) << preset;
        Bitmap same = picture;
        EXPECT_FALSE(BeautyLooks::Run(same, preset, BeautyLooks::Folder()));
        EXPECT_TRUE(same.SharesPixelsWith(picture));
    }
    EXPECT_EQ(logic.Preset(), 0);
    EXPECT_EQ(history.m_count, 1);
    EXPECT_FALSE(logic.IsImageChanged());
}

TEST_F(OneClick, AStepKeepsPresetStrengthAndTheUnblendedResult) {
    ASSERT_TRUE(logic.ApplyLook(3, nullptr));
    logic.SetAlpha(40);
    const Bitmap full = With(picture, 3);
    EXPECT_TRUE(logic.CommitStep());
    const auto step = history.CloneCurrent();
    const AutoBeautifyParams* record = RecordOf(*step);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->preset, 3);
    EXPECT_EQ(record->Alpha, 40);
    EXPECT_EQ(record->path, logic.LookFile());
    EXPECT_TRUE(PC_File::ImageReadFrombinary(record->path.toStdWString()) == full);
    EXPECT_TRUE(step->ReadImage() == picture);
    EXPECT_EQ(step->GetName(), LanguageText(QStringLiteral("ids_meirong")));
    // There and back: the slider's place is not lost, and 100 is still the whole look.
    logic.Undo();
    EXPECT_EQ(logic.Preset(), 0);
    EXPECT_TRUE(logic.RenderResult() == picture);
    logic.Redo();
    EXPECT_EQ(logic.Preset(), 3);
    EXPECT_EQ(logic.Alpha(), 40);
    logic.SetAlpha(100);
    EXPECT_TRUE(logic.RenderResult() == full);
}

TEST_F(OneClick, TheFinalStepHoldsTheBlend) {
    ASSERT_TRUE(logic.ApplyLook(5, nullptr));
    logic.SetAlpha(30);
    const Bitmap blend = logic.RenderResult();
    EXPECT_FALSE(blend == picture);
    EXPECT_FALSE(blend == With(picture, 5));
    logic.SetAlpha(30);
    EXPECT_EQ(logic.Alpha(), 30) << "asking for the result leaves the strength alone";
    logic.Apply();
    ASSERT_EQ(history.m_count, 2);
    const auto step = history.CloneCurrent();
    EXPECT_EQ(step->Params().size(), 1u);
    EXPECT_TRUE(step->ReadImage() == blend);
    EXPECT_TRUE(history.CurrentBitmap() == blend);
}

// The view goes from the source's side and the picture from the look's, each by its own rounding.
TEST_F(OneClick, ViewAndPictureShowTheSameAtEveryStrength) {
    logic.SetViewSize(600, 600);
    ASSERT_DOUBLE_EQ(logic.Geometry().Zoom(), 1.0);
    ASSERT_TRUE(logic.ApplyLook(1, nullptr));
    for (const int percent : {0, 1, 50, 99, 100}) {
        logic.SetAlpha(percent);
        const Bitmap view = logic.View().bitmap, full = logic.RenderResult();
        EXPECT_LE(TestPictures::LargestDifference(view, full), 1) << percent;
        const bool atAnEnd = percent == 0 || percent == 100;
        if (atAnEnd) {
            EXPECT_TRUE(full == view) << percent;
            EXPECT_TRUE(full == (percent == 0 ? picture : With(picture, 1))) << percent;
        }
    }
    // Reduced, the difference is that of the drawing.
    logic.SetZoom(0.5);
    for (const int percent : {1, 50, 99}) {
        logic.SetAlpha(percent);
        const Bitmap view = logic.View().bitmap;
        const Bitmap reduced = PC_Dsp::Resample(logic.RenderResult(), view.Width(), view.Height());
        EXPECT_LT(MeanDeltaE(view, reduced), 0.5) << percent;
    }
}

// What a row of the list promises is what the picture gets: a look of the small crop, and the crop of the look.
TEST_F(OneClick, AThumbnailShowsItsPartOfThePictureAsTheLookLeavesIt) {
    const Bitmap large = TestPictures::Face(900, 1200);
    for (int preset = 1; preset <= 8; ++preset) {
        const Bitmap full = With(large, preset);
        for (const double scale : {1.0, 2.0}) {
            const Bitmap row = With(MakeThumbnail(large, {70, 96}, scale), preset);
            EXPECT_LT(MeanDeltaE(row, MakeThumbnail(full, {70, 96}, scale)), 2.0) << preset << " at " << scale;
        }
        EXPECT_GT(MeanDeltaE(MakeThumbnail(full, {70, 96}, 1.0), MakeThumbnail(large, {70, 96}, 1.0)), 1.0)
            << preset << " changes what is compared";
    }
}

TEST_F(OneClick, AMissingOrOddResultFileRunsTheLookAgain) {
    ASSERT_TRUE(logic.ApplyLook(4, nullptr));
    const Bitmap full = With(picture, 4);
    const auto thereAndBack = [&] {
        logic.Undo();
        logic.Redo();
        EXPECT_EQ(logic.Preset(), 4);
        EXPECT_TRUE(logic.RenderResult() == full);
    };
    thereAndBack();
    ASSERT_TRUE(QFile::remove(logic.LookFile()));
    thereAndBack();
    ASSERT_TRUE(PC_File::ImageSaveTobinary(TestPictures::Plain(24, 30, 0xFF204060), logic.LookFile().toStdWString()));
    thereAndBack();
    QFile odd(logic.LookFile());
    ASSERT_TRUE(odd.open(QIODevice::WriteOnly));
    odd.write("no picture");
    odd.close();
    thereAndBack();
}

TEST_F(OneClick, ItsFileIsNoOtherTools) {
    EXPECT_TRUE(logic.LookFile().endsWith(QStringLiteral("BeautyRes.bin")));
}

TEST_F(OneClick, AStoppedLookLeavesTheFormerOne) {
    ASSERT_TRUE(logic.ApplyLook(2, nullptr));
    logic.SetAlpha(70);
    const Bitmap before = logic.RenderResult();
    WatchfulSink sink(0);
    EXPECT_FALSE(logic.ApplyLook(6, &sink));
    EXPECT_EQ(logic.Preset(), 2);
    EXPECT_EQ(logic.Alpha(), 70);
    EXPECT_TRUE(logic.RenderResult() == before);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(OneClick, ARecordWithoutALookIsThePictureWithoutOne) {
    ASSERT_TRUE(logic.ApplyLook(2, nullptr));
    auto step = history.CloneCurrent();
    auto none = std::make_unique<CHistoryStep>();
    none->AddParams(step->Params()[0]->Clone());
    auto record = std::make_unique<AutoBeautifyParams>();
    record->order = 1;
    record->Alpha = 20;
    none->AddParams(std::move(record));
    EXPECT_TRUE(logic.LoadStep(std::move(none)));
    EXPECT_EQ(logic.Preset(), 0);
    EXPECT_EQ(logic.Alpha(), 100);
    EXPECT_TRUE(logic.RenderResult() == picture);
    EXPECT_FALSE(logic.HasWork());
}

TEST_F(OneClick, LooksReplaceEachOtherInAVisitAndStackAcrossVisits) {
    ASSERT_TRUE(logic.ApplyLook(1, nullptr));
    ASSERT_TRUE(logic.ApplyLook(7, nullptr));
    EXPECT_TRUE(logic.RenderResult() == With(picture, 7));
    logic.Apply();
    logic.Reset();
    ASSERT_TRUE(logic.TakeViewState());
    EXPECT_EQ(logic.Preset(), 0);
    ASSERT_TRUE(logic.ApplyLook(1, nullptr));
    EXPECT_TRUE(logic.RenderResult() == With(With(picture, 7), 1));
    EXPECT_EQ(history.m_count, 3);
}
