// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <memory>
#include <QtGui/QNativeGestureEvent>
#include <QtGui/QPointingDevice>
#include <thread>

#include "CanvasSupport.h"
#include "Messages.h"
#include "RunTask.h"

namespace {

using TestPictures::Checker;
using TestPictures::Noise;
using TestPictures::Plain;

constexpr QRgb Canvas = 0xFFEBEBEB;

// A touch screen for one test; the window system that would keep a real one leaves this one to whoever asked for it.
std::unique_ptr<QPointingDevice> TouchDevice() {
    return std::unique_ptr<QPointingDevice>(QTest::createTouchDevice());
}

TEST(CanvasPaint, ShowsEveryPixelOfAPictureAtActualSize) {
    const Bitmap picture = Noise(200, 150, 1);
    ShownTool shown(picture, {400, 300});
    const QImage grabbed = shown.Grab();
    const double ratio = shown.tool.PixelRatio();
    const QRect place = shown.tool.Geometry().ScreenRect();
    ASSERT_EQ(grabbed.size(), QSize(400, 300) * ratio);
    EXPECT_EQ(place.size(), QSize(200, 150));
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 200; ++x)
            ASSERT_EQ(grabbed.pixel(place.x() + x, place.y() + y), TestPictures::PixelAt(picture, x, y))
                << x << "," << y;
    EXPECT_EQ(grabbed.pixel(place.x() - 1, place.y()), Canvas);
    EXPECT_EQ(grabbed.pixel(place.right() + 1, place.bottom()), Canvas);
    EXPECT_EQ(grabbed.pixel(0, 0), Canvas);
    EXPECT_EQ(grabbed.pixel(grabbed.width() - 1, grabbed.height() - 1), Canvas);
}

TEST(CanvasPaint, ClearsTheCanvasWithoutAPicture) {
    RecordingHost host;
    PlainTool tool(host);
    tool.Place({0, 0, 100, 80});
    const QImage grabbed = tool.grab().toImage();
    for (const QPoint at : {QPoint(0, 0), QPoint(50, 40), QPoint(99, 79)}) EXPECT_EQ(grabbed.pixel(at), Canvas);
}

TEST(CanvasPaint, ShowsThePatternThroughATranslucentPicture) {
    ShownTool shown(Plain(100, 100, 0x00000000), {300, 300});
    const QImage grabbed = shown.Grab();
    const QRect place = shown.tool.Geometry().ScreenRect();
    // The pattern stands two pixels inside the picture's place.
    EXPECT_EQ(grabbed.pixel(place.x() + 1, place.y() + 50), Canvas);
    EXPECT_EQ(grabbed.pixel(place.right() - 1, place.y() + 50), Canvas);
    QSet<QRgb> colors;
    for (int y = place.y() + 2; y <= place.bottom() - 2; ++y)
        for (int x = place.x() + 2; x <= place.right() - 2; ++x) colors.insert(grabbed.pixel(x, y));
    EXPECT_GE(colors.size(), 2);
    EXPECT_FALSE(colors.contains(0xFF000000));
}

TEST(CanvasPaint, MixesHalfTransparentPixelsWithThePattern) {
    ShownTool shown(Plain(100, 100, 0x80FF0000), {300, 300});
    const QColor pixel = shown.Grab().pixelColor(shown.tool.Geometry().ScreenRect().center());
    EXPECT_GT(pixel.red(), 200);
    EXPECT_NEAR(pixel.green(), pixel.blue(), 12);
    EXPECT_GT(pixel.green(), 60);
    EXPECT_LT(pixel.green(), 140);
}

TEST(CanvasPaint, DrawsTheViewBitmapAndNeverTakesAFullPass) {
    ShownTool shown(Noise(1200, 900, 1), {300, 300});
    shown.tool.fullPasses = 0;
    shown.tool.repaint();
    shown.tool.ZoomActualSize();
    shown.tool.ZoomFit();
    EXPECT_EQ(shown.tool.fullPasses, 0);
}

TEST(CanvasZoom, EachRequestPaintsAndTellsTheFrameThePercent) {
    ShownTool shown(Noise(300, 200, 1), {400, 300});
    shown.tool.ZoomIn();
    shown.tool.ZoomOut();
    shown.tool.ZoomOut();
    shown.tool.ZoomActualSize();
    shown.tool.ZoomToPercent(250);
    shown.tool.ZoomFit();
    EXPECT_EQ(shown.host.Zooms(), (std::vector<int>{110, 100, 90, 100, 250, 100}));
    EXPECT_EQ(shown.tool.GetZoom(), 1.0);
}

TEST(CanvasZoom, FitOfASmallPictureIsActualSize) {
    ShownTool shown(Noise(200, 100, 1), {400, 300});
    shown.tool.ZoomIn();
    shown.tool.ZoomActualSize();
    const QImage actual = shown.Grab();
    shown.tool.ZoomFit();
    EXPECT_EQ(shown.Grab(), actual);
}

TEST(CanvasZoom, TellsAZoomBelowTwentyPercentAsItIs) {
    ShownTool shown(Plain(6000, 400, 0xFF102030), {600, 400});
    shown.tool.ZoomFit();
    EXPECT_EQ(shown.host.Zooms().back(), shown.tool.Geometry().ZoomPercent());
    EXPECT_LT(shown.host.Zooms().back(), 20);
}

TEST(CanvasZoom, WithoutAPictureNothingIsTold) {
    RecordingHost host;
    PlainTool tool(host);
    tool.Place({0, 0, 100, 80});
    tool.ZoomIn();
    tool.ZoomFit();
    SendWheel(tool, {5, 5}, 120);
    EXPECT_TRUE(host.messages.empty());
    tool.ShowNavigator(true);
    EXPECT_TRUE(tool.Navigator().isHidden());
}

TEST(CanvasWheel, ZoomsAroundTheCursor) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    shown.tool.ZoomActualSize();
    const QPoint at(300, 60);
    const QPointF under = shown.tool.Geometry().ToImage(shown.tool.Physical(at));
    SendWheel(shown.tool, at, 120);
    EXPECT_EQ(shown.host.Zooms().back(), 110);
    const QPointF moved = shown.tool.Geometry().ToClient(under) - shown.tool.Physical(at);
    EXPECT_LE(std::abs(moved.x()), 1.0);
    EXPECT_LE(std::abs(moved.y()), 1.0);
    SendWheel(shown.tool, at, -120);
    EXPECT_EQ(shown.host.Zooms().back(), 100);
}

TEST(CanvasWheel, AddsUpThePartsOfATurn) {
    ShownTool shown(Noise(300, 200, 1), {400, 300});
    for (int i = 0; i < 7; ++i) SendWheel(shown.tool, {100, 100}, 15);
    EXPECT_TRUE(shown.host.Zooms().empty());
    SendWheel(shown.tool, {100, 100}, 15);
    EXPECT_EQ(shown.host.Zooms(), std::vector<int>{110});
    // A turn back starts anew, and two turns in one event are two steps.
    SendWheel(shown.tool, {100, 100}, 100);
    SendWheel(shown.tool, {100, 100}, -240);
    EXPECT_EQ(shown.host.Zooms().back(), 90);
}

TEST(CanvasWheel, DoesNothingWhileTheWorkAreaIsBusy) {
    ShownTool shown(Noise(300, 200, 1), {400, 300});
    shown.host.busy = true;
    SendWheel(shown.tool, {100, 100}, 120);
    EXPECT_TRUE(shown.host.messages.empty());
}

TEST(CanvasPinch, ANativeGestureScalesAroundItsPoint) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    shown.tool.ZoomActualSize();
    const QPointF at(120, 200);
    const QPointF under = shown.tool.Geometry().ToImage(shown.tool.Physical(at));
    QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at, at,
                              shown.tool.mapToGlobal(at), 0.25, QPointF());
    QCoreApplication::sendEvent(&shown.tool, &pinch);
    EXPECT_DOUBLE_EQ(shown.tool.Geometry().Zoom(), 1.25);
    EXPECT_EQ(shown.host.Zooms().back(), 125);
    const QPointF moved = shown.tool.Geometry().ToClient(under) - shown.tool.Physical(at);
    EXPECT_LE(std::abs(moved.x()), 1.0);
    EXPECT_LE(std::abs(moved.y()), 1.0);
}

TEST(CanvasPinch, TwoFingersApartEnlarge) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    shown.tool.ZoomActualSize();
    const auto touch = TouchDevice();
    QTest::touchEvent(&shown.tool, touch.get()).press(1, {150, 150}).press(2, {250, 150});
    for (int spread = 0; spread <= 50; spread += 5)
        QTest::touchEvent(&shown.tool, touch.get()).move(1, {150 - spread, 150}).move(2, {250 + spread, 150});
    QTest::touchEvent(&shown.tool, touch.get()).release(1, {100, 150}).release(2, {300, 150});
    EXPECT_NEAR(shown.tool.Geometry().Zoom(), 2.0, 1e-6);
}

TEST(CanvasPinch, TwoFingersMovingTogetherPan) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    shown.tool.ZoomActualSize();
    const auto touch = TouchDevice();
    QTest::touchEvent(&shown.tool, touch.get()).press(1, {150, 150}).press(2, {250, 150});
    // The fingers come down in one event each; the pinch begins where both are first seen together.
    QTest::touchEvent(&shown.tool, touch.get()).move(1, {151, 150}).move(2, {251, 150});
    QTest::touchEvent(&shown.tool, touch.get()).move(1, {141, 170}).move(2, {241, 170});
    QTest::touchEvent(&shown.tool, touch.get()).release(1, {141, 170}).release(2, {241, 170});
    EXPECT_EQ(shown.tool.Geometry().Zoom(), 1.0);
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(-10, 20) * shown.tool.PixelRatio());
}

TEST(CanvasPinch, OneFingerIsTheMouse) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    shown.tool.ZoomActualSize();
    const auto touch = TouchDevice();
    QTest::touchEvent(&shown.tool, touch.get()).press(1, {150, 150});
    QTest::touchEvent(&shown.tool, touch.get()).move(1, {130, 160});
    EXPECT_TRUE(shown.tool.IsStrokeHeld());
    QTest::touchEvent(&shown.tool, touch.get()).release(1, {130, 160});
    EXPECT_FALSE(shown.tool.IsStrokeHeld());
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(-20, 10) * shown.tool.PixelRatio());
}

TEST(CanvasPan, DraggingMovesThePictureByTheMousesDelta) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    shown.tool.ZoomActualSize();
    const int settled = shown.tool.settled;
    Drag(shown.tool, Qt::LeftButton, {200, 150}, {170, 190});
    const double ratio = shown.tool.PixelRatio();
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(int(-30 * ratio), int(40 * ratio)));
    EXPECT_EQ(shown.tool.panned, 4);
    EXPECT_EQ(shown.tool.settled, settled + 1);
    EXPECT_FALSE(shown.tool.IsStrokeHeld());
    EXPECT_TRUE(shown.host.Zooms().size() == 1) << "a pan tells no zoom";
}

TEST(CanvasPan, StopsAtThePicturesEdge) {
    ShownTool shown(Checker(1000, 1000, 10, 0xFF000000, 0xFFFFFFFF), {400, 300});
    shown.tool.ZoomActualSize();
    for (int i = 0; i < 8; ++i) Drag(shown.tool, Qt::LeftButton, {10, 10}, {390, 290});
    EXPECT_EQ(shown.tool.Geometry().ViewOffset(), QPoint(0, 0));
    const QImage grabbed = shown.Grab();
    EXPECT_NE(grabbed.pixel(0, 0), Canvas);
    EXPECT_EQ(grabbed.pixel(0, 0), 0xFF000000);
}

TEST(CanvasPan, AHandShowsOverAPictureThatCanBePanned) {
    ShownTool shown(Noise(1200, 100, 1), {400, 300});
    QTest::mouseMove(&shown.tool, {200, 150});
    shown.tool.ZoomActualSize();
    QMouseEvent over(QEvent::MouseMove, QPointF(200, 150), QPointF(250, 200), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&shown.tool, &over);
    EXPECT_EQ(shown.tool.cursor().shape(), Qt::OpenHandCursor);
    QMouseEvent beside(QEvent::MouseMove, QPointF(200, 5), QPointF(250, 55), Qt::NoButton, Qt::NoButton,
                       Qt::NoModifier);
    QCoreApplication::sendEvent(&shown.tool, &beside);
    EXPECT_EQ(shown.tool.cursor().shape(), Qt::ArrowCursor);
    QTest::mousePress(&shown.tool, Qt::LeftButton, {}, {200, 150});
    EXPECT_EQ(shown.tool.cursor().shape(), Qt::ClosedHandCursor);
    EXPECT_TRUE(shown.tool.IsStrokeHeld());
    QTest::mouseRelease(&shown.tool, Qt::LeftButton, {}, {200, 150});
    EXPECT_EQ(shown.tool.cursor().shape(), Qt::OpenHandCursor);
}

TEST(CanvasPan, SpaceOrTheMiddleButtonPansInAToolThatWorksWithTheLeft) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    shown.tool.leftPans = false;
    shown.tool.ZoomActualSize();
    Drag(shown.tool, Qt::LeftButton, {200, 150}, {180, 150});
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(0, 0));
    Drag(shown.tool, Qt::MiddleButton, {200, 150}, {180, 150});
    const int ratio = int(shown.tool.PixelRatio());
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(-20 * ratio, 0));
    QTest::keyPress(&shown.tool, Qt::Key_Space);
    Drag(shown.tool, Qt::LeftButton, {200, 150}, {180, 150});
    QTest::keyRelease(&shown.tool, Qt::Key_Space);
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(-40 * ratio, 0));
    Drag(shown.tool, Qt::LeftButton, {200, 150}, {180, 150});
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(-40 * ratio, 0));
}

TEST(CanvasPan, ArrowKeysPan) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    shown.tool.ZoomActualSize();
    QTest::keyClick(&shown.tool, Qt::Key_Right);
    QTest::keyClick(&shown.tool, Qt::Key_Down);
    const int step = int(40 * shown.tool.PixelRatio());
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(-step, -step));
}

TEST(CanvasPan, APictureThatFitsCannotBeDragged) {
    ShownTool shown(Noise(200, 100, 1), {400, 300});
    Drag(shown.tool, Qt::LeftButton, {200, 150}, {100, 100});
    EXPECT_EQ(shown.tool.panned, 0);
    EXPECT_EQ(shown.tool.Geometry().Pan(), QPoint(0, 0));
}

TEST(CanvasLayout, ANewSizeFitsOnlyAViewAtFit) {
    ShownTool shown(Noise(1300, 900, 1), {400, 300});
    const double fit = shown.tool.Geometry().Zoom();
    shown.tool.Place({50, 50, 600, 450});
    EXPECT_GT(shown.tool.Geometry().Zoom(), fit);
    EXPECT_TRUE(shown.tool.Geometry().AtFit());
    EXPECT_EQ(shown.host.Zooms().size(), 1u);
    shown.tool.ZoomActualSize();
    shown.tool.Place({50, 50, 400, 300});
    EXPECT_EQ(shown.tool.Geometry().Zoom(), 1.0);
}

TEST(CanvasLayout, WaitsUntilATaskIsOver) {
    ShownTool shown(Noise(1200, 900, 1), {400, 300});
    const ViewGeometry before = shown.tool.Geometry();
    ViewGeometry during;
    EXPECT_TRUE(RunTask([&](CObjProgress&) {
        SendToMain([&] {
            shown.tool.Place({50, 50, 600, 450});
            shown.tool.repaint();
            during = shown.tool.Geometry();
        });
    }));
    EXPECT_EQ(during, before);
    shown.tool.repaint();
    EXPECT_EQ(shown.tool.PhysicalClient(), QSize(600, 450) * shown.tool.PixelRatio());
    EXPECT_TRUE(shown.tool.Geometry().AtFit());
}

TEST(CanvasLayout, AHiddenCanvasIsLaidOutWhenItIsPlaced) {
    RecordingHost host;
    PlainTool tool(host);
    tool.Place({0, 0, 640, 480});
    tool.SetShowBitmap(Noise(1200, 900, 1));
    tool.ZoomFit();
    EXPECT_EQ(tool.Geometry().Client(), QSize(640, 480) * tool.PixelRatio());
    EXPECT_TRUE(tool.Geometry().AtFit());
}

TEST(CanvasThreads, APictureMayComeFromAWorker) {
    ShownTool shown(Noise(300, 200, 1), {400, 300});
    const Bitmap picture = Plain(120, 90, 0xFF3366CC);
    std::thread worker([&] {
        shown.tool.SetShowBitmap(picture);
        shown.tool.ZoomFit();
        shown.tool.OnImageReady();
    });
    worker.join();
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.Grab().pixel(shown.tool.Geometry().ScreenRect().center()), 0xFF3366CC);
    EXPECT_EQ(shown.host.Zooms(), std::vector<int>{100});
}

TEST(CanvasThreads, AMessageForACanvasThatIsGoneIsDropped) {
    RecordingHost host;
    auto tool = std::make_unique<PlainTool>(host);
    tool->Place({0, 0, 100, 100});
    tool->SetShowBitmap(Noise(1200, 900, 1));
    std::thread worker([&] {
        tool->ZoomFit();
        tool->ShowNavigator(true);
        tool->Redraw(CBaseWnd::Paint::Now);
    });
    worker.join();
    tool.reset();
    QCoreApplication::processEvents();
    SUCCEED();
}

TEST(CanvasBase, HasTheDefaultsOfAToolWithoutAView) {
    class Bare : public CBaseWnd {
      public:
        using CBaseWnd::CBaseWnd;
        Bitmap GetShowBitmap() override { return {}; }
        void SetShowBitmap(const Bitmap&) override {}
        bool IsImageChanged() override { return false; }
    };
    RecordingHost host;
    Bare bare(host, 3, nullptr);
    int w = 7, h = 7;
    bare.GetImageSize(&w, &h);
    EXPECT_EQ(w, 0);
    EXPECT_EQ(h, 0);
    QRectF source(1, 2, 3, 4);
    QRect place(1, 2, 3, 4);
    bare.GetViewRects(&source, &place);
    EXPECT_TRUE(source.isEmpty());
    EXPECT_TRUE(place.isEmpty());
    EXPECT_EQ(bare.GetZoom(), 1.0);
    bare.SetZoom(0.5);
    EXPECT_EQ(bare.GetZoom(), 0.5);
    EXPECT_FALSE(bare.OnEnter());
    bare.ZoomIn();
    bare.ZoomFit();
    bare.OnHistoryJump(3);
    EXPECT_TRUE(host.messages.empty());
    bare.NotifyView(PanelNews(11));
    EXPECT_EQ(std::get<ViewNotifyMessage>(host.messages.at(0)).tool, 3);
    ASSERT_TRUE(PanelNewsOf<int>(host.messages.at(0)));
    EXPECT_EQ(*PanelNewsOf<int>(host.messages.at(0)), 11);
    EXPECT_FALSE(PanelNewsOf<double>(host.messages.at(0)));
}

}  // namespace
