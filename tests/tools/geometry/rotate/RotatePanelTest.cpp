// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtGui/QWheelEvent>

#include "RotateHost.h"

namespace {

class RotatePanel : public testing::Test {
  protected:
    void SetUp() override {
        picture = TestPictures::Face(400, 300);
        host.Open(picture);
    }
    void ExpectAtRest() const {
        EXPECT_EQ(host.Slider()->value(), 0);
        EXPECT_EQ(host.Value(), QString());
        EXPECT_FALSE(host.Enabled("BtnChongZhi"));
    }

    Bitmap picture;
    RotateHost host;
};

TEST_F(RotatePanel, AnAngleThatCannotBeMadeIsRefusedWithAMessageAndTheSliderGoesBack) {
    host.Open(TestPictures::Plain(Bitmap::MaxSide, 1, 0xFF808080));
    host.Slider()->setFocus();
    QTest::keyClick(host.Slider(), Qt::Key_Right);
    EXPECT_EQ(host.told, std::vector<QString>{QStringLiteral("ids_toolarge")});
    EXPECT_EQ(host.Slider()->value(), 0);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == TestPictures::Plain(Bitmap::MaxSide, 1, 0xFF808080));
    host.Click("BtnYouXuanZhuan");
    EXPECT_EQ(host.ImageSize(), QSize(1, Bitmap::MaxSide));
}

TEST_F(RotatePanel, TheButtonsTurnAndFlipThePicture) {
    const struct {
        const char* button;
        RotateFlipType type;
    } rows[] = {{"BtnZuoXuanZhuan", Rotate270FlipNone},
                {"BtnYouXuanZhuan", Rotate90FlipNone},
                {"BtnZuoYouFanZhuan", RotateNoneFlipX},
                {"BtnShangXiaFanZhuan", RotateNoneFlipY}};
    for (const auto& row : rows) {
        host.Open(picture);
        host.Click(row.button);
        EXPECT_TRUE(host.Result() == RotateHost::Reoriented(picture, row.type)) << row.button;
        EXPECT_EQ(host.Sent<HistoryNews>(), 1) << row.button;
        EXPECT_TRUE(host.Enabled("BtnChongZhi")) << row.button;
        EXPECT_TRUE(host.canvas->HasPendingWork()) << row.button;
        EXPECT_EQ(host.history.m_count, 1) << row.button;
    }
}

TEST_F(RotatePanel, FourRightClicksLeaveTheToolUnchangedAndPushNothing) {
    for (int i = 0; i < 4; ++i) host.Click("BtnYouXuanZhuan");
    EXPECT_TRUE(host.State().IsUnchanged());
    EXPECT_FALSE(host.canvas->HasPendingWork());
    host.canvas->OnApply();
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(RotatePanel, AFlipPutsTheSliderToTheOtherSide) {
    host.SetAngle(15);
    EXPECT_EQ(host.Value(), QStringLiteral("15"));
    host.Click("BtnZuoYouFanZhuan");
    EXPECT_EQ(host.Slider()->value(), -15);
    EXPECT_EQ(host.Value(), QStringLiteral("-15"));
    EXPECT_TRUE(host.Result() == RotateHost::Turned(RotateHost::Reoriented(picture, RotateNoneFlipX), -15));
    host.Click("BtnShangXiaFanZhuan");
    EXPECT_EQ(host.Slider()->value(), 15);
}

TEST_F(RotatePanel, ATurnKeepsTheAngle) {
    host.SetAngle(-20);
    host.Click("BtnYouXuanZhuan");
    EXPECT_EQ(host.Slider()->value(), -20);
    EXPECT_EQ(host.Value(), QStringLiteral("-20"));
}

TEST_F(RotatePanel, ADragPreviewsAndTheReleaseTurnsThePicture) {
    host.PressSlider();
    for (const int angle : {12, 30, 47}) {
        host.MoveSlider(angle);
        EXPECT_NEAR(host.Slider()->value(), angle, 2);
        EXPECT_EQ(host.State().Angle(), host.Slider()->value());
        EXPECT_EQ(host.Value(), QString::number(host.Slider()->value()));
        EXPECT_TRUE(host.canvas->Logic().IsDragging());
        EXPECT_TRUE(host.IsBusy()) << "history and tools wait while the slider is held";
        EXPECT_EQ(host.Sent<HistoryNews>(), 0);
    }
    EXPECT_TRUE(host.Enabled("BtnChongZhi"));
    host.ReleaseSlider();
    EXPECT_FALSE(host.canvas->Logic().IsDragging());
    EXPECT_FALSE(host.IsBusy());
    EXPECT_EQ(host.Sent<HistoryNews>(), 1);
    EXPECT_EQ(host.Sent<SizeNews>(), 1);
    EXPECT_TRUE(host.Result() == RotateHost::Turned(picture, host.Slider()->value()));
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(RotatePanel, APressThatMovesNothingChangesNothing) {
    host.PressSlider();
    host.ReleaseSlider();
    EXPECT_FALSE(host.canvas->HasPendingWork());
    EXPECT_FALSE(host.Enabled("BtnChongZhi"));
    EXPECT_TRUE(host.Result() == picture);
}

TEST_F(RotatePanel, TheKeyboardHasFinerStepsThanAPixelOfTheSlider) {
    CSliderCtrl* slider = host.Slider();
    ASSERT_LT(slider->width(), 360) << "a pixel is more than a degree";
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(host.State().Angle(), 1);
    EXPECT_TRUE(host.Result() == RotateHost::Turned(picture, 1));
    QTest::keyClick(slider, Qt::Key_Left);
    QTest::keyClick(slider, Qt::Key_Left);
    EXPECT_EQ(host.State().Angle(), -1);
    QTest::keyClick(slider, Qt::Key_PageUp);
    EXPECT_EQ(host.State().Angle(), 14);
    QTest::keyClick(slider, Qt::Key_End);
    EXPECT_EQ(host.State().Angle(), 180);
    EXPECT_TRUE(host.Result() == RotateHost::Reoriented(picture, Rotate180FlipNone));
    QTest::keyClick(slider, Qt::Key_Home);
    EXPECT_EQ(host.State().Angle(), -180);
}

TEST_F(RotatePanel, EachKeyAndTurnOfTheWheelIsAnOperation) {
    CSliderCtrl* slider = host.Slider();
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(host.Sent<HistoryNews>(), 1);
    EXPECT_TRUE(host.canvas->HasPendingWork());
    EXPECT_FALSE(host.canvas->Logic().IsDragging());
    QWheelEvent wheel(QPointF(10, 10), slider->mapToGlobal(QPointF(10, 10)), {}, {0, 120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(slider, &wheel);
    EXPECT_EQ(host.State().Angle(), 2);
    EXPECT_EQ(host.Sent<HistoryNews>(), 2);
    EXPECT_TRUE(host.Result() == RotateHost::Turned(picture, 2));
}

TEST_F(RotatePanel, ADoubleClickOnTheSliderTakesTheAngleBackToZero) {
    host.SetAngle(15);
    QTest::mouseDClick(host.Slider(), Qt::LeftButton, {}, host.Slider()->HandleAt(15));
    EXPECT_EQ(host.State().Angle(), 0);
    EXPECT_EQ(host.Value(), QStringLiteral("0"));
    EXPECT_TRUE(host.Result() == picture);
}

TEST_F(RotatePanel, ResetGivesTheEntryPictureAndRestsThePanel) {
    const int clicks = RotateHost::Clicks("2010401");
    host.Click("BtnYouXuanZhuan");
    host.SetAngle(12);
    host.Click("BtnShangXiaFanZhuan");
    host.messages.clear();
    host.Click("BtnChongZhi");
    EXPECT_TRUE(host.Result() == picture);
    ExpectAtRest();
    EXPECT_EQ(RotateHost::Clicks("2010401"), clicks + 1);
    EXPECT_EQ(host.Sent<HistoryNews>(), 1);
    EXPECT_EQ(host.history.m_count, 1);
    EXPECT_TRUE(host.canvas->Geometry().AtFit());
}

TEST_F(RotatePanel, EveryActLeavesCompare) {
    for (const char* button :
         {"BtnZuoXuanZhuan", "BtnYouXuanZhuan", "BtnZuoYouFanZhuan", "BtnShangXiaFanZhuan", "BtnChongZhi"}) {
        host.compareMode = 2;
        host.Click(button);
        EXPECT_EQ(host.compareMode, 0) << button;
    }
    host.compareMode = 2;
    host.PressSlider();
    host.MoveSlider(40);
    EXPECT_EQ(host.compareMode, 0);
    host.ReleaseSlider();
}

TEST_F(RotatePanel, ButtonsDoNothingWhileATaskRuns) {
    host.busy = true;
    host.Click("BtnYouXuanZhuan");
    EXPECT_TRUE(host.State().IsUnchanged());
    host.busy = false;
    host.Click("BtnYouXuanZhuan");
    EXPECT_FALSE(host.State().IsUnchanged());
}

TEST_F(RotatePanel, RestsAfterUndoRedoAndRevert) {
    host.SetAngle(9);
    host.Undo();
    ExpectAtRest();
    EXPECT_TRUE(host.Result() == picture);
    host.Redo();
    ExpectAtRest();
    EXPECT_TRUE(host.Result() == RotateHost::Turned(picture, 9));
    host.SetAngle(4);
    host.canvas->OnRevert();
    ExpectAtRest();
    EXPECT_TRUE(host.Result() == picture);
    host.SetAngle(4);
    host.canvas->OnHistoryJump(0);
    ExpectAtRest();
    EXPECT_TRUE(host.Result() == picture);
}

TEST_F(RotatePanel, ANewPictureRestsThePanel) {
    host.SetAngle(9);
    host.Open(TestPictures::Ramp(50, 60));
    ExpectAtRest();
}

TEST_F(RotatePanel, WithAnotherToolsCanvasItRestsAndDoesNothing) {
    host.SetAngle(9);
    host.canvas = nullptr;
    host.Click("BtnYouXuanZhuan");
    ExpectAtRest();
    host.Slider()->setFocus();
    QTest::keyClick(host.Slider(), Qt::Key_Right);
    ExpectAtRest();
}

}  // namespace
