// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEffectWnd.h"

#include <QtCore/QTimer>

#include "BitmapView.h"
#include "ClickCount.h"
#include "EffectHost.h"

namespace {

class EffectCanvas : public testing::Test {
  protected:
    void SetUp() override {
        picture = TestPictures::Face(400, 300);
        host.Open(picture);
        ASSERT_TRUE(host.WaitLoaded(1));
    }
    // What the user sees of the picture.
    Bitmap Shown() {
        QRectF source;
        QRect place;
        host.canvas->GetViewRects(&source, &place);
        return BitmapOf(host.canvas->grab().toImage().copy(place));
    }
    Bitmap picture;
    EffectHost host;
};

TEST_F(EffectCanvas, ChoosingARowAppliesItsEffect) {
    host.compareMode = 1;
    host.Choose(1, 3);
    EXPECT_EQ(host.canvas->Look(), 3);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == EffectHost::Effect(picture, 3));
    EXPECT_TRUE(Shown() == EffectHost::Effect(picture, 3));
    EXPECT_EQ(host.Selected(1), 3);
    EXPECT_EQ(host.tasks, 1);
    EXPECT_EQ(host.Sent<HistoryNews>(), 1);
    EXPECT_EQ(host.compareMode, 0);
    EXPECT_EQ(host.history.m_count, 2);
}

TEST_F(EffectCanvas, TheStrengthWindowComesWithTheEffectAtItsPlaceAndAtFullStrength) {
    EXPECT_FALSE(host.IsStrengthShown());
    host.Choose(1, 3);
    ASSERT_TRUE(host.IsStrengthShown());
    EXPECT_EQ(host.panel->Strength()->Value(), 100);
    EXPECT_EQ(host.panel->Strength()->pos(), QPoint(260, host.frame.height() - 150));
    EXPECT_EQ(host.panel->Strength()->window(), &host.frame);
}

TEST_F(EffectCanvas, ASecondEffectReplacesTheFirstAlsoFromAnotherCategory) {
    host.Choose(1, 3);
    host.Click("BtnLomo");
    ASSERT_TRUE(host.WaitLoaded(4));
    host.Choose(4, 1);
    EXPECT_EQ(host.canvas->Look(), 16);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == EffectHost::Effect(picture, 16));
    EXPECT_EQ(host.Selected(4), 1);
    EXPECT_EQ(host.Selected(1), -1) << "the other lists lose their selection";
    EXPECT_EQ(host.history.m_count, 2);
}

TEST_F(EffectCanvas, TheStrengthIsPaintedAsTheSliderMovesAndLeavesTheHistoryAlone) {
    host.Choose(1, 3);
    const auto stamp = host.history.CurrentStamp();
    PaintCounter paints(host.canvas.get());
    CSliderCtrl* slider = host.Slider();
    QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(100));
    for (const int value : {80, 45}) {
        const int before = paints.count;
        host.compareMode = 2;
        QTest::mouseMove(slider, slider->HandleAt(value));
        EXPECT_EQ(host.canvas->Alpha(), slider->value());
        EXPECT_GT(paints.count, before) << "painted before the event returns";
        EXPECT_EQ(host.compareMode, 0);
    }
    QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(45));
    EXPECT_EQ(host.history.CurrentStamp(), stamp);
    EXPECT_LE(TestPictures::LargestDifference(Shown(), host.canvas->GetShowBitmap()), 1);
    EXPECT_TRUE(host.canvas->HasPendingWork());
}

TEST_F(EffectCanvas, AtStrength0TheSourceIsShown) {
    host.Choose(1, 3);
    host.DragStrength(0);
    EXPECT_TRUE(Shown() == picture);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
}

TEST_F(EffectCanvas, TheSameRowAgainRunsAgainAndSetsFullStrength) {
    host.Choose(1, 3);
    host.DragStrength(30);
    host.Choose(1, 3);
    EXPECT_EQ(host.tasks, 2);
    EXPECT_EQ(host.canvas->Alpha(), 100);
    EXPECT_EQ(host.panel->Strength()->Value(), 100);
    EXPECT_EQ(host.Selected(1), 3);
}

TEST_F(EffectCanvas, ACancelledEffectPutsBackEffectStrengthAndRow) {
    host.Choose(1, 3);
    host.DragStrength(30);
    const Bitmap result = host.canvas->GetShowBitmap(), shown = Shown();
    host.messages.clear();
    host.cancelAt = 0.0f;
    host.Choose(1, 6);
    EXPECT_EQ(host.canvas->Look(), 3);
    EXPECT_EQ(host.canvas->Alpha(), 30);
    EXPECT_EQ(host.Selected(1), 3);
    EXPECT_EQ(host.panel->Strength()->Value(), 30);
    EXPECT_TRUE(host.IsStrengthShown());
    EXPECT_TRUE(host.canvas->GetShowBitmap() == result);
    EXPECT_TRUE(Shown() == shown);
    EXPECT_EQ(host.Sent<HistoryNews>(), 0);
}

TEST_F(EffectCanvas, ACancelledFirstEffectLeavesNothingSelected) {
    host.cancelAt = 0.0f;
    host.Choose(1, 6);
    EXPECT_EQ(host.Selected(1), -1);
    EXPECT_FALSE(host.IsStrengthShown());
    EXPECT_TRUE(Shown() == picture);
    EXPECT_EQ(host.history.m_count, 1);
    EXPECT_FALSE(host.canvas->IsImageChanged());
}

TEST_F(EffectCanvas, LeavingHidesTheStrengthWindowAndALateValueDoesNothing) {
    host.Choose(1, 3);
    CSliderCtrl* slider = host.Slider();
    const Bitmap result = host.canvas->GetShowBitmap();
    host.Leave();
    EXPECT_FALSE(host.IsStrengthShown());
    emit slider->ValueChanging(10);
    emit slider->ValueChanged(10);
    EXPECT_TRUE(host.history.CurrentBitmap() == result);
    host.Enter();
    EXPECT_FALSE(host.IsStrengthShown()) << "the effect is in the picture now";
    emit slider->ValueChanged(10);
    EXPECT_EQ(host.canvas->Alpha(), 100);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == result);
}

TEST_F(EffectCanvas, LeavingCountsNoClick) {
    host.Choose(1, 3);
    ClickCounts().Clear();
    host.Leave();
    EXPECT_TRUE(ClickCounts().Counts().empty());
}

TEST_F(EffectCanvas, LeavingWithoutAnEffectPushesNoStep) {
    host.Leave();
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(EffectCanvas, ChangedMeansAwayFromTheOriginalOrAnEffectInForce) {
    EXPECT_FALSE(host.canvas->IsImageChanged());
    host.Choose(1, 3);
    EXPECT_TRUE(host.canvas->IsImageChanged());
    host.canvas->OnRevert();
    EXPECT_FALSE(host.canvas->IsImageChanged());
}

TEST_F(EffectCanvas, ShortcutsWaitWhileTheSliderIsHeld) {
    host.Choose(1, 3);
    host.canvas->SetStrength(40, true);
    EXPECT_FALSE(host.canvas->IsStrokeHeld()) << "without a button down there is no stroke";
    CSliderCtrl* slider = host.Slider();
    QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(40));
    QTest::mouseMove(slider, slider->HandleAt(60));
    EXPECT_TRUE(host.canvas->IsStrokeHeld());
    QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(60));
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
}

TEST_F(EffectCanvas, TheNavigatorShowsTheEffect) {
    host.Open(TestPictures::Face(1600, 1200));
    ASSERT_TRUE(host.WaitLoaded(1));
    host.canvas->ZoomToPercent(200);
    ASSERT_TRUE(host.canvas->Navigator().isVisible());
    const QImage before = host.canvas->Navigator().grab().toImage();
    host.Choose(1, 5);
    EXPECT_NE(host.canvas->Navigator().grab().toImage(), before);
}

TEST_F(EffectCanvas, AnEffectRunsOnAWorkerWhileTheWindowPaints) {
    QTimer painter;
    QObject::connect(&painter, &QTimer::timeout, [&] { host.canvas->repaint(); });
    painter.start(0);
    for (int row = 0; row < 8; ++row) host.Choose(1, row);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == EffectHost::Effect(picture, 7));
}

TEST_F(EffectCanvas, AnEffectMayBeChosenWhileItsCategoryFills) {
    host.Click("BtnFade");
    ASSERT_TRUE(QTest::qWaitFor([&] { return host.List(5)->count() > 0; }));
    host.Choose(5, 0);
    EXPECT_EQ(host.canvas->Look(), 30);
    ASSERT_TRUE(host.WaitLoaded(5));
    EXPECT_EQ(host.Selected(5), 0);
    EXPECT_EQ(host.List(5)->count(), 6);
}

}  // namespace
