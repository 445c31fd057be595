// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QDir>
#include <QtCore/QFile>

#include "CViewState.h"
#include "ImageParams.h"
#include "PC_File.h"
#include "ToyLook.h"

namespace {

class LookHistoryTest : public ToyLookTest {
  protected:
    static std::vector<int> Types(const CHistoryStep& step) {
        std::vector<int> types;
        for (const auto& record : step.Params()) types.push_back(record->GetType());
        return types;
    }
    const ToyParams& Record() const { return *RecordAs<ToyParams>(*CurrentStep().Params()[1]); }
    // Makes every further snapshot fail to be written: a folder stands where each file would go.
    void BlockSnapshots() {
        for (int i = 0; i < CHistoryManager::FileCount; ++i)
            QDir().mkpath(history.m_tempDir + QStringLiteral("undoredo%1.bin/x").arg(i));
    }
    void UnblockSnapshots() {
        for (int i = 0; i < CHistoryManager::FileCount; ++i)
            QDir(history.m_tempDir + QStringLiteral("undoredo%1.bin").arg(i)).removeRecursively();
    }
};

const std::vector<int> LookStep{ImageParams::Type, ToyParams::Type};
const std::vector<int> PlainStep{ImageParams::Type};

TEST_F(LookHistoryTest, AStepHoldsTheSourceAndTheRecordAndTheFileTheLook) {
    ASSERT_TRUE(toy->Run(5));
    EXPECT_EQ(Types(CurrentStep()), LookStep);
    EXPECT_EQ(CurrentStep().Params()[1]->order, 1);
    EXPECT_EQ(CurrentStep().GetImagePath(), history.m_originPath) << "no snapshot of its own";
    EXPECT_EQ(Record().preset, 5);
    EXPECT_EQ(Record().Alpha, 100);
    EXPECT_EQ(Record().path, toy->LookFile());
    EXPECT_TRUE(PC_File::ImageReadFrombinary(toy->LookFile().toStdWString()) == With(5));
}

TEST_F(LookHistoryTest, AFinalStepIsASnapshotOfTheBlend) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(40);
    const auto step = toy->BuildStep(true);
    EXPECT_EQ(Types(*step), PlainStep);
    EXPECT_TRUE(step->Image()->save);
    EXPECT_TRUE(step->Image()->image == toy->RenderResult());
}

TEST_F(LookHistoryTest, UndoAndRedoBringLookAndStrengthBack) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(40);
    const Bitmap result = toy->RenderResult();
    ASSERT_TRUE(toy->Undo());
    EXPECT_FALSE(toy->HasLook());
    EXPECT_EQ(toy->Alpha(), 100);
    EXPECT_TRUE(toy->RenderResult() == picture);
    EXPECT_TRUE(toy->View().bitmap == picture);
    EXPECT_FALSE(toy->IsImageChanged());
    ASSERT_TRUE(toy->Redo());
    EXPECT_EQ(toy->Look(), 0x60);
    EXPECT_EQ(toy->Alpha(), 40) << "undo recorded the strength first";
    EXPECT_TRUE(toy->RenderResult() == result);
    EXPECT_EQ(toy->computed, 1) << "the look came from its file";
}

TEST_F(LookHistoryTest, AfterRedoTheNextLookGoesOnInTheSameStep) {
    ASSERT_TRUE(toy->Run(5));
    ASSERT_TRUE(toy->Undo());
    ASSERT_TRUE(toy->Redo());
    ASSERT_TRUE(toy->Run(9));
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(Record().preset, 9);
}

TEST_F(LookHistoryTest, AfterUndoANewLookIsANewStep) {
    ASSERT_TRUE(toy->Run(5));
    ASSERT_TRUE(toy->Undo());
    ASSERT_TRUE(toy->Run(9));
    EXPECT_EQ(history.m_count, 2);
    ASSERT_TRUE(toy->Undo());
    EXPECT_TRUE(toy->RenderResult() == picture);
}

TEST_F(LookHistoryTest, UndoAtTheOldestAndRedoAtTheNewestMoveNothing) {
    EXPECT_FALSE(toy->Undo());
    EXPECT_FALSE(toy->Redo());
    ASSERT_TRUE(toy->Run(5));
    EXPECT_FALSE(toy->Redo());
    EXPECT_EQ(toy->Look(), 5);
}

TEST_F(LookHistoryTest, AMissingDamagedOrWrongLookFileIsMadeAgain) {
    ASSERT_TRUE(toy->Run(5));
    const std::wstring file = toy->LookFile().toStdWString();
    const auto spoil = [&](int how) {
        if (how == 0) QFile::remove(toy->LookFile());
        if (how == 1) {
            ASSERT_TRUE(PC_File::ImageSaveTobinary(TestPictures::Face(10, 10), file));
        }
        if (how == 2) {
            QFile damaged(toy->LookFile());
            ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
            damaged.write("not a picture");
        }
    };
    for (int how = 0; how < 3; ++how) {
        ASSERT_TRUE(toy->Undo());
        spoil(how);
        ASSERT_TRUE(toy->Redo());
        EXPECT_EQ(toy->Look(), 5);
        EXPECT_TRUE(toy->RenderResult() == With(5)) << how;
    }
    EXPECT_EQ(toy->computed, 4);
}

TEST_F(LookHistoryTest, ALookWhoseStepCouldNotBeStoredIsNotLostByRedo) {
    ASSERT_TRUE(toy->Run(5));
    ASSERT_TRUE(toy->Undo());
    BlockSnapshots();
    // The push needs no snapshot, but the step after a failed one does.
    history.m_ring[static_cast<std::size_t>(history.m_current)]->SetImagePath(QString());
    EXPECT_TRUE(toy->Run(9));
    EXPECT_EQ(history.m_currentNo, 2);
    ASSERT_TRUE(toy->HasUnrecorded());
    EXPECT_FALSE(toy->Redo()) << "the look is in no step yet";
    EXPECT_TRUE(toy->RenderResult() == With(9));
    UnblockSnapshots();
    ASSERT_TRUE(toy->CommitStep());
    EXPECT_FALSE(toy->Redo()) << "recorded, it took the place of the step ahead";
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(Record().preset, 9);
}

TEST_F(LookHistoryTest, ALookThatCanNotBeRunAgainLeavesThePictureBeforeIt) {
    ASSERT_TRUE(toy->Run(5));
    auto step = history.CloneCurrent();
    static_cast<ToyParams&>(*step->Params()[1]).preset = ToyLook::Failing;
    ASSERT_TRUE(toy->LoadStep(std::move(step)));
    EXPECT_FALSE(toy->HasLook());
    EXPECT_EQ(toy->Alpha(), 100);
    EXPECT_TRUE(toy->RenderResult() == picture);
}

TEST_F(LookHistoryTest, StepsThatShowNothingChangeNothing) {
    ASSERT_TRUE(toy->Run(5));
    EXPECT_FALSE(toy->LoadStep(nullptr));
    EXPECT_FALSE(toy->LoadStep(std::make_unique<CHistoryStep>()));
    auto headless = std::make_unique<CHistoryStep>();
    headless->AddParams(std::make_unique<ToyParams>());
    EXPECT_FALSE(toy->LoadStep(std::move(headless)));
    EXPECT_EQ(toy->Look(), 5);
    ASSERT_TRUE(QFile::remove(history.m_originPath));
    EXPECT_FALSE(toy->Undo());
    EXPECT_EQ(toy->Look(), 5);
    EXPECT_TRUE(toy->RenderResult() == With(5));
}

TEST_F(LookHistoryTest, AJumpRecordsTheStrengthFirst) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(40);
    ASSERT_TRUE(toy->Jump(0));
    EXPECT_TRUE(toy->RenderResult() == picture);
    ASSERT_TRUE(toy->Jump(1));
    EXPECT_EQ(toy->Alpha(), 40);
}

TEST_F(LookHistoryTest, RevertKeepsTheBlendAsASnapshotAndIsUndone) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(40);
    const Bitmap result = toy->RenderResult();
    ASSERT_TRUE(toy->Revert());
    EXPECT_FALSE(toy->HasLook());
    EXPECT_TRUE(toy->RenderResult() == picture);
    EXPECT_EQ(history.m_count, 3);
    ASSERT_TRUE(toy->Undo());
    EXPECT_FALSE(toy->HasLook());
    EXPECT_TRUE(toy->RenderResult() == result);
    ASSERT_TRUE(toy->Run(9));
    EXPECT_TRUE(toy->RenderResult() == ToyLook::Of(result, 9));
}

TEST_F(LookHistoryTest, LeavingBakesTheBlend) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(40);
    const Bitmap result = toy->RenderResult();
    const Bitmap view = toy->View().bitmap;
    LeaveAndEnter();
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(Types(CurrentStep()), PlainStep);
    EXPECT_TRUE(CurrentStep().ReadImage() == result);
    EXPECT_FALSE(toy->HasLook());
    EXPECT_EQ(toy->Alpha(), 100);
    EXPECT_TRUE(toy->Picture() == result);
    EXPECT_TRUE(toy->View().bitmap == view);
    ASSERT_TRUE(toy->Undo());
    EXPECT_TRUE(toy->RenderResult() == picture);
}

TEST_F(LookHistoryTest, LeavingWithoutALookPushesNoStep) {
    LeaveAndEnter();
    EXPECT_EQ(history.m_count, 1);
    EXPECT_TRUE(toy->RenderResult() == picture);
    EXPECT_FALSE(toy->IsImageChanged());
}

TEST_F(LookHistoryTest, LeavingAfterUndoFinishesTheStepAheadAndKeepsWhatIsShown) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(40);
    const Bitmap result = toy->RenderResult();
    ASSERT_TRUE(toy->Undo());
    toy->Apply();
    EXPECT_TRUE(toy->RenderResult() == picture);
    EXPECT_TRUE(toy->View().bitmap == picture);
    EXPECT_EQ(Types(HeadStep()), PlainStep);
    EXPECT_TRUE(HeadStep().ReadImage() == result);
    NewVisit();
    ASSERT_TRUE(toy->TakeViewState());
    ASSERT_TRUE(toy->Redo());
    EXPECT_TRUE(toy->RenderResult() == result);
}

TEST_F(LookHistoryTest, TheViewGoesOnWhereItWas) {
    toy->SetZoom(2.5);
    toy->PanBy(17, -9);
    ASSERT_TRUE(toy->Run(5));
    const ViewGeometry geometry = toy->Geometry();
    LeaveAndEnter();
    EXPECT_DOUBLE_EQ(toy->Geometry().Zoom(), geometry.Zoom());
    EXPECT_EQ(toy->Geometry().Pan(), geometry.Pan());
}

TEST_F(LookHistoryTest, EnteringNeedsAPictureAndAView) {
    history.SetViewState(nullptr);
    NewVisit();
    EXPECT_FALSE(toy->TakeViewState());
    EXPECT_FALSE(toy->HasPicture());
}

TEST_F(LookHistoryTest, AStepOfAnotherSizeIsFitted) {
    auto step = std::make_unique<CHistoryStep>();
    auto image = std::make_unique<ImageParams>();
    image->image = TestPictures::Face(1000, 500);
    image->save = true;
    step->AddParams(std::move(image));
    ASSERT_TRUE(history.PushStep(step));
    ASSERT_TRUE(toy->Undo());
    ASSERT_TRUE(toy->Redo());
    EXPECT_EQ(toy->Geometry().Image(), QSize(1000, 500));
    EXPECT_TRUE(toy->Geometry().AtFit());
}

TEST_F(LookHistoryTest, ALookWhoseStepCanNotBeStoredStaysPending) {
    ASSERT_TRUE(toy->Run(5));
    toy->SetAlpha(40);
    BlockSnapshots();
    EXPECT_FALSE(toy->Revert());
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Save);
    EXPECT_EQ(toy->Look(), 5);
    EXPECT_EQ(toy->Alpha(), 40);
    EXPECT_TRUE(toy->HasUnrecorded());
    UnblockSnapshots();
}

TEST_F(LookHistoryTest, TheLooksFileGoesWithTheTool) {
    ASSERT_TRUE(toy->Run(5));
    const QString file = toy->LookFile();
    ASSERT_TRUE(QFile::exists(file));
    toy = nullptr;
    EXPECT_FALSE(QFile::exists(file));
}

}  // namespace
