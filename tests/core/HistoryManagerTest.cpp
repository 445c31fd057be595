// SPDX-License-Identifier: GPL-3.0-or-later
#include "CHistoryManager.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include "AppPaths.h"
#include "HistorySteps.h"
#include "PC_File.h"

using namespace HistorySteps;

namespace {

class HistoryManager : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(history.OpenImage(Colour(1000))); }
    void TearDown() override { history.Reset(); }

    bool Push(std::unique_ptr<CHistoryStep> step) { return history.PushStep(step); }
    void PushSnapshots(int first, int last) {
        for (int number = first; number <= last; ++number) ASSERT_TRUE(Push(Snapshot(Colour(number))));
    }
    // What the picture of each reachable step is.
    std::vector<std::int64_t> Colours() const {
        std::vector<std::int64_t> colours;
        for (int no = 1; no <= history.m_count; ++no) colours.push_back(ColourOf(StepAt(history, no).ReadImage()));
        return colours;
    }
    QString File(int number) const { return history.m_fileFormat.arg(history.m_tempDir, QString::number(number)); }

    CHistoryManager history{AppPath(QStringLiteral("Temp/UndoTemp"))};
};

TEST(HistoryManagerEmpty, HoldsNothingAndNothingMoves) {
    CHistoryManager history(AppPath(QStringLiteral("Temp/UndoTemp")));
    EXPECT_EQ(history.m_current, -1);
    EXPECT_EQ(history.m_head, 0);
    EXPECT_EQ(history.m_tail, 0);
    EXPECT_EQ(history.m_fileCounter, -1);
    EXPECT_EQ(history.m_count, 0);
    EXPECT_EQ(history.m_currentNo, 0);
    EXPECT_TRUE(history.IsOriginal());
    EXPECT_FALSE(history.MakeRevertStep());
    EXPECT_FALSE(history.ReadOrigin());
    EXPECT_FALSE(history.Undo());
    EXPECT_FALSE(history.Redo());
    EXPECT_FALSE(history.JumpTo(1));
    EXPECT_TRUE(history.GetStepNames().empty());
    EXPECT_FALSE(history.CloneCurrent());
    EXPECT_FALSE(history.CloneHead());
    EXPECT_EQ(history.CurrentStamp(), 0u);
}

TEST(HistoryManagerEmpty, RefusesToOverwriteAndTheStepStaysWithTheCaller) {
    CHistoryManager history(AppPath(QStringLiteral("Temp/UndoTemp")));
    auto step = Snapshot(Colour(1));
    EXPECT_FALSE(history.PushOverCurrent(step));
    EXPECT_FALSE(history.PushOverHead(step));
    EXPECT_TRUE(step);
    EXPECT_EQ(history.m_count, 0);
}

TEST(HistoryManagerEmpty, AFailedPushStillLeavesNothingToOverwrite) {
    CHistoryManager history(AppPath(QStringLiteral("Temp/UndoTemp")));
    auto step = Snapshot(Colour(1));
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(history.PushStep(step));
    }
    EXPECT_EQ(history.m_count, 1);
    EXPECT_FALSE(history.PushOverCurrent(step));
    EXPECT_EQ(history.m_count, 0);
}

TEST(HistoryManagerEmpty, OpeningANullBitmapIsRefusedAndKeepsTheSession) {
    CHistoryManager history(AppPath(QStringLiteral("Temp/UndoTemp")));
    ASSERT_TRUE(history.OpenImage(Colour(4)));
    EXPECT_FALSE(history.OpenImage(Bitmap()));
    EXPECT_EQ(history.m_count, 1);
    EXPECT_EQ(ColourOf(history.ReadOrigin()), 4);
    history.Reset();
}

TEST(HistoryManagerEmpty, MissingFolderIsMadeForThisUserAlone) {
    QDir(AppPath(QStringLiteral("Temp"))).removeRecursively();
    CHistoryManager history(AppPath(QStringLiteral("Temp/UndoTemp")));
    ASSERT_TRUE(history.OpenImage(Colour(4)));
    for (const char* name : {"Temp", "Temp/UndoTemp"}) {
        struct stat folder = {};
        ASSERT_EQ(::stat(QFile::encodeName(AppPath(QLatin1String(name))).constData(), &folder), 0);
        EXPECT_EQ(folder.st_mode & 0777, 0700u) << name;
    }
    history.Reset();
}

TEST(HistoryManagerEmpty, InstanceIsOneAndLiesUnderTheProgramsTempFolder) {
    EXPECT_EQ(&CHistoryManager::Instance(), &CHistoryManager::Instance());
    EXPECT_EQ(CHistoryManager::Instance().m_tempDir, AppPath(QStringLiteral("Temp/UndoTemp")) + u'/');
    EXPECT_EQ(CHistoryManager::Instance().m_originPath, AppPath(QStringLiteral("Temp/UndoTemp/origin.bin")));
}

TEST_F(HistoryManager, OpeningMakesOneStepOnOriginAndKeepsThePicture) {
    EXPECT_EQ(history.m_count, 1);
    EXPECT_EQ(history.m_currentNo, 1);
    EXPECT_EQ(history.m_current, 0);
    EXPECT_EQ(history.m_fileCounter, -1);
    EXPECT_EQ(PathOf(history, 1), history.m_originPath);
    EXPECT_EQ(ColourOf(history.ReadOrigin()), 1000);
    EXPECT_EQ(ColourOf(history.CurrentBitmap()), 1000);
    EXPECT_TRUE(history.IsOriginal());
}

TEST_F(HistoryManager, OpeningAnotherPictureResetsStepsFilesAndViewState) {
    PushSnapshots(1, 3);
    history.SetViewState(std::make_unique<CViewState>());
    ASSERT_TRUE(history.OpenImage(Colour(2000)));
    EXPECT_EQ(history.m_count, 1);
    EXPECT_FALSE(history.ViewState());
    EXPECT_EQ(Colours(), std::vector<std::int64_t>{2000});
    EXPECT_EQ(QDir(history.m_tempDir).entryList(QDir::Files), QStringList{QStringLiteral("origin.bin")});
}

TEST_F(HistoryManager, ResetEmptiesTheRingAndDeletesEveryFile) {
    PushSnapshots(1, 40);
    history.Reset();
    EXPECT_EQ(history.m_current, -1);
    EXPECT_EQ(history.m_count, 0);
    for (const auto& step : history.m_ring) EXPECT_FALSE(step);
    EXPECT_TRUE(QDir(history.m_tempDir).entryList(QDir::Files).isEmpty());
}

TEST_F(HistoryManager, OriginThatCannotBeWrittenIsReportedAndTheSessionGoesOn) {
    QFile::remove(history.m_originPath);
    QDir().mkpath(history.m_originPath);
    EXPECT_FALSE(history.OpenImage(Colour(3)));
    EXPECT_EQ(history.m_count, 1);
    EXPECT_EQ(ColourOf(history.CurrentBitmap()), 3);
    EXPECT_FALSE(history.ReadOrigin());
    // The first parameter step can't stand on a file that is not there.
    ASSERT_TRUE(Push(Parameters(Colour(3))));
    EXPECT_EQ(PathOf(history, 2), File(0));
    EXPECT_EQ(ColourOf(StepAt(history, 2).ReadImage()), 3);
    QDir().rmdir(history.m_originPath);
}

TEST_F(HistoryManager, SnapshotStepGetsAFileAndTheRingHoldsNoPixels) {
    auto step = Snapshot(Colour(1));
    ASSERT_TRUE(history.PushStep(step));
    EXPECT_FALSE(step);
    EXPECT_EQ(PathOf(history, 2), File(0));
    EXPECT_FALSE(StepAt(history, 2).Image()->image);
    EXPECT_FALSE(history.IsOriginal());
    EXPECT_EQ(Colours(), (std::vector<std::int64_t>{1000, 1}));
}

TEST_F(HistoryManager, NullStepIsRefusedAndNothingChanges) {
    std::unique_ptr<CHistoryStep> none;
    EXPECT_FALSE(history.PushStep(none));
    EXPECT_FALSE(history.PushOverCurrent(none));
    EXPECT_FALSE(history.PushOverHead(none));
    EXPECT_EQ(history.m_count, 1);
    EXPECT_EQ(history.m_currentNo, 1);
}

TEST_F(HistoryManager, ParameterStepReadsTheFileOfTheStepItStandsOn) {
    ASSERT_TRUE(Push(Parameters(Colour(1000))));
    EXPECT_EQ(PathOf(history, 2), history.m_originPath);
    EXPECT_FALSE(history.IsOriginal());
    PushSnapshots(1, 1);
    ASSERT_TRUE(Push(Parameters(Colour(1))));
    EXPECT_EQ(PathOf(history, 4), File(0));
    EXPECT_EQ(history.m_fileCounter, 0);
    EXPECT_EQ(QDir(history.m_tempDir).entryList(QDir::Files).size(), 2);
}

TEST_F(HistoryManager, ParameterStepOnTheOldestStepOfAWrappedRingReadsThatStepsFile) {
    PushSnapshots(1, 33);
    while (history.Undo()) continue;
    const QString oldest = PathOf(history, 1);
    ASSERT_NE(oldest, history.m_originPath);
    ASSERT_TRUE(Push(Parameters(Colour(3))));
    EXPECT_EQ(PathOf(history, 2), oldest);
    EXPECT_EQ(ColourOf(StepAt(history, 2).ReadImage()), 3);
}

TEST_F(HistoryManager, ParameterStepOverCurrentKeepsTheFileThatItStandsOn) {
    PushSnapshots(1, 1);
    auto baked = Parameters(Colour(2));
    baked->Image()->save = true;
    ASSERT_TRUE(history.PushStep(baked));
    auto next = Parameters(Colour(2), 5);
    ASSERT_TRUE(history.PushOverCurrent(next));
    EXPECT_EQ(PathOf(history, 3), File(1));
    EXPECT_EQ(history.m_count, 3);
}

TEST_F(HistoryManager, ParameterStepOverHeadReadsTheHeadsFileNotTheCurrentSteps) {
    PushSnapshots(1, 2);
    ASSERT_TRUE(history.Undo());
    ASSERT_TRUE(history.Undo());
    auto step = Parameters(Colour(2));
    ASSERT_TRUE(history.PushOverHead(step));
    EXPECT_EQ(Colours(), (std::vector<std::int64_t>{1000, 1, 2}));
    EXPECT_EQ(history.m_currentNo, 1);
}

TEST_F(HistoryManager, OverwritingChangesNoPosition) {
    PushSnapshots(1, 3);
    ASSERT_TRUE(history.Undo());
    auto current = Snapshot(Colour(22));
    auto head = Snapshot(Colour(33));
    ASSERT_TRUE(history.PushOverCurrent(current));
    ASSERT_TRUE(history.PushOverHead(head));
    EXPECT_EQ(Colours(), (std::vector<std::int64_t>{1000, 1, 22, 33}));
    EXPECT_EQ(history.m_currentNo, 3);
    EXPECT_EQ(history.m_count, 4);
}

TEST_F(HistoryManager, StepThatHoldsNoBitmapIsStoredAsItIs) {
    auto revert = history.MakeRevertStep();
    ASSERT_TRUE(history.PushStep(revert));
    EXPECT_EQ(PathOf(history, 2), history.m_originPath);
    EXPECT_EQ(history.m_fileCounter, -1);
}

TEST_F(HistoryManager, ThirtyOneStepsFitAndTheNextDropsTheOldest) {
    PushSnapshots(1, 30);
    EXPECT_EQ(history.m_count, 31);
    EXPECT_EQ(history.m_tail, 0);
    PushSnapshots(31, 31);
    EXPECT_EQ(history.m_count, 31);
    EXPECT_EQ(history.m_currentNo, 31);
    EXPECT_EQ(history.m_tail, 1);
    EXPECT_EQ(Colours().front(), 1);
    EXPECT_EQ(Colours().back(), 31);
    // The opening step is gone from the ring, its picture is not.
    EXPECT_EQ(ColourOf(history.ReadOrigin()), 1000);
    EXPECT_FALSE(history.IsOriginal());
}

TEST_F(HistoryManager, FileNumbersWrapAfterThirtyOneWhileSlotsWrapAfterThirty) {
    PushSnapshots(1, 32);
    EXPECT_EQ(history.m_current, 1);
    EXPECT_EQ(history.m_fileCounter, 31);
    EXPECT_EQ(PathOf(history, 31), File(31));
    PushSnapshots(33, 33);
    EXPECT_EQ(history.m_current, 2);
    EXPECT_EQ(PathOf(history, 31), File(0));
}

TEST_F(HistoryManager, ANumberThatAStepStillNamesIsPassedOver) {
    PushSnapshots(1, 1);
    // Thirty-one new versions of the second step go once round the numbers and must leave the first one's file alone.
    PushSnapshots(2, 2);
    for (int version = 100; version < 164; ++version) {
        auto step = Snapshot(Colour(version));
        ASSERT_TRUE(history.PushOverCurrent(step));
        ASSERT_EQ(Colours(), (std::vector<std::int64_t>{1000, 1, version}));
    }
}

TEST_F(HistoryManager, FilesOfStepsBeyondTheHeadAreLeftAloneToo) {
    PushSnapshots(1, 30);
    while (history.m_currentNo > 2) ASSERT_TRUE(history.Undo());
    for (int number = 100; number < 140; ++number) {
        auto step = Snapshot(Colour(number));
        ASSERT_TRUE(history.PushOverCurrent(step));
        ASSERT_EQ(Colours().size(), 31u);
        ASSERT_EQ(Colours()[1], number);
        for (int no = 3; no <= 31; ++no) ASSERT_EQ(Colours()[no - 1], no - 1);
    }
}

TEST_F(HistoryManager, PushAfterUndoMakesTheStepsAheadUnreachable) {
    PushSnapshots(1, 5);
    ASSERT_TRUE(history.Undo());
    ASSERT_TRUE(history.Undo());
    ASSERT_TRUE(history.Undo());
    PushSnapshots(9, 9);
    EXPECT_EQ(history.m_currentNo, 4);
    EXPECT_EQ(history.m_count, 4);
    EXPECT_FALSE(history.Redo());
    EXPECT_EQ(Colours(), (std::vector<std::int64_t>{1000, 1, 2, 9}));
}

TEST_F(HistoryManager, UndoAndRedoMoveOneStepAndStopAtTheEnds) {
    PushSnapshots(1, 2);
    EXPECT_FALSE(history.Redo());
    EXPECT_TRUE(history.Undo());
    EXPECT_EQ(history.m_currentNo, 2);
    EXPECT_TRUE(history.Undo());
    EXPECT_TRUE(history.AtOldest());
    EXPECT_FALSE(history.Undo());
    EXPECT_EQ(history.m_currentNo, 1);
    EXPECT_EQ(history.m_count, 3);
    EXPECT_TRUE(history.Redo());
    EXPECT_TRUE(history.Redo());
    EXPECT_TRUE(history.AtNewest());
    EXPECT_FALSE(history.Redo());
}

TEST_F(HistoryManager, JumpGoesToTheNumberAndGivesACloneOfTheStep) {
    PushSnapshots(1, 35);
    for (int stepNo : {1, 31, 7, 8, 6, 30}) {
        const auto step = history.JumpTo(stepNo);
        ASSERT_TRUE(step);
        EXPECT_EQ(history.m_currentNo, stepNo);
        EXPECT_EQ(ColourOf(step->ReadImage()), stepNo + 4);
        EXPECT_NE(step.get(), history.m_ring[history.m_current].get());
    }
    EXPECT_EQ(history.m_count, 31);
}

TEST_F(HistoryManager, JumpOutsideTheRangeOrOntoTheCurrentStepGivesNullAndStays) {
    PushSnapshots(1, 2);
    for (int stepNo : {-1, 0, 3, 4, 99}) {
        EXPECT_FALSE(history.JumpTo(stepNo)) << stepNo;
        EXPECT_EQ(history.m_currentNo, 3);
    }
}

TEST_F(HistoryManager, FailedPushLeavesTheCountsRaisedTheRingUnchangedAndTheStepWithTheCaller) {
    PushSnapshots(1, 3);
    ASSERT_TRUE(history.Undo());
    auto step = Snapshot(Colour(9));
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(history.PushStep(step));
    }
    ASSERT_TRUE(step);
    EXPECT_EQ(ColourOf(step->Image()->image), 9);
    EXPECT_EQ(history.m_count, 4);
    EXPECT_EQ(history.m_currentNo, 4);
    EXPECT_EQ(history.m_current, 2);
    EXPECT_EQ(history.m_head, 3);
}

TEST_F(HistoryManager, TheNextMoveAfterAFailedPushCountsFromTheRing) {
    PushSnapshots(1, 3);
    ASSERT_TRUE(history.Undo());
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(Push(Snapshot(Colour(9))));
        EXPECT_FALSE(Push(Snapshot(Colour(9))));
        EXPECT_FALSE(Push(Snapshot(Colour(9))));
    }
    EXPECT_TRUE(history.Redo());
    EXPECT_EQ(history.m_currentNo, 4);
    EXPECT_EQ(history.m_count, 4);
    EXPECT_EQ(Colours(), (std::vector<std::int64_t>{1000, 1, 2, 3}));
}

TEST_F(HistoryManager, JumpAfterAFailedPushUsesTheTrueNumbers) {
    PushSnapshots(1, 3);
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(Push(Snapshot(Colour(9))));
    }
    EXPECT_EQ(history.m_count, 5);
    EXPECT_FALSE(history.JumpTo(5));
    EXPECT_EQ(history.m_count, 4);
    const auto step = history.JumpTo(2);
    ASSERT_TRUE(step);
    EXPECT_EQ(ColourOf(step->ReadImage()), 1);
}

TEST_F(HistoryManager, FailedPushIntoAFullRingDropsNothing) {
    PushSnapshots(1, 30);
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(Push(Snapshot(Colour(99))));
    }
    PushSnapshots(31, 31);
    EXPECT_EQ(history.m_count, 31);
    EXPECT_EQ(Colours().front(), 1);
    EXPECT_EQ(Colours().back(), 31);
}

TEST_F(HistoryManager, AfterAFailedPushAParameterStepSavesAFileOfItsOwnOnce) {
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(Push(Snapshot(Colour(9))));
    }
    ASSERT_TRUE(Push(Parameters(Colour(9))));
    EXPECT_EQ(ColourOf(StepAt(history, 2).ReadImage()), 9);
    const int newest = history.m_fileCounter;
    ASSERT_TRUE(Push(Parameters(Colour(9))));
    EXPECT_EQ(history.m_fileCounter, newest);
    EXPECT_EQ(Colours(), (std::vector<std::int64_t>{1000, 9, 9}));
}

TEST_F(HistoryManager, AfterAFailedPushAnOverwritingStepSavesAFileOfItsOwnToo) {
    ASSERT_TRUE(Push(Parameters(Colour(1000))));
    auto baked = Parameters(Colour(9));
    baked->Image()->save = true;
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(history.PushOverCurrent(baked));
        EXPECT_EQ(history.m_count, 2);
    }
    EXPECT_EQ(Colours(), (std::vector<std::int64_t>{1000, 1000}));
    auto next = Parameters(Colour(9), 2);
    ASSERT_TRUE(history.PushOverCurrent(next));
    EXPECT_EQ(Colours(), (std::vector<std::int64_t>{1000, 9}));
}

// Files above `bytes` can't be written while it lives, as on a disk that is full.
class SmallFilesOnly {
  public:
    explicit SmallFilesOnly(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallFilesOnly() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    SmallFilesOnly(const SmallFilesOnly&) = delete;
    SmallFilesOnly& operator=(const SmallFilesOnly&) = delete;

  private:
    rlimit m_before = {};
};

TEST_F(HistoryManager, WhatAFullDiskLeftOfAFileIsRemoved) {
    {
        const SmallFilesOnly full(4096);
        EXPECT_FALSE(Push(Snapshot(TestPictures::Noise(64, 64, 1))));
        EXPECT_FALSE(QFile::exists(File(0)));
    }
    EXPECT_TRUE(Push(Snapshot(TestPictures::Noise(64, 64, 1))));
    EXPECT_TRUE(StepAt(history, 2).ReadImage() == TestPictures::Noise(64, 64, 1));
}

TEST_F(HistoryManager, ARowOfFailedPushesIsToldOnce) {
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(Push(Snapshot(Colour(9))));
        EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Save);
        EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);
        EXPECT_FALSE(Push(Snapshot(Colour(9))));
        EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);
    }
    PushSnapshots(1, 1);
    const UnwritableFiles blocked(history);
    EXPECT_FALSE(Push(Snapshot(Colour(9))));
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Save);
}

TEST_F(HistoryManager, UnreadableSnapshotsAreToldOnceUntilOneIsRead) {
    history.NoteRead(false);
    history.NoteRead(false);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Read);
    history.NoteRead(false);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);
    history.NoteRead(true);
    history.NoteRead(false);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Read);
}

TEST_F(HistoryManager, RevertStepCountsAsOriginalThoughTheRingHasGrown) {
    PushSnapshots(1, 2);
    EXPECT_FALSE(history.IsOriginal());
    auto revert = history.MakeRevertStep();
    ASSERT_TRUE(revert);
    EXPECT_EQ(revert->GetName(), QStringLiteral("ids_originalimage!"));
    ASSERT_TRUE(history.PushStep(revert));
    EXPECT_TRUE(history.IsOriginal());
    EXPECT_EQ(history.m_count, 4);
    EXPECT_EQ(ColourOf(history.CloneCurrent()->ReadImage()), 1000);
    ASSERT_TRUE(history.Undo());
    EXPECT_FALSE(history.IsOriginal());
}

TEST_F(HistoryManager, ParameterStepOnOriginIsAlwaysChanged) {
    ASSERT_TRUE(Push(Parameters(Colour(1000))));
    EXPECT_EQ(PathOf(history, 2), history.m_originPath);
    EXPECT_FALSE(history.IsOriginal());
}

TEST_F(HistoryManager, StepThatOnlyNamesOriginIsOriginal) {
    PushSnapshots(1, 1);
    ASSERT_TRUE(history.Undo());
    EXPECT_TRUE(history.IsOriginal());
    ASSERT_TRUE(history.Redo());
    EXPECT_FALSE(history.IsOriginal());
}

TEST_F(HistoryManager, NamesGoFromTheOldestToTheNewestWhereverTheCurrentStepIs) {
    const auto pushNamed = [&](const char* key) {
        auto step = Snapshot(Colour(1));
        step->SetNameFromKey(QLatin1String(key));
        ASSERT_TRUE(history.PushStep(step));
    };
    pushNamed("ids_bianji");
    pushNamed("ids_caijian");
    history.Undo();
    EXPECT_EQ(history.GetStepNames(),
              (std::vector<QString>{QStringLiteral("ids_openimage!"), QStringLiteral("ids_bianji!"),
                                    QStringLiteral("ids_caijian!")}));
    EXPECT_EQ(&history.GetStepNames(), &history.m_stepNames);
    EXPECT_EQ(history.GetStepNames().size(), 3u);
}

TEST_F(HistoryManager, AfterTheRingWrappedTheFirstNameIsTheOldestStepsAndThereAreThirtyOne) {
    PushSnapshots(1, 50);
    EXPECT_EQ(history.GetStepNames().size(), 31u);
    EXPECT_EQ(history.GetStepNames().front(), QString());
}

TEST_F(HistoryManager, StampTellsStatesOfTheHistoryApart) {
    const std::uint64_t opened = history.CurrentStamp();
    PushSnapshots(1, 1);
    const std::uint64_t pushed = history.CurrentStamp();
    EXPECT_NE(pushed, opened);
    history.Undo();
    EXPECT_EQ(history.CurrentStamp(), opened);
    history.Redo();
    EXPECT_EQ(history.CurrentStamp(), pushed);
    auto step = Snapshot(Colour(2));
    ASSERT_TRUE(history.PushOverCurrent(step));
    EXPECT_NE(history.CurrentStamp(), pushed);
    ASSERT_TRUE(history.OpenImage(Colour(5)));
    EXPECT_NE(history.CurrentStamp(), opened);
}

TEST_F(HistoryManager, CurrentBitmapIsThePictureAsItWasHandedOver) {
    Bitmap picture = Colour(7);
    history.SetCurrentBitmap(picture);
    picture.Fill(0);
    EXPECT_EQ(ColourOf(history.CurrentBitmap()), 7);
}

}  // namespace
