// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include "CChunCaiLogic.h"
#include "CYaChiMBLogic.h"
#include "CYanJingBSLogic.h"
#include "ImageParams.h"
#include "PC_Dsp.h"
#include "PlainBrush.h"
#include "TestHome.h"
#include "TestPictures.h"
#include "TintParams.h"

namespace {

Bitmap Recoloured(Bitmap picture, int red, int green, int blue, int brightness = 0) {
    PC_Dsp::Color_Channel_Composite(picture, red, green, blue, nullptr, 0, 100);
    PC_Dsp::LightNew(picture.MutablePixels(), picture.Width(), picture.Height(), brightness, 3, nullptr, 0, 100);
    return picture;
}

class MaskBrush : public testing::Test {
  protected:
    void SetUp() override {
        picture = TestPictures::Face(120, 90);
        history.OpenImage(picture);
        history.SetCurrentBitmap(picture);
        lips = std::make_unique<CChunCaiLogic>(history);
        lips->SetViewSize(200, 150);
        lips->SetSource(picture);
        plain.Take(picture, Recoloured(picture, 255, 0, 0));
    }
    // A stroke of one stamp, as the canvas makes it.
    void Press(int x, int y) {
        const QPoint at = lips->Geometry().ViewOffset() + QPoint(x, y);
        ASSERT_TRUE(lips->BeginStroke(at));
        lips->EndStroke();
    }
    void PlainPress(int x, int y, bool erase = false) {
        plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, 20, x - 20, y - 20, erase, erase ? 0.0 : 255 * (0.5 / 255.0), true);
    }

    Bitmap picture;
    CHistoryManager history{TestHome::Path() + QStringLiteral("/Temp/Brush/")};
    std::unique_ptr<CChunCaiLogic> lips;
    PlainBrush plain;
};

}  // namespace

TEST_F(MaskBrush, StartsWithTheToolsDefaults) {
    EXPECT_EQ(lips->PenSize(), 40);
    EXPECT_DOUBLE_EQ(lips->Strength(), 0.5);
    EXPECT_EQ(lips->Brightness(), 0);
    EXPECT_EQ(CYaChiMBLogic(history).PenSize(), 60);
    EXPECT_DOUBLE_EQ(CYaChiMBLogic(history).Strength(), 0.9);
    EXPECT_EQ(CYanJingBSLogic(history).PenSize(), 60);
    EXPECT_DOUBLE_EQ(CYanJingBSLogic(history).Strength(), 0.8);
    EXPECT_EQ(CYanJingBSLogic(history).Color(), 0xFFB15F1Du);
}

TEST_F(MaskBrush, EnteringIsNoWorkAndLeavingThenPushesNothing) {
    EXPECT_FALSE(lips->IsImageChanged());
    EXPECT_TRUE(lips->Picture().SharesPixelsWith(picture)) << "pixels are shared until they differ";
    lips->ComposeFull(0.2);
    lips->SetBrightnessFull(10);
    EXPECT_DOUBLE_EQ(lips->Strength(), 0.2) << "kept, though nothing is painted";
    EXPECT_FALSE(lips->HasWork());
    lips->Apply();
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(MaskBrush, AStrokeStampsAndIsRecordedWithItsMask) {
    Press(60, 45);
    PlainPress(60, 45);
    EXPECT_TRUE(lips->Picture() == plain.working);
    EXPECT_EQ(history.m_count, 2);
    const auto step = history.CloneCurrent();
    ASSERT_EQ(step->Params().size(), 2u);
    EXPECT_TRUE(step->ReadImage() == picture) << "the base, whose file is that of the step before";
    const auto* record = RecordAs<LipTintParams>(*step->Params()[1]);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->order, 1);
    EXPECT_EQ(record->strength, 50);
    EXPECT_EQ(record->brightness, 0);
    EXPECT_EQ(record->path, lips->MaskFile());
    EXPECT_TRUE(QFile::exists(lips->MaskFile()));
}

TEST_F(MaskBrush, AllStrokesOfAVisitShareOneStep) {
    for (const int x : {20, 50, 80}) Press(x, 45);
    EXPECT_EQ(history.m_count, 2);
    lips->Undo();
    EXPECT_TRUE(lips->Picture() == picture);
    EXPECT_EQ(history.m_currentNo, 1);
}

TEST_F(MaskBrush, AMoveOfLessThanAQuarterOfTheSideStampsNothing) {
    const QPoint at = lips->Geometry().ViewOffset() + QPoint(60, 45);
    ASSERT_TRUE(lips->BeginStroke(at));
    const Bitmap once = lips->Picture();
    EXPECT_TRUE(lips->MoveStroke(at + QPoint(5, 4)).isEmpty());
    EXPECT_TRUE(lips->Picture() == once);
    EXPECT_FALSE(lips->MoveStroke(at + QPoint(5, 5)).isEmpty());
    EXPECT_FALSE(lips->Picture() == once);
}

TEST_F(MaskBrush, APressOutsideThePictureIsNoStroke) {
    EXPECT_FALSE(lips->BeginStroke(lips->Geometry().ViewOffset() - QPoint(3, 3)));
    EXPECT_FALSE(lips->HasWork());
}

TEST_F(MaskBrush, TheSliderComposesThePictureAnewAndOverwritesTheStep) {
    Press(60, 45);
    PlainPress(60, 45);
    lips->ComposeFull(0.8);
    lips->CommitStep();
    EXPECT_TRUE(lips->Picture() == plain.Composed(0.8));
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(RecordAs<LipTintParams>(*history.CloneCurrent()->Params()[1])->strength, 80);
    lips->ComposeFull(7.0);
    EXPECT_DOUBLE_EQ(lips->Strength(), 1.0);
    lips->ComposeFull(-1.0);
    EXPECT_TRUE(lips->Picture() == picture);
}

TEST_F(MaskBrush, TheStrengthOfARecordIsCutOff) {
    Press(60, 45);
    lips->ComposeFull(29 / 100.0);
    lips->CommitStep();
    EXPECT_EQ(RecordAs<LipTintParams>(*history.CloneCurrent()->Params()[1])->strength, 28);
}

TEST_F(MaskBrush, WhileASliderMovesTheViewShowsWhatTheReleaseWillShow) {
    lips->SetViewSize(120, 90);
    lips->SetZoom(1.0);
    Press(60, 45);
    PlainPress(60, 45);
    lips->ComposeView(0.9);
    EXPECT_TRUE(lips->View().bitmap == plain.Composed(0.9));
    EXPECT_TRUE(lips->HasUnrecorded());
    EXPECT_TRUE(lips->RenderResult() == plain.Composed(0.9)) << "asked for before the release";
    lips->ComposeFull(0.9);
    EXPECT_TRUE(lips->View().bitmap == plain.Composed(0.9));
}

TEST_F(MaskBrush, BrightnessIsPreviewedAndThenComposed) {
    lips->SetViewSize(120, 90);
    lips->SetZoom(1.0);
    Press(60, 45);
    PlainPress(60, 45);
    plain.processed = Recoloured(picture, 255, 0, 0, 30);
    lips->SetBrightnessView(30);
    EXPECT_TRUE(lips->View().bitmap == plain.Composed(0.5));
    lips->SetBrightnessFull(30);
    EXPECT_TRUE(lips->Picture() == plain.Composed(0.5));
}

TEST_F(MaskBrush, AStrokeAfterAPreviewThatWasNeverReleasedPaintsTheNewBrightness) {
    Press(60, 45);
    PlainPress(60, 45);
    lips->SetBrightnessView(30);
    Press(20, 45);
    plain.processed = Recoloured(picture, 255, 0, 0, 30);
    plain.working = plain.Composed(0.5);
    plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, 20, -5, 25, false, 255 * (0.5 / 255.0), true);
    EXPECT_TRUE(lips->Picture() == plain.working);
}

TEST_F(MaskBrush, AColourChangesEverythingThatIsPaintedAndTheSameColourRunsNothing) {
    Press(60, 45);
    PlainPress(60, 45);
    EXPECT_FALSE(lips->SetColor(255, 0, 0, nullptr));
    EXPECT_TRUE(lips->SetColor(40, 90, 200, nullptr));
    plain.processed = Recoloured(picture, 40, 90, 200);
    EXPECT_TRUE(lips->Picture() == plain.Composed(0.5));
}

TEST_F(MaskBrush, ErasingTakesTheColourAwayAlsoFromTheNextComposition) {
    Press(60, 45);
    PlainPress(60, 45);
    lips->SetErase(true);
    for (int n = 0; n < 12; ++n) {
        Press(60, 45);
        PlainPress(60, 45, true);
    }
    EXPECT_TRUE(lips->Picture() == plain.working);
    lips->ComposeFull(1.0);
    EXPECT_TRUE(lips->Picture() == plain.Composed(1.0));
    EXPECT_EQ(TestPictures::PixelAt(lips->Picture(), 60, 45), TestPictures::PixelAt(picture, 60, 45));
}

TEST_F(MaskBrush, RedoBringsMaskStrengthAndBrightnessBack) {
    Press(60, 45);
    PlainPress(60, 45);
    lips->SetBrightnessFull(20);
    lips->ComposeFull(0.75);
    lips->CommitStep();
    lips->Undo();
    EXPECT_FALSE(lips->HasPaint());
    lips->ComposeFull(0.1);
    lips->SetBrightnessFull(0);
    ASSERT_TRUE(lips->Redo());
    EXPECT_DOUBLE_EQ(lips->Strength(), 0.75);
    EXPECT_EQ(lips->Brightness(), 20);
    plain.processed = Recoloured(picture, 255, 0, 0, 20);
    EXPECT_TRUE(lips->Picture() == plain.Composed(0.75));
    Press(20, 45);
    EXPECT_EQ(history.m_count, 2) << "the visit goes on in its step";
}

TEST_F(MaskBrush, LeavingTurnsTheStepIntoASnapshotOfTheResult) {
    Press(60, 45);
    const Bitmap result = lips->Picture();
    lips->Apply();
    EXPECT_EQ(history.m_count, 2);
    const auto step = history.CloneCurrent();
    EXPECT_EQ(step->Params().size(), 1u);
    EXPECT_TRUE(step->ReadImage() == result);
    EXPECT_TRUE(history.CurrentBitmap() == result);
}

TEST_F(MaskBrush, LeavingAfterAnUndoMakesTheStepAheadASnapshotToo) {
    Press(60, 45);
    PlainPress(60, 45);
    lips->Undo();
    lips->Apply();
    EXPECT_EQ(history.m_currentNo, 1);
    EXPECT_TRUE(history.CurrentBitmap() == picture);
    EXPECT_TRUE(lips->Picture() == picture) << "the tool still shows the step that it stands on";
    const auto head = history.CloneHead();
    EXPECT_EQ(head->Params().size(), 1u);
    EXPECT_TRUE(head->ReadImage() == plain.Composed(0.5));
}

TEST_F(MaskBrush, RevertKeepsTheWorkAsAStepAndGoesToTheOpenedPicture) {
    Press(60, 45);
    const Bitmap result = lips->Picture();
    ASSERT_TRUE(lips->Revert());
    EXPECT_TRUE(lips->Picture() == picture);
    EXPECT_FALSE(lips->HasPaint());
    EXPECT_EQ(history.m_count, 3);
    lips->Undo();
    EXPECT_TRUE(lips->Picture() == result);
}

TEST_F(MaskBrush, WithoutItsMaskAStepShowsItsPictureAndTheUserIsToldOnce) {
    for (const bool damaged : {false, true}) {
        Press(60, 45);
        lips->Undo();
        if (damaged)
            BrushMask({9, 9}).Save(lips->MaskFile());
        else
            QFile::remove(lips->MaskFile());
        lips->Redo();
        EXPECT_TRUE(lips->Picture() == picture);
        EXPECT_FALSE(lips->HasPaint());
        EXPECT_FALSE(lips->HasParameters());
        EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Read);
        EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);
        lips->Undo();
    }
}

TEST_F(MaskBrush, ATransparentPictureIsFlattenedOnWhite) {
    const Bitmap glass = TestPictures::Plain(40, 30, 0x80204060);
    lips->SetSource(glass);
    EXPECT_TRUE(lips->Picture().IsOpaque());
    EXPECT_EQ(TestPictures::PixelAt(lips->Picture(), 3, 3), 0xFF90A0B0u);
}

TEST_F(MaskBrush, TheFilesAreMadeAndGoWithTheTool) {
    const QString source = lips->SourceFile(), mask = lips->MaskFile();
    EXPECT_TRUE(source.endsWith(QStringLiteral("ChunCaiMask.bin")));
    EXPECT_TRUE(mask.endsWith(QStringLiteral("ChunCaitmp.bin")));
    EXPECT_TRUE(QFile::exists(source));
    Press(60, 45);
    EXPECT_TRUE(QFile::exists(mask));
    lips.reset();
    EXPECT_FALSE(QFile::exists(source));
    EXPECT_FALSE(QFile::exists(mask));
}

TEST_F(MaskBrush, ThePenFollowsTheZoom) {
    lips->SetZoom(2.0);
    Press(100, 80);
    plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, 10, 40, 30, false, 255 * (0.5 / 255.0), true);
    EXPECT_TRUE(lips->Picture() == plain.working);
    lips->SetScreenScale(2.0);
    Press(100, 80);
    plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, 20, 30, 20, false, 255 * (0.5 / 255.0), true);
    EXPECT_TRUE(lips->Picture() == plain.working);
}

TEST_F(MaskBrush, EyeColourKeepsItsColourInTheRecordAndTeethHaveNone) {
    CYanJingBSLogic eyes(history);
    eyes.SetViewSize(200, 150);
    eyes.SetSource(picture);
    eyes.SetColor(44, 138, 255, nullptr);
    ASSERT_TRUE(eyes.BeginStroke(eyes.Geometry().ViewOffset() + QPoint(60, 45)));
    eyes.EndStroke();
    const Bitmap painted = eyes.Picture();
    const auto* record = RecordAs<EyeColorParams>(*history.CloneCurrent()->Params()[1]);
    const auto step = history.CloneCurrent();
    record = RecordAs<EyeColorParams>(*step->Params()[1]);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->red, 44);
    EXPECT_EQ(record->green, 138);
    EXPECT_EQ(record->blue, 255);
    EXPECT_EQ(record->strength, 80);
    eyes.Undo();
    eyes.SetColor(1, 2, 3, nullptr);
    eyes.Redo();
    EXPECT_EQ(eyes.Color(), 0xFF2C8AFFu);

    history.OpenImage(picture);
    CYaChiMBLogic teeth(history);
    teeth.SetViewSize(200, 150);
    teeth.SetSource(picture);
    ASSERT_TRUE(teeth.BeginStroke(teeth.Geometry().ViewOffset() + QPoint(60, 45)));
    teeth.EndStroke();
    const auto toothStep = history.CloneCurrent();
    ASSERT_TRUE(RecordAs<TeethWhiteParams>(*toothStep->Params()[1]));
    EXPECT_EQ(RecordAs<TeethWhiteParams>(*toothStep->Params()[1])->strength, 90);
}
