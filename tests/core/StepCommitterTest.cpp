// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepCommitter.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include "AppPaths.h"
#include "ToyTool.h"

using namespace HistorySteps;

namespace {

class Committer : public testing::Test {
  protected:
    ~Committer() override { history.Reset(); }

    // What a tool entered afresh shows for each reachable step.
    std::vector<std::int64_t> Shown() {
        std::vector<std::int64_t> shown;
        for (int no = 1; no <= history.m_count; ++no) {
            ToyTool viewer(history);
            EXPECT_TRUE(viewer.LoadStep(StepAt(history, no).Clone())) << no;
            shown.push_back(viewer.Result());
        }
        return shown;
    }
    void SlideAndCommit(int to) {
        tool.Slide(to);
        ASSERT_EQ(tool.committer.Commit(), CommitResult::Committed);
    }
    void Spoil(const QString& path) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("no snapshot");
    }
    int RecordsInReach() const {
        int count = 0;
        for (int no = 1; no <= history.m_count; ++no)
            count += static_cast<int>(StepAt(history, no).Params().size()) - 1;
        return count;
    }

    static CHistoryManager& Opened(CHistoryManager& history) {
        history.OpenImage(Colour(1000));
        return history;
    }

    CHistoryManager history{AppPath(QStringLiteral("Temp/UndoTemp"))};
    ToyTool tool{Opened(history)};
};

using Steps = std::vector<std::int64_t>;

TEST_F(Committer, NothingPendingCommitsNothing) {
    EXPECT_EQ(tool.committer.Commit(), CommitResult::Nothing);
    EXPECT_EQ(history.m_count, 1);
    EXPECT_FALSE(tool.committer.StepOpen());
}

TEST_F(Committer, ASliderMovedTenTimesMakesOneStep) {
    for (int value = 1; value <= 10; ++value) SlideAndCommit(value);
    EXPECT_EQ(Shown(), (Steps{1000, 1010}));
    EXPECT_TRUE(tool.committer.StepOpen());
    EXPECT_EQ(history.m_fileCounter, -1);
}

TEST_F(Committer, AToolOfSingleStepsPushesOneForEachCommit) {
    ToyTool stamp(history, StepStyle::OnePerCommit);
    for (int value = 1; value <= 3; ++value) {
        stamp.Slide(value);
        EXPECT_EQ(stamp.committer.Commit(), CommitResult::Committed);
        EXPECT_FALSE(stamp.committer.StepOpen());
    }
    EXPECT_EQ(Shown(), (Steps{1000, 1001, 1003, 1006}));
    EXPECT_TRUE(stamp.committer.Undo());
    EXPECT_EQ(stamp.Result(), 1003);
    EXPECT_TRUE(stamp.Leave());
    EXPECT_EQ(Shown(), (Steps{1000, 1001, 1003, 1006}));
}

TEST_F(Committer, BakedWorkGetsAFileOfItsOwnInTheSameStep) {
    SlideAndCommit(5);
    tool.Bake();
    SlideAndCommit(7);
    EXPECT_EQ(history.m_fileCounter, 0);
    EXPECT_FALSE(tool.baked);
    SlideAndCommit(8);
    EXPECT_EQ(history.m_fileCounter, 0);
    EXPECT_EQ(Shown(), (Steps{1000, 1013}));
}

TEST_F(Committer, UndoCommitsPendingWorkFirstAndRedoBringsItBack) {
    tool.Slide(9);
    EXPECT_TRUE(tool.committer.Undo());
    EXPECT_EQ(tool.Result(), 1000);
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(history.m_currentNo, 1);
    EXPECT_FALSE(tool.committer.StepOpen());
    EXPECT_TRUE(tool.committer.Redo());
    EXPECT_EQ(tool.Result(), 1009);
    EXPECT_TRUE(tool.committer.StepOpen());
}

TEST_F(Committer, AVisitThatComesBackToItsStepGoesOnOverwritingIt) {
    SlideAndCommit(3);
    tool.committer.Undo();
    tool.committer.Redo();
    SlideAndCommit(4);
    EXPECT_EQ(Shown(), (Steps{1000, 1004}));
}

TEST_F(Committer, AtTheEndsUndoAndRedoShowAgainAndMoveNothing) {
    EXPECT_FALSE(tool.committer.Undo());
    EXPECT_FALSE(tool.committer.Redo());
    EXPECT_EQ(tool.loads, 2);
    EXPECT_EQ(tool.Result(), 1000);
    EXPECT_EQ(history.m_currentNo, 1);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);
}

TEST_F(Committer, JumpCommitsPendingWorkAndLoadsTheRow) {
    SlideAndCommit(1);
    ASSERT_TRUE(tool.Leave());
    ToyTool next(history);
    next.Slide(10);
    EXPECT_TRUE(next.committer.Jump(0));
    EXPECT_EQ(next.Result(), 1000);
    EXPECT_EQ(Shown(), (Steps{1000, 1001, 1011}));
    EXPECT_TRUE(next.committer.Jump(2));
    EXPECT_EQ(next.Result(), 1011);
    EXPECT_TRUE(next.committer.StepOpen());
}

TEST_F(Committer, JumpOntoTheCurrentOrAMissingRowShowsAgain) {
    SlideAndCommit(1);
    EXPECT_FALSE(tool.committer.Jump(1));
    EXPECT_FALSE(tool.committer.Jump(2));
    EXPECT_FALSE(tool.committer.Jump(-1));
    EXPECT_EQ(tool.Result(), 1001);
    EXPECT_EQ(history.m_currentNo, 2);
}

TEST_F(Committer, JumpWithPendingWorkInAFullRingGoesToTheRowThatTheListShowed) {
    ToyTool stamp(history, StepStyle::OnePerCommit);
    for (int i = 0; i < 30; ++i) {
        stamp.Slide(1);
        stamp.committer.Commit();
    }
    ASSERT_EQ(history.m_count, 31);
    const std::int64_t inRowTwelve = Shown()[12];
    stamp.Slide(100);
    EXPECT_TRUE(stamp.committer.Jump(12));
    EXPECT_EQ(stamp.Result(), inRowTwelve);
}

TEST_F(Committer, JumpOntoTheRowThatTheCommitDroppedStays) {
    ToyTool stamp(history, StepStyle::OnePerCommit);
    for (int i = 0; i < 30; ++i) {
        stamp.Slide(1);
        stamp.committer.Commit();
    }
    stamp.Slide(100);
    EXPECT_FALSE(stamp.committer.Jump(0));
    EXPECT_EQ(stamp.Result(), 1130);
    EXPECT_EQ(history.m_currentNo, 31);
}

TEST_F(Committer, RevertCommitsTheFinalImageAndIsUndoable) {
    SlideAndCommit(6);
    tool.Slide(7);
    EXPECT_TRUE(tool.committer.Revert());
    EXPECT_EQ(tool.Result(), 1000);
    EXPECT_TRUE(history.IsOriginal());
    EXPECT_EQ(Shown(), (Steps{1000, 1007, 1000}));
    EXPECT_EQ(RecordsInReach(), 0);
    EXPECT_TRUE(tool.committer.Undo());
    EXPECT_EQ(tool.Result(), 1007);
}

TEST_F(Committer, RevertOfAnUneditedPictureAndASecondRevertPushNothing) {
    EXPECT_TRUE(tool.committer.Revert());
    EXPECT_EQ(history.m_count, 1);
    SlideAndCommit(6);
    EXPECT_TRUE(tool.committer.Revert());
    EXPECT_TRUE(tool.committer.Revert());
    EXPECT_EQ(history.m_count, 3);
}

TEST_F(Committer, WorkAfterARevertMakesAStepOfItsOwn) {
    SlideAndCommit(6);
    tool.committer.Revert();
    SlideAndCommit(2);
    EXPECT_EQ(Shown(), (Steps{1000, 1006, 1000, 1002}));
}

TEST_F(Committer, LeavingTurnsTheVisitsStepIntoASnapshot) {
    SlideAndCommit(6);
    EXPECT_TRUE(tool.Leave());
    EXPECT_EQ(RecordsInReach(), 0);
    EXPECT_EQ(Shown(), (Steps{1000, 1006}));
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Committer, LeavingWithUncommittedWorkPushesItAsASnapshot) {
    tool.Slide(6);
    EXPECT_TRUE(tool.Leave());
    EXPECT_EQ(Shown(), (Steps{1000, 1006}));
    EXPECT_EQ(RecordsInReach(), 0);
}

TEST_F(Committer, LeavingAfterNothingPushesNothing) {
    EXPECT_TRUE(tool.Leave());
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(Committer, AResetBeforeLeavingIsInTheHistoryToo) {
    SlideAndCommit(6);
    tool.Slide(0);
    EXPECT_TRUE(tool.Leave());
    EXPECT_EQ(Shown(), (Steps{1000, 1000}));
}

TEST_F(Committer, LeavingAfterUndoTurnsTheStepAheadIntoASnapshot) {
    SlideAndCommit(6);
    ASSERT_TRUE(tool.committer.Undo());
    EXPECT_TRUE(tool.Leave());
    EXPECT_EQ(RecordsInReach(), 0);
    EXPECT_EQ(Shown(), (Steps{1000, 1006}));
    EXPECT_EQ(history.m_currentNo, 1);
    EXPECT_EQ(ColourOf(history.CurrentBitmap()), 1000);
}

TEST_F(Committer, LeavingAfterUndoKeepsAStepAheadThatIsASnapshotAlready) {
    SlideAndCommit(6);
    ASSERT_TRUE(tool.Leave());
    ToyTool next(history);
    ASSERT_TRUE(next.committer.Undo());
    const QString path = PathOf(history, 2);
    EXPECT_TRUE(next.Leave());
    EXPECT_EQ(PathOf(history, 2), path);
}

TEST_F(Committer, FailedCommitKeepsTheWorkPendingAndTheNextOneSavesItsOwnFile) {
    SlideAndCommit(6);
    tool.Bake();
    tool.Slide(3);
    {
        const UnwritableFiles blocked(history);
        EXPECT_EQ(tool.committer.Commit(), CommitResult::Failed);
        EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Save);
    }
    EXPECT_TRUE(tool.baked);
    EXPECT_EQ(Shown(), (Steps{1000, 1006}));
    EXPECT_EQ(tool.committer.Commit(), CommitResult::Committed);
    EXPECT_EQ(Shown(), (Steps{1000, 1009}));
}

TEST_F(Committer, WithWorkThatCannotBeCommittedNothingMoves) {
    SlideAndCommit(6);
    tool.Bake();
    tool.Slide(3);
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(tool.committer.Undo());
        EXPECT_FALSE(tool.committer.Jump(0));
        EXPECT_FALSE(tool.committer.Revert());
        EXPECT_EQ(tool.Result(), 1009);
        EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Save);
        EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);
    }
    EXPECT_TRUE(tool.committer.Undo());
    EXPECT_EQ(tool.Result(), 1000);
    EXPECT_EQ(Shown(), (Steps{1000, 1009}));
}

TEST_F(Committer, LeavingThatCannotWriteOwesTheStepAndTheNextToolsCommitPaysItFirst) {
    tool.Slide(6);
    {
        const UnwritableFiles blocked(history);
        EXPECT_FALSE(tool.Leave());
    }
    ToyTool next(history);
    EXPECT_EQ(next.Result(), 1006);
    next.Slide(10);
    {
        const UnwritableFiles blocked(history);
        EXPECT_EQ(next.committer.Commit(), CommitResult::Failed);
        EXPECT_FALSE(history.IsOriginal());
    }
    EXPECT_EQ(next.committer.Commit(), CommitResult::Committed);
    EXPECT_EQ(Shown(), (Steps{1000, 1006, 1016}));
}

TEST_F(Committer, MoveOntoAnUnreadableSnapshotIsTakenBackAndToldOnce) {
    SlideAndCommit(1);
    ASSERT_TRUE(tool.Leave());
    ToyTool next(history);
    next.Slide(10);
    ASSERT_EQ(next.committer.Commit(), CommitResult::Committed);
    next.Bake();
    ASSERT_EQ(next.committer.Commit(), CommitResult::Committed);
    Spoil(PathOf(history, 2));

    EXPECT_FALSE(next.committer.Undo());
    EXPECT_EQ(history.m_currentNo, 3);
    EXPECT_EQ(history.m_count, 3);
    EXPECT_EQ(next.Result(), 1011);
    EXPECT_TRUE(next.committer.StepOpen());
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Read);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::None);

    EXPECT_FALSE(next.committer.Jump(1));
    EXPECT_EQ(history.m_currentNo, 3);
    EXPECT_TRUE(next.committer.Jump(0));
    EXPECT_EQ(next.Result(), 1000);
    EXPECT_FALSE(next.committer.Redo());
    EXPECT_EQ(history.m_currentNo, 1);
    EXPECT_EQ(next.Result(), 1000);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Read);
}

TEST_F(Committer, RevertToAnUnreadableOriginalChangesNothingThatIsShownAndKeepsTheStepsRight) {
    SlideAndCommit(6);
    Spoil(history.m_originPath);
    EXPECT_FALSE(tool.committer.Revert());
    EXPECT_EQ(tool.Result(), 1006);
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Read);
    // The visit's step is a final image now; the tool's next version must not be laid over that.
    SlideAndCommit(8);
    ToyTool viewer(history);
    ASSERT_TRUE(viewer.LoadStep(history.CloneCurrent()));
    EXPECT_EQ(viewer.Result(), 1008);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Committer, LeavingWithAnUnreadableStepAheadIsToldAndKeepsIt) {
    SlideAndCommit(6);
    tool.Bake();
    SlideAndCommit(1);
    ASSERT_TRUE(tool.committer.Undo());
    Spoil(PathOf(history, 2));
    tool.Leave();
    EXPECT_EQ(history.TakeFailureNotice(), HistoryFailure::Read);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Committer, ANewVisitOwnsNoStep) {
    SlideAndCommit(6);
    tool.committer.BeginVisit();
    EXPECT_FALSE(tool.committer.StepOpen());
}

}  // namespace
