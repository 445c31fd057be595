// SPDX-License-Identifier: GPL-3.0-or-later
#include "CAdjustWnd.h"

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include "AdjustHost.h"

#include "BitmapView.h"
#include "ClickCount.h"
#include "ImageParams.h"

using namespace AdjustIndex;

namespace {

class AdjustCanvas : public testing::Test {
  protected:
    // What the user sees of the picture: the canvas's own pixels inside the picture's place.
    Bitmap Shown() {
        QRectF source;
        QRect place;
        host.canvas->GetViewRects(&source, &place);
        QImage shown(place.size(), QImage::Format_RGB32);
        host.canvas->render(&shown, {}, place, {});  // without the navigator, which lies over it
        return BitmapOf(shown);
    }
    int Clicks() const {
        const auto counts = ClickCounts().Counts();
        const auto found = counts.find(QStringLiteral("888020101"));
        return found == counts.end() ? 0 : found->second;
    }

    AdjustHost host;
};

TEST_F(AdjustCanvas, APictureSmallerThanTheClientIsShownPixelForPixel) {
    const Bitmap picture = TestPictures::Face(300, 200);
    host.Open(picture);
    EXPECT_TRUE(Shown() == picture);
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 1.0);
    int width = 0, height = 0;
    host.canvas->GetImageSize(&width, &height);
    EXPECT_EQ(QSize(width, height), QSize(300, 200));
}

TEST_F(AdjustCanvas, WhatIsShownIsTheResult) {
    host.Open(TestPictures::Face(300, 200));
    host.canvas->PreviewValue(Saturation, 60);
    EXPECT_TRUE(Shown() == host.canvas->GetShowBitmap());
}

TEST_F(AdjustCanvas, ZoomStaysBetweenItsLimits) {
    host.Open(TestPictures::Face(300, 200));
    for (int i = 0; i < 50; ++i) host.canvas->ZoomIn();
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 4.0);
    for (int i = 0; i < 60; ++i) host.canvas->ZoomOut();
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 0.2);
    host.canvas->ZoomActualSize();
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 1.0);
}

TEST_F(AdjustCanvas, ZoomOutOfAHugePictureEndsAtItsFit) {
    host.Open(TestPictures::Plain(6000, 40, 0xFF808080));
    const double fit = host.canvas->GetZoom();
    EXPECT_LT(fit, 0.2);
    host.canvas->ZoomActualSize();
    for (int i = 0; i < 12; ++i) host.canvas->ZoomOut();
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), fit);
}

TEST_F(AdjustCanvas, AZoomIsToldInPercent) {
    host.Open(TestPictures::Face(300, 200));
    host.canvas->ZoomToPercent(150);
    ASSERT_EQ(host.Sent<ZoomNews>(), 1);
    EXPECT_EQ(std::get<ZoomNews>(std::get<ViewNotifyMessage>(host.messages.back()).news).percent, 150);
}

TEST_F(AdjustCanvas, AMouseDragPansAndEndsInTheSettledView) {
    host.Open(TestPictures::Face(1600, 1200));
    host.canvas->ZoomActualSize();
    QRectF before, after;
    QRect place;
    host.canvas->GetViewRects(&before, &place);
    QTest::mousePress(host.canvas.get(), Qt::LeftButton, {}, {400, 300});
    QTest::mouseMove(host.canvas.get(), {380, 290});
    EXPECT_TRUE(host.canvas->IsStrokeHeld());
    QTest::mouseMove(host.canvas.get(), {360, 280});
    QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, {360, 280});
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
    host.canvas->GetViewRects(&after, &place);
    EXPECT_EQ(after.topLeft(), before.topLeft() + QPointF(40, 20));
    const Bitmap result = host.canvas->GetShowBitmap();
    const Bitmap shown = Shown();
    for (const QPoint at : {QPoint(0, 0), QPoint(420, 350), QPoint(839, 699)})
        EXPECT_EQ(
            TestPictures::PixelAt(shown, at.x(), at.y()),
            TestPictures::PixelAt(result, static_cast<int>(after.x()) + at.x(), static_cast<int>(after.y()) + at.y()));
}

TEST_F(AdjustCanvas, TheNavigatorShowsWhileThePictureIsLargerThanTheView) {
    host.Open(TestPictures::Face(1600, 1200));
    EXPECT_FALSE(host.canvas->Navigator().isVisible());
    host.canvas->ZoomActualSize();
    EXPECT_TRUE(host.canvas->Navigator().isVisible());
    host.canvas->ZoomFit();
    EXPECT_FALSE(host.canvas->Navigator().isVisible());
}

TEST_F(AdjustCanvas, TheNavigatorFollowsACommittedValue) {
    host.Open(TestPictures::Face(1600, 1200));
    host.canvas->ZoomActualSize();
    const QImage before = host.canvas->Navigator().grab().toImage();
    host.canvas->CommitValue(Brightness, 80);
    EXPECT_NE(host.canvas->Navigator().grab().toImage(), before);
}

TEST_F(AdjustCanvas, TheNextCanvasTakesUpPictureAndView) {
    host.Open(TestPictures::Face(1600, 1200));
    host.canvas->ZoomToPercent(130);
    host.canvas->CommitValue(Contrast, 40);
    const Bitmap shown = Shown();
    const Bitmap result = host.canvas->GetShowBitmap();
    host.canvas->OnApply();
    host.NewCanvas();
    ASSERT_TRUE(host.canvas->OnEnter());
    host.canvas->OnImageReady();
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 1.3);
    EXPECT_TRUE(Shown() == shown);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == result);
    EXPECT_TRUE(host.canvas->Navigator().isVisible());
}

TEST_F(AdjustCanvas, EnteringWithoutALeftViewIsRefusedAndTheFallbackWorks) {
    const Bitmap picture = TestPictures::Face(300, 200);
    host.Open(picture);
    host.NewCanvas();
    EXPECT_FALSE(host.canvas->OnEnter());
    host.canvas->SetShowBitmap(host.history.CurrentBitmap());
    host.canvas->ZoomFit();
    EXPECT_TRUE(Shown() == picture);
}

TEST_F(AdjustCanvas, LeavingCountsAClickOnlyWhenThePictureChanged) {
    host.Open(TestPictures::Face(300, 200));
    const int before = Clicks();
    host.canvas->OnApply();
    EXPECT_EQ(Clicks(), before);
    host.canvas->CommitValue(Hue, 30);
    host.canvas->OnApply();
    EXPECT_EQ(Clicks(), before + 1);
}

TEST_F(AdjustCanvas, ChangedMeansAwayFromTheOriginalOrPending) {
    host.Open(TestPictures::Face(300, 200));
    EXPECT_FALSE(host.canvas->IsImageChanged());
    host.canvas->PreviewValue(Hue, 30);
    EXPECT_TRUE(host.canvas->IsImageChanged());
    host.canvas->CommitValue(Hue, 30);
    EXPECT_TRUE(host.canvas->IsImageChanged());
    host.canvas->OnRevert();
    EXPECT_FALSE(host.canvas->IsImageChanged());
}

TEST_F(AdjustCanvas, UndoOntoAnotherSizeFitsAndTellsTheZoom) {
    host.Open(TestPictures::Face(1600, 1200));
    auto step = std::make_unique<CHistoryStep>();
    auto image = std::make_unique<ImageParams>();
    image->image = TestPictures::Face(200, 100);
    image->save = true;
    step->AddParams(std::move(image));
    ASSERT_TRUE(host.history.PushStep(step));
    host.messages.clear();
    host.canvas->OnUndo();
    host.canvas->OnRedo();
    int width = 0, height = 0;
    host.canvas->GetImageSize(&width, &height);
    EXPECT_EQ(QSize(width, height), QSize(200, 100));
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 1.0);
    EXPECT_GE(host.Sent<ZoomNews>(), 1);
}

TEST_F(AdjustCanvas, AnUnreadableSnapshotKeepsPictureAndValues) {
    host.Open(TestPictures::Face(300, 200));
    host.canvas->CommitValue(Brightness, 30);
    const Bitmap shown = Shown();
    ASSERT_TRUE(QFile::remove(host.history.m_originPath));
    host.canvas->OnUndo();
    EXPECT_EQ(host.canvas->Value(Brightness), 30);
    EXPECT_TRUE(Shown() == shown);
}

TEST_F(AdjustCanvas, AWindowOfAnotherSizeKeepsAFittedPictureFitted) {
    host.Open(TestPictures::Face(1600, 1200));
    host.canvas->Place(QRect(250, 0, 420, 350));
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 1.0 / (1600.0 / 420.0 + 0.2));
    QRectF source;
    QRect place;
    host.canvas->GetViewRects(&source, &place);
    EXPECT_EQ(host.canvas->Logic().View().dest, place);
    EXPECT_EQ(host.canvas->Logic().View().bitmap.Width(), place.width());
}

TEST_F(AdjustCanvas, ATranslucentPictureShowsThePatternBehindIt) {
    host.Open(TestPictures::Plain(300, 200, 0x00FFFFFF));
    EXPECT_FALSE(host.canvas->Logic().View().opaque);
    const Bitmap shown = Shown();
    EXPECT_NE(TestPictures::PixelAt(shown, 150, 100), 0u);  // painted, whatever the pattern is
}

// A tool change and an opening run on a worker while the main thread paints.
TEST_F(AdjustCanvas, EnteringOnAWorkerWhileTheWindowPaints) {
    const Bitmap picture = TestPictures::Face(1600, 1200);
    host.Open(picture);
    host.canvas->CommitValue(Contrast, 40);
    std::unique_ptr<CAdjustWnd> old = std::move(host.canvas);
    host.NewCanvas();
    QTimer painter;
    QObject::connect(&painter, &QTimer::timeout, [&] {
        old->repaint();
        host.canvas->repaint();
    });
    painter.start(0);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(host.RunTask([&](CObjProgress&) {
            old->OnApply();
            EXPECT_TRUE(host.canvas->OnEnter());
            host.canvas->OnImageReady();
            host.canvas->SetShowBitmap(picture);
            host.canvas->ZoomFit();
        }));
    }
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
}

TEST_F(AdjustCanvas, ASceneRunsOnAWorkerWhileTheWindowPaints) {
    host.Open(TestPictures::Face(1600, 1200));
    QTimer painter;
    QObject::connect(&painter, &QTimer::timeout, [&] { host.canvas->repaint(); });
    painter.start(0);
    for (const AdjustScene& scene : AdjustScenes) EXPECT_TRUE(host.canvas->RunScene(scene.scenario));
    EXPECT_TRUE(host.canvas->Logic().View().bitmap.Width() > 0);
    EXPECT_EQ(host.history.m_count, 2);
}

}  // namespace
