// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QDir>
#include <QtCore/QFile>

#include "AdjustFixture.h"
#include "CAdjustLogic.h"
#include "PC_Dsp.h"

using namespace AdjustIndex;

namespace {

const AdjustPanelValues NoValues{};

class AdjustHistoryTest : public AdjustFixture {
  protected:
    static std::vector<int> Types(const CHistoryStep& step) {
        std::vector<int> types;
        for (const auto& record : step.Params()) types.push_back(record->GetType());
        return types;
    }
    static std::vector<int> Orders(const CHistoryStep& step) {
        std::vector<int> orders;
        for (const auto& record : step.Params()) orders.push_back(record->order);
        return orders;
    }
    static bool IsPlain(const CHistoryStep& step) { return Types(step) == std::vector<int>{ImageParams::Type}; }

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

TEST_F(AdjustHistoryTest, AllMovesOfOneVisitMakeOneStep) {
    Open(TestPictures::Face(120, 90));
    for (const int value : {5, 10, 15, 20}) SetAndCommit(Brightness, value);
    SetAndCommit(Contrast, 30);
    SetAndCommit(Hue, 40);  // bakes, and still is the same visit
    EXPECT_EQ(history.m_count, 2);
    LeaveAndEnter();
    SetAndCommit(Brightness, 10);
    EXPECT_EQ(history.m_count, 3);
}

TEST_F(AdjustHistoryTest, NothingIsRecordedWithoutAChange) {
    Open(TestPictures::Face(60, 40));
    EXPECT_EQ(logic->BuildStep(false), nullptr);
    EXPECT_EQ(logic->BuildStep(true), nullptr);
    logic->SetValue(Brightness, 10);
    logic->SetValue(Brightness, 0);
    EXPECT_EQ(logic->BuildStep(false), nullptr);
    EXPECT_FALSE(logic->CommitStep());
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(AdjustHistoryTest, AStepHoldsTheBaseAndOnlyTheRecordsThatAreSet) {
    Open(TestPictures::Face(60, 40));
    logic->SetValue(Brightness, 10);
    const auto basic = logic->BuildStep(false);
    EXPECT_EQ(Types(*basic), (std::vector<int>{8, 2}));
    EXPECT_EQ(Orders(*basic), (std::vector<int>{0, 1}));
    EXPECT_FALSE(basic->Image()->save);
    EXPECT_TRUE(basic->Image()->image == picture);

    logic->SetValue(Hue, 20);
    const auto advanced = logic->BuildStep(false);
    EXPECT_EQ(Types(*advanced), (std::vector<int>{8, 3}));
    EXPECT_TRUE(advanced->Image()->save);  // a baked base needs a file of its own
    EXPECT_EQ(RecordAs<AdvanceAdjustParams>(*advanced->Params()[1])->Hue, 20);
}

TEST_F(AdjustHistoryTest, AFinalStepIsASnapshotOfTheResultAlone) {
    Open(TestPictures::Face(60, 40));
    logic->SetValue(Brightness, 50);
    const auto step = logic->BuildStep(true);
    EXPECT_TRUE(IsPlain(*step));
    EXPECT_TRUE(step->Image()->save);
    EXPECT_EQ(step->Image()->order, 0);
    EXPECT_TRUE(step->Image()->image == logic->RenderResult());
}

TEST_F(AdjustHistoryTest, ASceneStepNamesTheFileWithItsResult) {
    Open(TestPictures::Face(60, 40));
    ASSERT_TRUE(logic->ApplyScenario(4, nullptr));
    EXPECT_EQ(Types(CurrentStep()), (std::vector<int>{8, 1}));
    const auto* record = RecordAs<AutoOptimizeParams>(*CurrentStep().Params()[1]);
    EXPECT_EQ(record->ScenarioIndex, 4);
    EXPECT_EQ(record->path, logic->SceneFilePath());
    EXPECT_TRUE(PC_File::ImageReadFrombinary(record->path.toStdWString()) == logic->RenderResult());
}

TEST_F(AdjustHistoryTest, UndoAndRedoBringTheSlidersBack) {
    Open(TestPictures::Face(120, 90));
    SetAndCommit(Brightness, 30);
    SetAndCommit(Sharpness, -40);
    const AdjustPanelValues values = logic->GetPanelValues();
    const Bitmap result = logic->RenderResult();
    ASSERT_TRUE(logic->Undo());
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_TRUE(logic->View().bitmap == picture);
    EXPECT_FALSE(logic->IsImageChanged());
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->GetPanelValues(), values);
    EXPECT_TRUE(logic->RenderResult() == result);
    EXPECT_TRUE(logic->View().bitmap == result);
    SetAndCommit(Brightness, 50);  // goes on in the step that it came back to
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(AdjustHistoryTest, UndoAtTheOldestAndRedoAtTheNewestMoveNothing) {
    Open(TestPictures::Face(60, 40));
    EXPECT_FALSE(logic->Undo());
    EXPECT_FALSE(logic->Redo());
    SetAndCommit(Brightness, 30);
    EXPECT_FALSE(logic->Redo());
    EXPECT_EQ(logic->GetValue(Brightness), 30);
}

TEST_F(AdjustHistoryTest, UndoRecordsAnUnsettledValueFirst) {
    Open(TestPictures::Face(60, 40));
    logic->SetValue(Brightness, 30);
    ASSERT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == picture);
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->GetValue(Brightness), 30);
}

TEST_F(AdjustHistoryTest, AResetLeavesNoTraceUntilUndoRecordsIt) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    logic->ResetBasic();
    EXPECT_EQ(Types(CurrentStep()), (std::vector<int>{8, 2}));
    ASSERT_TRUE(logic->Undo());
    EXPECT_EQ(history.m_currentNo, 1);
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(AdjustHistoryTest, ABakedBaseSurvivesUndoAndRedo) {
    Open(TestPictures::Face(120, 90));
    SetAndCommit(Hue, 40);
    SetAndCommit(Contrast, 30);
    const Bitmap base = logic->State().BaseBitmap;
    const Bitmap result = logic->RenderResult();
    ASSERT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == picture);
    ASSERT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->State().BaseBitmap == base);
    EXPECT_TRUE(logic->RenderResult() == result);
}

TEST_F(AdjustHistoryTest, AfterUndoAndRedoAnotherSceneStillStartsFromTheBase) {
    Open(TestPictures::Face(120, 90));
    logic->SetValue(Contrast, 30);  // makes the base of the scenes a baked one
    const Bitmap base = logic->RenderResult();
    ASSERT_TRUE(logic->ApplyScenario(1, nullptr));
    ASSERT_TRUE(logic->Undo());
    ASSERT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->RenderResult() == SceneOf(base, 1));
    ASSERT_TRUE(logic->ApplyScenario(2, nullptr));
    EXPECT_TRUE(logic->RenderResult() == SceneOf(base, 2));
    logic->ResetScenario();
    EXPECT_TRUE(logic->RenderResult() == base);
}

TEST_F(AdjustHistoryTest, AMissingOrDamagedSceneFileIsComputedAgain) {
    Open(TestPictures::Face(120, 90));
    ASSERT_TRUE(logic->ApplyScenario(3, nullptr));
    const Bitmap scene = logic->RenderResult();
    ASSERT_TRUE(logic->Undo());
    ASSERT_TRUE(QFile::remove(logic->SceneFilePath()));
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->GetPanelValues()[0], 3);
    EXPECT_TRUE(logic->RenderResult() == scene);

    ASSERT_TRUE(logic->Undo());
    QFile file(logic->SceneFilePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a picture");
    file.close();
    ASSERT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->RenderResult() == scene);
}

TEST_F(AdjustHistoryTest, AnUnreadableSnapshotTakesTheMoveBack) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    const Bitmap result = logic->RenderResult();
    ASSERT_TRUE(QFile::remove(history.m_originPath));
    EXPECT_FALSE(logic->Undo());
    EXPECT_EQ(history.m_currentNo, 2);
    EXPECT_EQ(logic->GetValue(Brightness), 30);
    EXPECT_TRUE(logic->RenderResult() == result);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Read);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);
    SetAndCommit(Brightness, 40);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(AdjustHistoryTest, OnlyAStepThatBeginsWithAPixelRecordIsLoaded) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    EXPECT_FALSE(logic->LoadStep(nullptr));
    EXPECT_FALSE(logic->LoadStep(std::make_unique<CHistoryStep>()));
    auto foreign = std::make_unique<CHistoryStep>();
    foreign->AddParams(std::make_unique<BasicAdjustParams>());
    EXPECT_FALSE(logic->LoadStep(std::move(foreign)));
    EXPECT_EQ(logic->GetValue(Brightness), 30);
}

TEST_F(AdjustHistoryTest, RecordsOfOtherToolsAreIgnored) {
    Open(TestPictures::Face(60, 40));
    auto step = std::make_unique<CHistoryStep>();
    auto image = std::make_unique<ImageParams>();
    image->path = history.m_originPath;
    step->AddParams(std::move(image));
    struct Foreign : ParamsOf<Foreign, 77> {};
    auto foreign = std::make_unique<Foreign>();
    foreign->order = 1;
    step->AddParams(std::move(foreign));
    EXPECT_TRUE(logic->LoadStep(std::move(step)));
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_FALSE(logic->HasWork());
}

TEST_F(AdjustHistoryTest, AStepOfAnotherSizeIsFitted) {
    Open(TestPictures::Face(1200, 900));
    const Bitmap small = TestPictures::Face(300, 200);
    auto step = std::make_unique<CHistoryStep>();
    auto image = std::make_unique<ImageParams>();
    image->image = small;
    image->save = true;
    step->AddParams(std::move(image));
    ASSERT_TRUE(history.PushStep(step));
    ASSERT_TRUE(logic->Undo());
    logic->SetZoom(2.0);
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->Geometry().Image(), QSize(300, 200));
    EXPECT_DOUBLE_EQ(logic->Geometry().Zoom(), 1.0);
    EXPECT_TRUE(logic->View().bitmap == small);
}

TEST_F(AdjustHistoryTest, JumpGoesToARowAndRecordsPendingWork) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    LeaveAndEnter();
    logic->SetValue(Contrast, 20);
    ASSERT_TRUE(logic->Jump(0));
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_EQ(history.m_count, 3);
    ASSERT_TRUE(logic->Jump(2));
    EXPECT_EQ(logic->GetValue(Contrast), 20);
    EXPECT_FALSE(logic->Jump(7));
    EXPECT_EQ(logic->GetValue(Contrast), 20);
}

TEST_F(AdjustHistoryTest, RevertIsAStepThatCanBeUndone) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    const Bitmap result = logic->RenderResult();
    ASSERT_TRUE(logic->Revert());
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_FALSE(logic->IsImageChanged());
    EXPECT_EQ(history.m_count, 3);
    ASSERT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == result);
    EXPECT_TRUE(IsPlain(CurrentStep()));
}

TEST_F(AdjustHistoryTest, RevertAtTheOriginalDoesNothing) {
    Open(TestPictures::Face(60, 40));
    logic->Revert();
    EXPECT_EQ(history.m_count, 1);
    SetAndCommit(Brightness, 30);
    ASSERT_TRUE(logic->Revert());
    const int count = history.m_count;
    logic->Revert();
    EXPECT_EQ(history.m_count, count);
}

TEST_F(AdjustHistoryTest, RevertKeepsAnUnsettledValueAsAStepOfItsOwn) {
    Open(TestPictures::Face(60, 40));
    logic->SetValue(Brightness, 30);
    const Bitmap result = logic->RenderResult();
    ASSERT_TRUE(logic->Revert());
    EXPECT_EQ(history.m_count, 3);
    ASSERT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == result);
}

TEST_F(AdjustHistoryTest, LeavingWithAllValuesAtZeroPushesNothing) {
    Open(TestPictures::Face(60, 40));
    logic->Apply();
    EXPECT_EQ(history.m_count, 1);
    logic->SetValue(Brightness, 30);
    logic->SetValue(Brightness, 0);
    logic->Apply();
    EXPECT_EQ(history.m_count, 1);
    EXPECT_TRUE(history.CurrentBitmap() == picture);
}

TEST_F(AdjustHistoryTest, LeavingTurnsTheVisitsStepIntoASnapshotOfTheResult) {
    Open(TestPictures::Face(120, 90));
    SetAndCommit(Brightness, 30);
    const Bitmap result = logic->RenderResult();
    logic->Apply();
    EXPECT_EQ(history.m_count, 2);
    EXPECT_TRUE(IsPlain(CurrentStep()));
    EXPECT_TRUE(CurrentStep().ReadImage() == result);
    EXPECT_TRUE(history.CurrentBitmap() == result);
}

TEST_F(AdjustHistoryTest, LeavingRecordsAValueThatNoReleaseSettled) {
    Open(TestPictures::Face(60, 40));
    logic->SetValue(Red, 30);
    const Bitmap result = logic->RenderResult();
    logic->Apply();
    EXPECT_EQ(history.m_count, 2);
    EXPECT_TRUE(CurrentStep().ReadImage() == result);
}

TEST_F(AdjustHistoryTest, LeavingAfterAResetRecordsTheReset) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    logic->ResetBasic();
    logic->Apply();
    EXPECT_EQ(history.m_count, 2);
    EXPECT_TRUE(IsPlain(CurrentStep()));
    EXPECT_TRUE(CurrentStep().ReadImage() == picture);
    EXPECT_TRUE(history.CurrentBitmap() == picture);
}

TEST_F(AdjustHistoryTest, LeavingAfterABakeAndAResetRecordsWhatWasBaked) {
    Open(TestPictures::Face(60, 40));
    logic->SetValue(Hue, 30);
    const Bitmap hued = logic->RenderResult();
    logic->SetValue(Contrast, 20);
    logic->ResetBasic();
    logic->Apply();
    EXPECT_EQ(history.m_count, 2);
    EXPECT_TRUE(CurrentStep().ReadImage() == hued);
}

TEST_F(AdjustHistoryTest, LeavingAfterUndoTurnsTheNewestStepIntoASnapshotAndShowsNoneOfIt) {
    Open(TestPictures::Face(120, 90));
    SetAndCommit(Brightness, 30);
    SetAndCommit(Hue, 30);
    const Bitmap result = logic->RenderResult();
    ASSERT_TRUE(logic->Undo());
    logic->Apply();
    EXPECT_TRUE(IsPlain(HeadStep()));
    EXPECT_TRUE(HeadStep().ReadImage() == result);
    EXPECT_EQ(history.m_currentNo, 1);
    EXPECT_TRUE(history.CurrentBitmap() == picture);
    EXPECT_TRUE(logic->View().bitmap == picture);
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_TRUE(history.ViewState()->bitmap == picture);
}

TEST_F(AdjustHistoryTest, LeavingAfterUndoOfASceneTurnsItIntoASnapshot) {
    Open(TestPictures::Face(60, 40));
    ASSERT_TRUE(logic->ApplyScenario(2, nullptr));
    const Bitmap scene = logic->RenderResult();
    ASSERT_TRUE(logic->Undo());
    LeaveAndEnter();
    ASSERT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->RenderResult() == scene);
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
}

TEST_F(AdjustHistoryTest, LeavingAfterUndoKeepsAPlainNewestStepAsItIs) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    LeaveAndEnter();
    ASSERT_TRUE(logic->Undo());
    const QString path = HeadStep().GetImagePath();
    logic->Apply();
    EXPECT_EQ(HeadStep().GetImagePath(), path);
}

TEST_F(AdjustHistoryTest, EnterUndoAndSaveGiveThePixelsOnShow) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    LeaveAndEnter();
    ASSERT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->View().bitmap == picture);
    EXPECT_TRUE(logic->RenderResult() == picture);
    ASSERT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->View().bitmap == logic->RenderResult());
}

TEST_F(AdjustHistoryTest, TheViewStaysWhereItWasAcrossAToolChange) {
    Open(TestPictures::Face(800, 600), 300, 200);
    logic->SetValue(Contrast, 40);
    logic->SetZoom(1.3);
    logic->PanBy(-40, 25);
    const ViewGeometry before = logic->Geometry();
    const Bitmap view = logic->View().bitmap.Clone();
    LeaveAndEnter(300, 200);
    EXPECT_EQ(logic->Geometry(), before);
    EXPECT_TRUE(logic->View().bitmap == view);
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_FALSE(logic->HasWork());
}

TEST_F(AdjustHistoryTest, AViewOfAnotherSizeIsDrawnFromThePicture) {
    Open(TestPictures::Face(800, 600), 300, 200);
    logic->SetZoom(1.3);
    LeaveAndEnter(500, 400);
    const CanvasView view = logic->View();
    EXPECT_EQ(view.dest, QRect(0, 0, 500, 400));
    EXPECT_EQ(view.bitmap.Width(), 500);
    Bitmap drawn;
    DrawVisiblePart(picture, logic->Geometry(), ViewQuality::Settled, drawn);
    EXPECT_TRUE(view.bitmap == drawn);
}

TEST_F(AdjustHistoryTest, WithoutALeftViewNothingIsTaken) {
    Open(TestPictures::Face(60, 40));
    NewLogic();
    EXPECT_FALSE(logic->TakeViewState());
    EXPECT_FALSE(logic->HasPicture());
}

TEST_F(AdjustHistoryTest, ACommitThatCannotBeWrittenStaysPendingAndIsMadeUpFor) {
    Open(TestPictures::Face(60, 40));
    logic->SetValue(Hue, 30);
    logic->SetValue(Contrast, 20);  // baked: its step needs a file
    const Bitmap result = logic->RenderResult();
    BlockSnapshots();
    EXPECT_FALSE(logic->CommitStep());
    EXPECT_TRUE(logic->HasWork());
    EXPECT_TRUE(logic->State().BakedPending);
    EXPECT_FALSE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == result);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Save);
    UnblockSnapshots();
    EXPECT_TRUE(logic->CommitStep());
    ASSERT_TRUE(logic->Undo());
    ASSERT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->RenderResult() == result);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(AdjustHistoryTest, ASceneThatCouldNotBeRecordedIsNotLostByRedo) {
    Open(TestPictures::Face(60, 40));
    ASSERT_TRUE(logic->ApplyScenario(1, nullptr));
    ASSERT_TRUE(logic->Undo());
    BlockSnapshots();
    logic->SetValue(Contrast, 40);
    logic->ApplyScenario(2, nullptr);  // the baked base can't be written, so no step is made
    UnblockSnapshots();
    const Bitmap result = logic->RenderResult();
    EXPECT_FALSE(logic->Redo());
    EXPECT_EQ(logic->GetPanelValues()[0], 2);
    ASSERT_TRUE(logic->Undo()) << "which records it";
    EXPECT_TRUE(logic->RenderResult() == picture);
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->GetPanelValues()[0], 2);
    EXPECT_TRUE(logic->RenderResult() == result);
}

TEST_F(AdjustHistoryTest, OpeningAnotherPictureForgetsTheFormerOnesSteps) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    const Bitmap next = TestPictures::Ramp(90, 50);
    ASSERT_TRUE(history.OpenImage(next));
    logic->Reset();
    logic->SetSource(next);
    EXPECT_TRUE(logic->RenderResult() == next);
    SetAndCommit(Contrast, 10);
    EXPECT_EQ(history.m_count, 2);
    ASSERT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == next);
}

// Random acts against the simplest model: what the picture looked like at each step that the user can reach.
TEST_F(AdjustHistoryTest, AnySequenceOfActsKeepsEveryReachableStep) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        srand(seed);
        Open(TestPictures::Face(24, 18, 0xFFD9A184, seed));
        std::vector<Bitmap> steps{picture};
        std::size_t at = 0;
        bool open = false;
        for (int act = 0; act < 120; ++act) {
            SCOPED_TRACE(act);
            const int what = rand() % 8;
            if (what < 4) {
                const AdjustSlider& slider = AdjustSliders[static_cast<std::size_t>(rand()) % AdjustSliders.size()];
                logic->SetValue(slider.index, slider.minimum + rand() % (slider.maximum - slider.minimum + 1));
                if (logic->CommitStep()) {
                    if (!open) ++at;
                    steps.resize(at);
                    steps.push_back(logic->RenderResult().Clone());
                    open = true;
                }
            } else if (what == 4) {
                if (logic->ApplyScenario(1 + rand() % 4, nullptr)) {
                    if (!open) ++at;
                    steps.resize(at);
                    steps.push_back(logic->RenderResult().Clone());
                    open = true;
                }
            } else if (what == 5) {
                if (logic->Undo()) {
                    --at;
                    open = !IsPlain(CurrentStep());
                }
            } else if (what == 6) {
                if (logic->Redo()) {
                    ++at;
                    open = !IsPlain(CurrentStep());
                }
            } else {
                LeaveAndEnter();
                open = false;
            }
            if (steps.size() > CHistoryManager::RingSize) {
                steps.erase(steps.begin());
                --at;
            }
            ASSERT_EQ(history.m_count, static_cast<int>(steps.size()));
            ASSERT_EQ(history.m_currentNo, static_cast<int>(at) + 1);
            ASSERT_TRUE(logic->RenderResult() == steps[at]);
        }
    }
}

}  // namespace
