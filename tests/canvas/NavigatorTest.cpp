// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>

#include "CanvasSupport.h"

namespace {

using TestPictures::Noise;
using TestPictures::Plain;

TEST(NavigatorScale, TakesTheSmallerOfTheTwoRatios) {
    EXPECT_DOUBLE_EQ(CImageNavigateCtrl::ThumbScale({1470, 1000}), 0.1);
    EXPECT_DOUBLE_EQ(CImageNavigateCtrl::ThumbScale({1000, 1590}), 0.1);
    EXPECT_DOUBLE_EQ(CImageNavigateCtrl::ThumbScale({0, 50}), 0.01);
    EXPECT_DOUBLE_EQ(CImageNavigateCtrl::ThumbScale({50, 0}), 0.01);
    EXPECT_EQ(CImageNavigateCtrl::ThumbSize({1479, 1000}), QSize(147, 99));
    EXPECT_EQ(CImageNavigateCtrl::ThumbSize({100000, 1}), QSize(147, 1));
}

struct Shown {
    Shown() : tool(Noise(1470, 1000, 1), {400, 300}) {
        tool.tool.ZoomActualSize();
        tool.host.messages.clear();
    }
    CImageNavigateCtrl& Navigator() { return tool.tool.Navigator(); }
    QPoint FrameCentre() { return Navigator().FrameRect().center().toPoint(); }
    ShownTool tool;
};

TEST(Navigator, ComesUpInTheCornerWhenThePictureIsLargerThanTheClient) {
    ShownTool shown(Noise(1470, 1000, 1), {400, 300});
    EXPECT_FALSE(shown.tool.Navigator().isVisible());
    shown.tool.ZoomActualSize();
    EXPECT_TRUE(shown.tool.Navigator().isVisible());
    EXPECT_EQ(shown.tool.Navigator().geometry(), QRect(400 - 187, 300 - 216, 187, 216));
    shown.tool.ZoomFit();
    EXPECT_FALSE(shown.tool.Navigator().isVisible());
}

TEST(Navigator, StaysInTheCornerWhenTheClientGrows) {
    Shown shown;
    shown.tool.tool.Place({10, 10, 500, 420});
    EXPECT_EQ(shown.Navigator().pos(), QPoint(500 - 187, 420 - 216));
}

TEST(Navigator, ItsHeldFrameHoldsUpAllOtherInput) {
    Shown shown;
    CImageNavigateCtrl& navigator = shown.Navigator();
    EXPECT_FALSE(shown.tool.tool.IsStrokeHeld());
    QTest::mousePress(&navigator, Qt::LeftButton, {}, shown.FrameCentre());
    EXPECT_TRUE(shown.tool.tool.IsStrokeHeld());
    const ViewGeometry before = shown.tool.tool.Geometry();
    SendWheel(shown.tool.tool, {50, 50}, 120);
    EXPECT_EQ(shown.tool.tool.Geometry(), before);
    QTest::mouseRelease(&navigator, Qt::LeftButton, {}, shown.FrameCentre());
    EXPECT_FALSE(shown.tool.tool.IsStrokeHeld());
}

TEST(Navigator, ADragIsOverWhenItsReleaseGetsLost) {
    for (const QEvent::Type loss : {QEvent::WindowBlocked, QEvent::WindowDeactivate, QEvent::UngrabMouse}) {
        Shown shown;
        CImageNavigateCtrl& navigator = shown.Navigator();
        QSignalSpy dragged(&navigator, &CImageNavigateCtrl::FrameDragged);
        QTest::mousePress(&navigator, Qt::LeftButton, {}, shown.FrameCentre());
        QTest::mouseMove(&navigator, shown.FrameCentre() + QPoint(5, 3));
        QEvent event(loss);
        QCoreApplication::sendEvent(&navigator, &event);
        EXPECT_FALSE(navigator.IsDragging());
        EXPECT_EQ(dragged.count(), 1) << "the view is drawn well again";
        EXPECT_FALSE(shown.tool.tool.IsStrokeHeld());
    }
}

TEST(Navigator, FramesTheVisiblePart) {
    Shown shown;
    const QRectF source = shown.tool.tool.Geometry().ImageRect();
    const QRectF frame = shown.Navigator().Frame();
    EXPECT_NEAR(frame.x(), source.x() * 0.1, 1e-9);
    EXPECT_NEAR(frame.width(), source.width() * 0.1, 1e-9);
    EXPECT_NEAR(frame.height(), source.height() * 0.1, 1e-9);
}

TEST(Navigator, DraggingTheFramePansThePicture) {
    Shown shown;
    QSignalSpy dragging(&shown.Navigator(), &CImageNavigateCtrl::FrameDragging);
    QSignalSpy dragged(&shown.Navigator(), &CImageNavigateCtrl::FrameDragged);
    const QRectF before = shown.tool.tool.Geometry().ImageRect();
    const int settled = shown.tool.tool.settled;
    Drag(shown.Navigator(), Qt::LeftButton, shown.FrameCentre(), shown.FrameCentre() + QPoint(8, -4));
    const QRectF after = shown.tool.tool.Geometry().ImageRect();
    EXPECT_NEAR(after.x() - before.x(), 80, 1.5);
    EXPECT_NEAR(after.y() - before.y(), -40, 1.5);
    EXPECT_EQ(dragging.count(), 4);
    EXPECT_EQ(dragged.count(), 1);
    EXPECT_EQ(shown.tool.tool.panned, 4);
    EXPECT_EQ(shown.tool.tool.settled, settled + 1);
}

TEST(Navigator, TheFrameStaysInsideTheThumbnail) {
    Shown shown;
    Drag(shown.Navigator(), Qt::LeftButton, shown.FrameCentre(), shown.FrameCentre() + QPoint(500, 500));
    const QRectF frame = shown.Navigator().Frame();
    EXPECT_DOUBLE_EQ(frame.right(), 147);
    EXPECT_DOUBLE_EQ(frame.bottom(), 100);
    const ViewGeometry& geometry = shown.tool.tool.Geometry();
    EXPECT_NEAR(geometry.ImageRect().right(), 1470, 1e-6);
    EXPECT_NEAR(geometry.ImageRect().bottom(), 1000, 1e-6);
    Drag(shown.Navigator(), Qt::LeftButton, shown.FrameCentre(), shown.FrameCentre() - QPoint(500, 500));
    EXPECT_EQ(shown.Navigator().Frame().topLeft(), QPointF(0, 0));
    EXPECT_EQ(geometry.ImageRect().topLeft(), QPointF(0, 0));
}

TEST(Navigator, AFrameAsLargeAsTheThumbnailCannotMove) {
    RecordingHost host;
    QWidget parent;
    parent.resize(300, 300);
    CImageNavigateCtrl navigator(&parent);
    navigator.SetImage(CImageNavigateCtrl::MakeThumbnail(Plain(1470, 1590, 0xFF445566), 1.0), {1470, 1590},
                       QRectF(0, 0, 1470, 1590), 0.3);
    parent.show();
    navigator.show();
    QSignalSpy dragging(&navigator, &CImageNavigateCtrl::FrameDragging);
    QSignalSpy dragged(&navigator, &CImageNavigateCtrl::FrameDragged);
    Drag(navigator, Qt::LeftButton, {90, 100}, {120, 130});
    EXPECT_EQ(dragging.count(), 0);
    EXPECT_EQ(dragged.count(), 0);
    EXPECT_EQ(navigator.Frame(), QRectF(0, 0, 147, 159));
}

TEST(Navigator, APressWithoutAMoveTellsNothing) {
    Shown shown;
    QSignalSpy dragged(&shown.Navigator(), &CImageNavigateCtrl::FrameDragged);
    QTest::mouseClick(&shown.Navigator(), Qt::LeftButton, {}, shown.FrameCentre());
    EXPECT_EQ(dragged.count(), 0);
}

TEST(Navigator, APressBesideTheFrameDoesNotDrag) {
    Shown shown;
    QSignalSpy dragging(&shown.Navigator(), &CImageNavigateCtrl::FrameDragging);
    const QPoint beside = shown.Navigator().ThumbRect().topLeft() + QPoint(2, 2);
    ASSERT_FALSE(shown.Navigator().FrameRect().contains(beside));
    Drag(shown.Navigator(), Qt::LeftButton, beside, beside + QPoint(20, 20));
    EXPECT_EQ(dragging.count(), 0);
}

class CloseBox : public testing::TestWithParam<std::pair<QPoint, bool>> {};

TEST_P(CloseBox, HidesTheControlWithoutAWord) {
    Shown shown;
    QSignalSpy dragging(&shown.Navigator(), &CImageNavigateCtrl::FrameDragging);
    QSignalSpy dragged(&shown.Navigator(), &CImageNavigateCtrl::FrameDragged);
    QTest::mouseClick(&shown.Navigator(), Qt::LeftButton, {}, GetParam().first);
    EXPECT_EQ(shown.Navigator().isVisible(), !GetParam().second);
    EXPECT_EQ(dragging.count() + dragged.count(), 0);
}

INSTANTIATE_TEST_SUITE_P(Corners, CloseBox,
                         testing::Values(std::pair{QPoint(187 - 23, 5), true}, std::pair{QPoint(187 - 8, 20), true},
                                         std::pair{QPoint(187 - 24, 5), false}, std::pair{QPoint(187 - 23, 4), false},
                                         std::pair{QPoint(187 - 7, 20), false}, std::pair{QPoint(187 - 8, 21), false}));

TEST(Navigator, StaysClosedUntilTheZoomChanges) {
    Shown shown;
    QTest::mouseClick(&shown.Navigator(), Qt::LeftButton, {}, CImageNavigateCtrl::CloseBox().center());
    Drag(shown.tool.tool, Qt::LeftButton, {50, 50}, {60, 60});
    shown.tool.tool.UpdateViewRects();
    EXPECT_FALSE(shown.Navigator().isVisible());
    shown.tool.tool.ZoomIn();
    EXPECT_TRUE(shown.Navigator().isVisible());
}

TEST(Navigator, ComparingHidesItAndComingBackShowsIt) {
    Shown shown;
    shown.tool.tool.ShowNavigator(false);
    EXPECT_FALSE(shown.Navigator().isVisible());
    shown.tool.tool.hide();
    shown.tool.tool.show();
    EXPECT_TRUE(shown.Navigator().isVisible());
}

TEST(Navigator, ShowsTheZoomInPercent) {
    Shown shown;
    EXPECT_TRUE(shown.Navigator().ZoomText().startsWith(u"100"));
    shown.tool.tool.ZoomToPercent(137);
    EXPECT_TRUE(shown.Navigator().ZoomText().startsWith(u"137"));
    EXPECT_TRUE(shown.Navigator().ZoomText().endsWith(u'%'));
}

TEST(Navigator, ArrowKeysMoveTheFrame) {
    Shown shown;
    const double before = shown.tool.tool.Geometry().ImageRect().x();
    QTest::keyClick(&shown.Navigator(), Qt::Key_Right);
    EXPECT_NEAR(shown.tool.tool.Geometry().ImageRect().x() - before, 40, 1.5);
}

TEST(Navigator, TheThumbnailIsAsSharpAsTheScreen) {
    const Bitmap thumb = CImageNavigateCtrl::MakeThumbnail(Plain(1470, 1000, 0xFF884422), 2.0);
    EXPECT_EQ(thumb.Width(), 294);
    EXPECT_EQ(thumb.Height(), 200);
    EXPECT_EQ(TestPictures::PixelAt(thumb, 100, 100), 0xFF884422u);
    EXPECT_TRUE(CImageNavigateCtrl::MakeThumbnail({}, 1.0).IsNull());
}

TEST(Navigator, ANewPictureGetsANewThumbnail) {
    Shown shown;
    shown.tool.tool.SetShowBitmap(Plain(1470, 1000, 0xFF10C020));
    const QImage grabbed = shown.Navigator().grab().toImage();
    const double ratio = shown.tool.tool.PixelRatio();
    EXPECT_EQ(grabbed.pixel((QPointF(shown.Navigator().FrameRect().center()) * ratio).toPoint()), 0xFF10C020);
}

}  // namespace
