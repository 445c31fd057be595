// SPDX-License-Identifier: GPL-3.0-or-later
// Work that the history does not hold is never lost, whichever way the user goes.
#include <QtCore/QDir>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>

#include "AdjustSliders.h"
#include "CAdjustWnd.h"
#include "CHistoryManager.h"
#include "CImageNavigateCtrl.h"
#include "CRotateWnd.h"
#include "FrameFixture.h"

namespace {

class NothingLost : public FrameTest {
  protected:
    static CHistoryManager& History() { return CHistoryManager::Instance(); }
    static bool Enabled(const char* name) { return Driver::Find(QLatin1String(name))->isEnabled(); }
    static void Click(const char* name) { Driver::Click(QLatin1String(name)); }
    Bitmap OnShow() { return Mid().Canvas()->GetShowBitmap(); }
    // A disk that is full: a folder stands where each snapshot would go.
    static void FillDisk() {
        for (int i = 0; i < CHistoryManager::FileCount; ++i)
            QDir().mkpath(History().m_tempDir + QStringLiteral("undoredo%1.bin/x").arg(i));
    }
    static void FreeDisk() {
        for (int i = 0; i < CHistoryManager::FileCount; ++i)
            QDir(History().m_tempDir + QStringLiteral("undoredo%1.bin").arg(i)).removeRecursively();
    }
    void SetBrightness(int value) {
        static_cast<CAdjustWnd*>(Mid().Canvas())->CommitValue(AdjustIndex::Brightness, value);
    }
    // Leaves the adjust tool while its result cannot be written; the user is told.
    void LeaveOnAFullDisk() {
        SetBrightness(40);
        m_result = OnShow();
        FillDisk();
        EXPECT_FALSE(MessageOf([this] { Mid().SwitchTool(3); }).isEmpty());
        EXPECT_EQ(Mid().Tool(), 3);
    }
    Bitmap m_result;
};

}  // namespace

TEST_F(NothingLost, RedoIsOffWhileATurnIsInNoStep) {
    Show(Photo());
    SetBrightness(40);
    Click("BtnUndo");
    ASSERT_TRUE(Enabled("BtnRedo"));
    Click("btnTab2");
    Click("BtnXuanZhuan");
    ASSERT_TRUE(Enabled("BtnRedo"));
    Click("BtnYouXuanZhuan");
    const Bitmap turned = OnShow();
    EXPECT_FALSE(Enabled("BtnRedo"));
    QTest::keyClick(&Frame(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(&Frame(), Qt::Key_Y, Qt::ControlModifier);
    Mid().Canvas()->OnRedo();
    EXPECT_TRUE(OnShow() == turned);
    Click("BtnUndo");
    Click("BtnRedo");
    EXPECT_TRUE(OnShow() == turned) << "undo recorded it";
}

TEST_F(NothingLost, APictureThatNoStepCouldHoldCountsAsChangedInTheNextTool) {
    Show(Photo());
    LeaveOnAFullDisk();
    EXPECT_TRUE(OnShow() == m_result);
    EXPECT_TRUE(Mid().Canvas()->IsImageChanged());
    EXPECT_FALSE(Mid().IsSafeToDiscard());
    EXPECT_TRUE(Enabled("BtnCompare"));
    EXPECT_TRUE(Enabled("BtnOriginal"));
    EXPECT_TRUE(Enabled("BtnUndo"));
    EXPECT_FALSE(Enabled("BtnRedo"));
    Mid().SetCompareMode(2);
    EXPECT_EQ(Mid().CompareMode(), 2);
    Mid().SetCompareMode(0);
    Mid().SwitchTool(4);
    EXPECT_TRUE(OnShow() == m_result);
    EXPECT_FALSE(Mid().IsSafeToDiscard()) << "in every tool";
    FreeDisk();
}

TEST_F(NothingLost, AFullDiskRefusesEveryMoveAndASpareOneRecordsThePictureFirst) {
    Show(Photo());
    LeaveOnAFullDisk();
    for (const auto& move : {+[](CBaseWnd& c) { c.OnUndo(); }, +[](CBaseWnd& c) { c.OnRedo(); },
                             +[](CBaseWnd& c) { c.OnRevert(); }, +[](CBaseWnd& c) { c.OnHistoryJump(0); }}) {
        move(*Mid().Canvas());
        EXPECT_TRUE(OnShow() == m_result);
    }
    FreeDisk();
    Mid().Canvas()->OnUndo();
    EXPECT_TRUE(OnShow() == PhotoPixels());
    Mid().Canvas()->OnRedo();
    EXPECT_TRUE(OnShow() == m_result);
    EXPECT_EQ(History().m_count, 2);
}

TEST_F(NothingLost, WithSpaceAgainOriginalWorksAndIsUndone) {
    Show(Photo());
    LeaveOnAFullDisk();
    FreeDisk();
    Click("BtnOriginal");
    EXPECT_TRUE(OnShow() == PhotoPixels());
    Click("BtnUndo");
    EXPECT_TRUE(OnShow() == m_result);
}

TEST_F(NothingLost, SavingThePictureMakesItSafe) {
    Show(Photo());
    LeaveOnAFullDisk();
    EXPECT_TRUE(Saved(QStringLiteral("kept")) == m_result);
    EXPECT_TRUE(Mid().IsSafeToDiscard());
    Mid().SwitchTool(4);
    EXPECT_TRUE(Mid().IsSafeToDiscard());
    FreeDisk();
}

TEST_F(NothingLost, AnEarlierSaveDoesNotCoverWhatTheDiskRefused) {
    Show(Photo());
    SetBrightness(20);
    ASSERT_FALSE(Saved(QStringLiteral("early")).IsNull());
    ASSERT_TRUE(Mid().IsSafeToDiscard());
    LeaveOnAFullDisk();
    EXPECT_FALSE(Mid().IsSafeToDiscard());
    FreeDisk();
}

TEST_F(NothingLost, WorkOnTopOfAPictureThatIsOwedIsRecordedAfterIt) {
    Show(Photo());
    LeaveOnAFullDisk();
    static_cast<CRotateWnd*>(Mid().Canvas())->Turn(&CRotateLogic::TurnRight);
    const Bitmap turned = OnShow();
    FreeDisk();
    Mid().SwitchTool(4);
    EXPECT_EQ(History().m_count, 3);
    Mid().Canvas()->OnUndo();
    EXPECT_TRUE(OnShow() == m_result);
    Mid().Canvas()->OnUndo();
    EXPECT_TRUE(OnShow() == PhotoPixels());
    Mid().Canvas()->OnHistoryJump(2);
    EXPECT_TRUE(OnShow() == turned);
}

TEST_F(NothingLost, TheHeldFrameOfTheOverviewHoldsUpPasteToolsAndSections) {
    Show(Photo());
    Mid().Canvas()->ZoomToPercent(200);
    CImageNavigateCtrl& navigator = Mid().Canvas()->Navigator();
    ASSERT_TRUE(navigator.isVisible());
    const QPoint at = navigator.FrameRect().center().toPoint();
    QTest::mousePress(&navigator, Qt::LeftButton, {}, at);
    QTest::mouseMove(&navigator, at + QPoint(4, 4));
    const QString held = Mid().HeldPath();
    QTest::keyClick(&Frame(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(&Frame(), Qt::Key_F3);
    EXPECT_EQ(Mid().Tool(), 1);
    EXPECT_EQ(Mid().HeldPath(), held);
    QTest::mouseRelease(&navigator, Qt::LeftButton, {}, at + QPoint(4, 4));
    QTest::keyClick(&Frame(), Qt::Key_F3);
    EXPECT_EQ(Mid().Tool(), 7);
}
