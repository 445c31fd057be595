// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QDir>
#include <QtCore/QFile>

#include "ImageParams.h"
#include "PC_File.h"
#include "RotateFixture.h"

namespace {

class RotateHistory : public RotateFixture {
  protected:
    void SetUp() override { Open(TestPictures::Noise(60, 40, 1)); }
    const CHistoryStep& CurrentStep() const { return *history.m_ring[static_cast<std::size_t>(history.m_current)]; }
    // A folder in the file's place: nothing can be written there.
    void BlockTempFile() const {
        QFile::remove(logic->TempFilePath());
        ASSERT_TRUE(QDir().mkpath(logic->TempFilePath()));
    }
    void TearDown() override {
        if (logic) QDir().rmdir(logic->TempFilePath());
    }
};

}  // namespace

TEST_F(RotateHistory, AnUnchangedVisitPushesNoStep) {
    for (int i = 0; i < 4; ++i) logic->TurnRight();
    EXPECT_EQ(logic->BuildStep(true), nullptr);
    logic->Apply();
    EXPECT_EQ(history.m_count, 1);
    EXPECT_TRUE(history.IsOriginal());
}

TEST_F(RotateHistory, OneVisitIsOneStepWithTheFinalResult) {
    logic->TurnRight();
    logic->SetAngle(10);
    logic->FlipLeftRight();
    EXPECT_EQ(history.m_count, 1) << "nothing is pushed before the tool is left";
    const Bitmap result = Result();
    logic->Apply();
    EXPECT_EQ(history.m_count, 2);
    EXPECT_TRUE(history.CurrentBitmap() == result);
    EXPECT_TRUE(CurrentStep().Clone()->ReadImage() == result);
    ASSERT_EQ(CurrentStep().Params().size(), 1u);
}

TEST_F(RotateHistory, TheStepIsASnapshotUnderTheToolsName) {
    logic->TurnLeft();
    const auto step = logic->BuildStep(false);
    ASSERT_NE(step, nullptr);
    ASSERT_EQ(step->Params().size(), 1u);
    const auto* image = dynamic_cast<const ImageParams*>(step->Params().front().get());
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE(image->image == Result());
    EXPECT_TRUE(image->save);
}

TEST_F(RotateHistory, LeavingDuringADragHandsOnTheFullResult) {
    logic->DragAngle(25);
    logic->Apply();
    EXPECT_TRUE(history.CurrentBitmap() == Turned(picture, 25));
    EXPECT_TRUE(CurrentStep().Clone()->ReadImage() == Turned(picture, 25));
}

TEST_F(RotateHistory, ADragThatWasNotReleasedIsStillAChange) {
    logic->DragAngle(25);
    EXPECT_TRUE(logic->IsImageChanged());
    EXPECT_TRUE(logic->HasUnrecorded());
}

TEST_F(RotateHistory, UndoRecordsPendingWorkFirst) {
    logic->TurnRight();
    const Bitmap turned = Result();
    ASSERT_TRUE(logic->HasUnrecorded());
    EXPECT_TRUE(logic->Undo());
    EXPECT_TRUE(Result() == picture);
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_EQ(history.m_count, 2);
    EXPECT_TRUE(logic->Redo());
    EXPECT_TRUE(Result() == turned);
    EXPECT_FALSE(logic->HasUnrecorded());
}

TEST_F(RotateHistory, UndoDuringADragRecordsTheFullResult) {
    logic->DragAngle(8);
    EXPECT_TRUE(logic->Undo());
    EXPECT_TRUE(Result() == picture);
    EXPECT_FALSE(logic->IsDragging());
    EXPECT_TRUE(logic->Redo());
    EXPECT_TRUE(Result() == Turned(picture, 8));
}

TEST_F(RotateHistory, UndoAtTheOldestStepMovesNothing) {
    EXPECT_FALSE(logic->Undo());
    EXPECT_TRUE(Result() == picture);
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(RotateHistory, AJumpRecordsPendingWorkFirstADragToo) {
    logic->SetAngle(6);
    LeaveAndEnter();
    logic->DragAngle(9);
    EXPECT_TRUE(logic->Jump(0));
    EXPECT_TRUE(Result() == picture);
    EXPECT_EQ(history.m_count, 3);
    EXPECT_TRUE(logic->Jump(2));
    EXPECT_TRUE(Result() == Turned(Turned(picture, 6), 9));
}

TEST_F(RotateHistory, AfterAJumpToItsOwnStepTheWayBackIsRecordedToo) {
    logic->TurnRight();
    logic->Jump(1);  // records the turn, and stands on it already
    ASSERT_EQ(history.m_count, 2);
    EXPECT_FALSE(logic->HasUnrecorded());
    logic->TurnLeft();
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_TRUE(logic->HasUnrecorded()) << "the history holds the turned picture";
    logic->Apply();
    EXPECT_EQ(history.m_count, 3);
    EXPECT_TRUE(CurrentStep().Clone()->ReadImage() == picture);
}

TEST_F(RotateHistory, RevertRecordsPendingWorkAndGoesBackToTheOpenedPicture) {
    logic->TurnRight();
    EXPECT_TRUE(logic->Revert());
    EXPECT_TRUE(Result() == picture);
    EXPECT_TRUE(history.IsOriginal());
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_TRUE(logic->Undo());
    EXPECT_TRUE(Result() == Reoriented(picture, Rotate90FlipNone));
}

TEST_F(RotateHistory, EveryMoveMakesItsPictureTheNewEntry) {
    logic->TurnRight();
    LeaveAndEnter();
    const Bitmap entry = Result();
    logic->SetAngle(40);
    EXPECT_TRUE(logic->RestoreEntry());
    EXPECT_TRUE(Result() == entry);
    logic->Undo();
    logic->SetAngle(40);
    EXPECT_TRUE(logic->RestoreEntry());
    EXPECT_TRUE(Result() == picture);
}

TEST_F(RotateHistory, ImageIsChangedWhileTheHistoryIsNotAtTheOriginal) {
    logic->TurnRight();
    LeaveAndEnter();
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_TRUE(logic->IsImageChanged());
}

TEST_F(RotateHistory, TheViewGoesOnToTheNextTool) {
    logic->SetAngle(10);
    const ViewGeometry geometry = logic->Geometry();
    logic->Apply();
    const CViewState* state = history.ViewState();
    ASSERT_NE(state, nullptr);
    EXPECT_DOUBLE_EQ(state->zoom, geometry.Zoom());
    EXPECT_EQ(QPoint(state->x, state->y), geometry.Pan());
}

TEST_F(RotateHistory, TheEntryPictureLiesInTheTempFile) {
    EXPECT_TRUE(logic->TempFilePath().endsWith(QStringLiteral("/Temp/UndoTemp/Rotatetmp.bin")));
    EXPECT_TRUE(PC_File::ImageReadFrombinary(logic->TempFilePath().toStdWString()) == picture);
    const QString path = logic->TempFilePath();
    logic = nullptr;
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(RotateHistory, AnEntryPictureThatCouldNotBeWrittenIsKept) {
    BlockTempFile();
    const Bitmap other = TestPictures::Noise(33, 21, 9);
    logic->SetSource(other);
    logic->TurnRight();
    EXPECT_TRUE(logic->RestoreEntry());
    EXPECT_TRUE(Result() == other);
}

TEST_F(RotateHistory, AnEntryPictureThatCanNotBeReadLeavesEverythingAsItIs) {
    logic->TurnRight();
    logic->SetAngle(3);
    const Bitmap before = Result();
    QFile file(logic->TempFilePath());
    ASSERT_TRUE(file.resize(100));
    EXPECT_FALSE(logic->RestoreEntry());
    EXPECT_TRUE(Result() == before);
    EXPECT_EQ(logic->State().Angle(), 3);
    EXPECT_TRUE(logic->HasUnrecorded());
    EXPECT_TRUE(logic->CanRestore());
}

TEST_F(RotateHistory, ATurnedPictureIsSavedWithWhiteCornersWhereTheFormatHasNoAlpha) {
    Open(TestPictures::Plain(200, 120, 0xFF204060));
    logic->SetAngle(20);
    const std::wstring path = (TestHome::Path() + QStringLiteral("/turned.jpg")).toStdWString();
    PC_File files;
    ASSERT_NE(files.OnSaveQuick(path.c_str(), Result(), VN_IMAGE_FORMAT_JPEG, 95), 0);
    const Bitmap saved = files.OnLoadImage(path.c_str(), nullptr, 0, 100, nullptr);
    ASSERT_EQ(saved.Width(), Result().Width());
    for (const int x : {0, saved.Width() - 1})
        for (const int y : {0, saved.Height() - 1})
            EXPECT_GE(TestPictures::PixelAt(saved, x, y) & 0xFF, 0xFCu) << x << ", " << y;
    // PNG and BMP have alpha; what takes no notice of it sees white there, too.
    for (const int format : {VN_IMAGE_FORMAT_PNG, VN_IMAGE_FORMAT_BMP}) {
        ASSERT_NE(files.OnSaveQuick(path.c_str(), Result(), format, 95), 0);
        const Bitmap kept = files.OnLoadImage(path.c_str(), nullptr, 0, 100, nullptr);
        EXPECT_EQ(TestPictures::PixelAt(kept, 0, 0), 0x00FFFFFFu) << format;
    }
}
