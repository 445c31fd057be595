// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtGui/QPaintEvent>
#include <QtGui/QPointingDevice>
#include <QtGui/QTabletEvent>

#include "CanvasSupport.h"
#include "SystemMouse.h"

namespace {

// A tool that writes its strokes down.
class StrokeTool : public PlainTool {
  public:
    using PlainTool::HoldSlider;
    using PlainTool::PlainTool;

    bool takes = true;
    std::vector<StrokePoint> begun, moved, hovered;
    std::vector<bool> endedByRelease;
    QRegion painted;

  protected:
    bool LeftButtonPans() const override { return false; }
    bool BeginStroke(const StrokePoint& at) override {
        if (takes) begun.push_back(at);
        return takes;
    }
    void MoveStroke(const StrokePoint& at) override { moved.push_back(at); }
    void EndStroke(StrokeEnd how) override { endedByRelease.push_back(how == StrokeEnd::Released); }
    void Hover(const StrokePoint& at) override { hovered.push_back(at); }
    void paintEvent(QPaintEvent* event) override {
        painted = event->region();
        PlainTool::paintEvent(event);
    }
};

class Stroke : public testing::Test {
  protected:
    Stroke() : tool(host) {
        host.canvas = &tool;
        tool.setWindowFlag(Qt::FramelessWindowHint);
        tool.Place(QRect(50, 50, 400, 300));
        tool.show();
        if (!QTest::qWaitForWindowExposed(&tool)) qFatal("the canvas did not come up");
        tool.SetShowBitmap(TestPictures::Noise(900, 700, 3));
        tool.ZoomActualSize();
    }
    void Press(QPoint at) { QTest::mousePress(&tool, Qt::LeftButton, {}, at); }
    void Release(QPoint at) { QTest::mouseRelease(&tool, Qt::LeftButton, {}, at); }
    void Move(QPoint at) { SendMove(tool, at); }
    static void SendMove(QWidget& widget, QPoint at) {
        QMouseEvent move(QEvent::MouseMove, QPointF(at), widget.mapToGlobal(QPointF(at)), Qt::NoButton, Qt::LeftButton,
                         Qt::ShiftModifier);
        QCoreApplication::sendEvent(&widget, &move);
    }
    void SendPen(QEvent::Type type, QPointF at, double pressure) {
        const bool moves = type == QEvent::TabletMove;
        QTabletEvent event(type, QPointingDevice::primaryPointingDevice(), at, tool.mapToGlobal(at), pressure, 0, 0, 0,
                           0, 0, Qt::NoModifier, moves ? Qt::NoButton : Qt::LeftButton,
                           type == QEvent::TabletRelease ? Qt::NoButton : Qt::LeftButton);
        QCoreApplication::sendEvent(&tool, &event);
    }
    RecordingHost host;
    StrokeTool tool;
};

TEST_F(Stroke, GoesFromPressToReleaseInPicturePixels) {
    for (const int percent : {20, 50, 100, 230}) {
        tool.ZoomToPercent(percent);
        tool.begun.clear();
        tool.moved.clear();
        tool.endedByRelease.clear();
        Press({200, 150});
        EXPECT_TRUE(tool.IsStrokeHeld());
        Move({210, 140});
        Move({213, 141});
        Release({213, 141});
        ASSERT_EQ(tool.begun.size(), 1u);
        ASSERT_EQ(tool.moved.size(), 2u);
        EXPECT_EQ(tool.endedByRelease, std::vector<bool>{true});
        EXPECT_FALSE(tool.IsStrokeHeld());
        const double ratio = tool.PixelRatio();
        EXPECT_EQ(tool.moved[1].client, QPointF(213, 141) * ratio);
        EXPECT_EQ(tool.moved[1].image, tool.Geometry().ToImage(QPointF(213, 141) * ratio)) << percent;
        EXPECT_EQ(tool.moved[1].modifiers, Qt::ShiftModifier);
        EXPECT_EQ(tool.begun[0].pressure, 1.0);
    }
}

TEST_F(Stroke, WithoutOneTheMouseHovers) {
    tool.takes = false;
    Press({200, 150});
    EXPECT_FALSE(tool.IsStrokeHeld());
    Move({210, 140});
    Release({210, 140});
    EXPECT_TRUE(tool.moved.empty());
    EXPECT_TRUE(tool.endedByRelease.empty());
    EXPECT_EQ(tool.hovered.size(), 1u);
}

TEST_F(Stroke, APenTellsItsPressureAndComesNotAgainAsAMouse) {
    SendPen(QEvent::TabletPress, {200, 150}, 0.25);
    SendPen(QEvent::TabletMove, {205, 152}, 0.5);
    SendPen(QEvent::TabletRelease, {205, 152}, 0.0);
    ASSERT_EQ(tool.begun.size(), 1u);
    EXPECT_DOUBLE_EQ(tool.begun[0].pressure, 0.25);
    ASSERT_EQ(tool.moved.size(), 1u);
    EXPECT_DOUBLE_EQ(tool.moved[0].pressure, 0.5);
    EXPECT_EQ(tool.endedByRelease, std::vector<bool>{true});
}

TEST_F(Stroke, DoesNotBeginWhileTheProgramIsBusyOrAnotherThingIsHeld) {
    host.busy = true;
    Press({200, 150});
    Release({200, 150});
    host.busy = false;
    QTest::mousePress(&tool, Qt::MiddleButton, {}, {200, 150});
    Press({200, 150});
    EXPECT_TRUE(tool.begun.empty());
    QTest::mouseRelease(&tool, Qt::MiddleButton, {}, {200, 150});
}

TEST_F(Stroke, HoldsUpWheelZoomAndPan) {
    Press({200, 150});
    const ViewGeometry before = tool.Geometry();
    SendWheel(tool, {200, 150}, 120);
    QTest::mousePress(&tool, Qt::MiddleButton, {}, {200, 150});
    Move({240, 150});
    QTest::keyClick(&tool, Qt::Key_Left);
    EXPECT_EQ(tool.Geometry(), before);
    Release({240, 150});
    QTest::mouseRelease(&tool, Qt::MiddleButton, {}, {240, 150});
}

TEST_F(Stroke, EscCancelsIt) {
    Press({200, 150});
    QTest::keyClick(&tool, Qt::Key_Escape);
    EXPECT_EQ(tool.endedByRelease, std::vector<bool>{false});
    Release({200, 150});
    EXPECT_EQ(tool.endedByRelease.size(), 1u) << "the release has nothing left to end";
}

TEST_F(Stroke, EndsAsByAReleaseWhenMouseOrWindowAreLost) {
    const std::function<void()> losses[] = {
        [&] {
            QEvent event(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(&tool, &event);
        },
        [&] {
            QEvent event(QEvent::WindowBlocked);
            QCoreApplication::sendEvent(&tool, &event);
        },
        [&] {
            QEvent event(QEvent::UngrabMouse);
            QCoreApplication::sendEvent(&tool, &event);
        },
        [&] { tool.hide(); },
    };
    for (const auto& lose : losses) {
        tool.show();
        tool.endedByRelease.clear();
        Press({200, 150});
        lose();
        EXPECT_EQ(tool.endedByRelease, std::vector<bool>{true});
        EXPECT_FALSE(tool.IsStrokeHeld());
        Release({200, 150});
        EXPECT_EQ(tool.endedByRelease.size(), 1u);
    }
}

TEST_F(Stroke, ASliderCountsAsHeldWhileTheButtonIsDown) {
    tool.HoldSlider(true);
    EXPECT_FALSE(tool.IsStrokeHeld()) << "no button is down: the release got lost";
    SystemMouse mouse;
    mouse.Move(tool.mapToGlobal(QPoint(10, 10)));
    mouse.Press();
    ASSERT_TRUE(QTest::qWaitFor([] { return QGuiApplication::mouseButtons().testFlag(Qt::LeftButton); }));
    EXPECT_TRUE(tool.IsStrokeHeld());
    EXPECT_TRUE(tool.begun.empty()) << "a stroke waits for it";
    tool.HoldSlider(false);
    EXPECT_FALSE(tool.IsStrokeHeld());
    mouse.Release();
    ASSERT_TRUE(QTest::qWaitFor([] { return !QGuiApplication::mouseButtons().testFlag(Qt::LeftButton); }));
}

// The window system's own mouse, faster than the program looks: outside of a stroke the toolkit keeps only the last of
// such moves.
TEST_F(Stroke, EveryMoveOfTheDeviceArrives) {
    SystemMouse mouse;
    mouse.Move(tool.mapToGlobal(QPoint(40, 150)));
    mouse.Press();
    ASSERT_TRUE(QTest::qWaitFor([&] { return tool.IsStrokeHeld(); }));
    tool.moved.clear();
    constexpr int moves = 120;
    for (int i = 1; i <= moves; ++i) mouse.Move(tool.mapToGlobal(QPoint(40 + 2 * i, 150 + i % 7)));
    mouse.Sync();
    EXPECT_TRUE(QTest::qWaitFor([&] { return tool.moved.size() >= moves; })) << tool.moved.size();
    EXPECT_EQ(tool.moved.size(), static_cast<std::size_t>(moves));
    mouse.Release();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !tool.IsStrokeHeld(); }));
    EXPECT_EQ(tool.endedByRelease, std::vector<bool>{true});
}

TEST_F(Stroke, APartOfTheCanvasIsPaintedAlone) {
    QCoreApplication::processEvents();
    const double ratio = tool.PixelRatio();
    const QRect part(30, 40, 25, 15);
    tool.RedrawPart({QPoint(qRound(part.x() * ratio), qRound(part.y() * ratio)), part.size() * ratio});
    EXPECT_EQ(tool.painted.boundingRect(), part);
}

}  // namespace
