// SPDX-License-Identifier: GPL-3.0-or-later
// Rotation in the whole program: real windows, mouse and keyboard events only.
#include "CHistoryManager.h"
#include "FrameFixture.h"
#include "PC_Dsp.h"

namespace {

class RotateSession : public FrameTest {
  protected:
    void SetUp() override {
        FrameTest::SetUp();
        photo = PhotoPixels();
        Show(WritePicture(QStringLiteral("turn.png"), photo));
        Driver::Click(QStringLiteral("btnTab2"));
        Driver::Click(QStringLiteral("BtnXuanZhuan"));
        ASSERT_EQ(Mid().Tool(), 3);
    }
    Bitmap OnShow() { return Mid().Canvas()->GetShowBitmap(); }
    static bool Usable(const char* name) { return Driver::Find(QLatin1String(name))->isEnabled(); }
    static Bitmap Reoriented(Bitmap picture, RotateFlipType type) {
        EXPECT_NE(PC_Dsp::SingleRotate(picture, type), 0);
        return picture;
    }

    Bitmap photo;
};

}  // namespace

TEST_F(RotateSession, TurnsFlipsAndAnglesGoThroughHistoryToolsAndFiles) {
    auto& history = CHistoryManager::Instance();
    EXPECT_FALSE(Usable("BtnUndo"));
    Driver::Click(QStringLiteral("BtnYouXuanZhuan"));
    EXPECT_TRUE(Usable("BtnUndo")) << "pending work can be undone";
    Driver::DragSlider(QStringLiteral("SlideRenYiXuanZhuan"), 7);
    Driver::Click(QStringLiteral("BtnZuoYouFanZhuan"));
    const Bitmap upright = Reoriented(Reoriented(photo, Rotate90FlipNone), RotateNoneFlipX);
    const Bitmap turned = PC_Dsp::MultiRotate(upright, -7, 0, 0, 0, 0);
    EXPECT_EQ(OnShow(), turned);
    EXPECT_EQ(history.m_count, 1);
    EXPECT_EQ(Saved(QStringLiteral("turned"), 1), turned) << "PNG holds the exact pixels, corners included";

    // Another tool takes the result over as one step.
    Driver::Click(QStringLiteral("btnTab1"));
    ASSERT_EQ(Mid().Tool(), 1);
    EXPECT_EQ(OnShow(), turned);
    EXPECT_EQ(history.m_count, 2);
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(OnShow(), photo);
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_EQ(OnShow(), turned);

    // Back in the tool, undo records what is pending and goes to the step before.
    Driver::Click(QStringLiteral("btnTab2"));
    Driver::Click(QStringLiteral("BtnXuanZhuan"));
    Driver::Click(QStringLiteral("BtnShangXiaFanZhuan"));
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(OnShow(), turned);
    EXPECT_EQ(history.m_count, 3);
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_EQ(OnShow(), Reoriented(turned, RotateNoneFlipY));
}

TEST_F(RotateSession, AJpegHasWhiteWhereThePictureHasCorners) {
    Driver::DragSlider(QStringLiteral("SlideRenYiXuanZhuan"), 20);
    const Bitmap saved = Saved(QStringLiteral("corners"), 0);
    ASSERT_EQ(saved.Width(), OnShow().Width());
    for (const int x : {0, saved.Width() - 1})
        for (const int y : {0, saved.Height() - 1})
            for (int channel = 0; channel < 3; ++channel) EXPECT_GE(saved.Row(y)[4 * x + channel], 250);
}

TEST_F(RotateSession, CompareDuringPendingWorkShowsTheFullResultBesideTheOriginal) {
    Driver::DragSlider(QStringLiteral("SlideRenYiXuanZhuan"), 12);
    Driver::Press(QStringLiteral("BtnCompare"));
    EXPECT_EQ(Mid().CompareMode(), 1);
    Driver::Release(QStringLiteral("BtnCompare"));
    Mid().SetCompareMode(2);
    EXPECT_EQ(Mid().CompareMode(), 2);
    Driver::Click(QStringLiteral("BtnYouXuanZhuan"));
    EXPECT_EQ(Mid().CompareMode(), 0) << "an act leaves compare";
    EXPECT_EQ(OnShow(), PC_Dsp::MultiRotate(Reoriented(photo, Rotate90FlipNone), 12, 0, 0, 0, 0));
}

TEST_F(RotateSession, LeavingAnUnchangedToolPushesNothingAndAsksNothing) {
    for (int i = 0; i < 4; ++i) Driver::Click(QStringLiteral("BtnYouXuanZhuan"));
    Driver::Click(QStringLiteral("btnTab1"));
    EXPECT_EQ(CHistoryManager::Instance().m_count, 1);
    Frame().close();
    EXPECT_FALSE(Frame().isVisible());
}
