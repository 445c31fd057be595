// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSizeWnd.h"

#include <QtCore/QFile>

#include "PC_Dsp.h"
#include "ResizeHost.h"

namespace {

class SizeCanvas : public testing::Test {
  protected:
    void SetUp() override {
        picture = TestPictures::Face(1200, 900);
        host.Open(picture);
    }
    ResizeHost host;
    Bitmap picture;
};

TEST_F(SizeCanvas, ASizeIsAppliedAsATaskShownFittedAndRecorded) {
    host.canvas->ZoomActualSize();
    host.messages.clear();
    ASSERT_TRUE(host.canvas->ApplySize(600, 300));
    EXPECT_EQ(host.tasks, 1);
    EXPECT_EQ(host.ImageSize(), QSize(600, 300));
    EXPECT_TRUE(host.canvas->GetShowBitmap() == PC_Dsp::Resample(picture, 600, 300));
    EXPECT_TRUE(host.canvas->Geometry().AtFit());
    EXPECT_EQ(host.canvas->Geometry(), host.canvas->Logic().Geometry());
    EXPECT_EQ(host.history.m_count, 2);
    EXPECT_EQ(host.Sent<HistoryNews>(), 1);
    EXPECT_EQ(host.Sent<SizeNews>(), 1);
    EXPECT_FALSE(host.canvas->HasPendingWork());
    EXPECT_TRUE(host.canvas->IsImageChanged());
}

TEST_F(SizeCanvas, ThePresentSizeRunsNoTask) {
    EXPECT_FALSE(host.canvas->ApplySize(1200, 900));
    EXPECT_EQ(host.tasks, 0);
    EXPECT_EQ(host.history.m_count, 1);
    EXPECT_TRUE(host.messages.empty());
}

TEST_F(SizeCanvas, EscInTheProgressWindowLeavesEverythingAsItWas) {
    host.canvas->ZoomToPercent(130);
    const ViewGeometry view = host.canvas->Geometry();
    const Bitmap shown = host.canvas->Logic().View().bitmap.Clone();
    host.messages.clear();
    host.cancelAt = 1.0f;
    EXPECT_FALSE(host.canvas->ApplySize(2400, 1800));
    EXPECT_EQ(host.tasks, 1);
    EXPECT_TRUE(host.canvas->GetShowBitmap().SharesPixelsWith(picture));
    EXPECT_EQ(host.canvas->Geometry(), view);
    EXPECT_TRUE(host.canvas->Logic().View().bitmap == shown);
    EXPECT_EQ(host.history.m_count, 1);
    EXPECT_EQ(host.Sent<HistoryNews>(), 0);
    host.cancelAt.reset();
    EXPECT_TRUE(host.canvas->ApplySize(2400, 1800));
}

TEST_F(SizeCanvas, UndoRedoRevertAndJumpTellThePanel) {
    ASSERT_TRUE(host.canvas->ApplySize(600, 450));
    ASSERT_TRUE(host.canvas->ApplySize(300, 100));
    host.Undo();
    EXPECT_EQ(host.Fields(), QSize(600, 450));
    host.Undo();
    EXPECT_EQ(host.Fields(), QSize(1200, 900));
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
    host.Redo();
    EXPECT_EQ(host.Fields(), QSize(600, 450));
    host.canvas->OnHistoryJump(2);
    EXPECT_EQ(host.Fields(), QSize(300, 100));
    host.canvas->OnRevert();
    EXPECT_EQ(host.Fields(), QSize(1200, 900));
}

TEST_F(SizeCanvas, LeavingCountsTheClickItSharesWithRotatingAndHandsTheViewOn) {
    const int before = ResizeHost::Clicks("888020204");
    host.canvas->OnApply();
    EXPECT_EQ(ResizeHost::Clicks("888020204"), before);
    ASSERT_TRUE(host.canvas->ApplySize(600, 450));
    host.canvas->ZoomToPercent(220);
    host.canvas->OnApply();
    EXPECT_EQ(ResizeHost::Clicks("888020204"), before + 1);
    const Bitmap result = host.canvas->GetShowBitmap();
    host.NewCanvas();
    ASSERT_TRUE(host.canvas->OnEnter());
    EXPECT_TRUE(host.canvas->GetShowBitmap() == result);
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 2.2);
}

TEST_F(SizeCanvas, AnUnreadableEntryPictureChangesNothing) {
    ASSERT_TRUE(QFile::remove(host.canvas->Logic().TempFilePath()));
    EXPECT_FALSE(host.canvas->ApplySize(600, 450));
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(SizeCanvas, WhileBusyNothingHappens) {
    host.busy = true;
    EXPECT_FALSE(host.canvas->ApplySize(600, 450));
    EXPECT_EQ(host.tasks, 0);
}

}  // namespace
