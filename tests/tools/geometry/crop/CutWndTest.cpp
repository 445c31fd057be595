// SPDX-License-Identifier: GPL-3.0-or-later
#include "CCutWnd.h"

#include <QtCore/QTimer>

#include "CropHost.h"

namespace {

class CutCanvas : public testing::Test {
  protected:
    // A picture at 100 %, with its top left corner at (220, 200) of the canvas.
    void SetUp() override {
        picture = Coordinates(400, 300);
        host.Open(picture);
        ASSERT_EQ(host.At({0, 0}), QPoint(220, 200));
    }
    // The same with a live selection of 100, 75, 200 x 150.
    void Select() {
        host.Drag(host.At({100, 75}), host.At({300, 225}));
        ASSERT_EQ(host.Cut(), QRect(100, 75, 200, 150));
        host.messages.clear();
    }
    CropHost host;
    Bitmap picture;
};

TEST_F(CutCanvas, TheFirstDragSpansASelectionAndTellsThePanel) {
    EXPECT_TRUE(host.Cut().isEmpty());
    host.Drag(host.At({40, 30}), host.At({240, 130}));
    EXPECT_EQ(host.Cut(), QRect(40, 30, 200, 100));
    EXPECT_GE(host.Sent<CropSelectionNews>(), 2);
    EXPECT_EQ(host.Fields(), QSize(200, 100));
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(CutCanvas, MovingTheFrameTellsNoNewSizeOfThePictureAndCuttingDoes) {
    Select();
    host.Drag(host.Grip(CropHit::Inside), host.Grip(CropHit::Inside) + QPoint(20, 10));
    EXPECT_EQ(host.Sent<SizeNews>(), 0);
    ASSERT_TRUE(host.canvas->CropToSelection());
    EXPECT_EQ(host.Sent<SizeNews>(), 1);
}

TEST_F(CutCanvas, ABareClickGivesTheMiddleQuarterAndTheNextPressMovesIt) {
    QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, host.At({30, 30}));
    EXPECT_EQ(host.Cut(), QRect(100, 75, 200, 150));
    host.Drag(host.At({200, 150}), host.At({210, 140}));
    EXPECT_EQ(host.Cut(), QRect(110, 65, 200, 150));
}

TEST_F(CutCanvas, AClickBesideThePictureDrawsNothing) {
    QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, {20, 20});
    EXPECT_TRUE(host.Cut().isEmpty());
    EXPECT_TRUE(host.canvas->Selection().IsDrawingNew());
}

TEST_F(CutCanvas, AllNineAreasAreDragged) {
    const std::pair<CropHit, QRect> cases[] = {
        {CropHit::TopLeft, {120, 85, 180, 140}},    {CropHit::TopRight, {100, 85, 220, 140}},
        {CropHit::BottomLeft, {120, 75, 180, 160}}, {CropHit::BottomRight, {100, 75, 220, 160}},
        {CropHit::Top, {100, 85, 200, 140}},        {CropHit::Left, {120, 75, 180, 150}},
        {CropHit::Bottom, {100, 75, 200, 160}},     {CropHit::Right, {100, 75, 220, 150}},
        {CropHit::Inside, {120, 85, 200, 150}}};
    for (const auto& [hit, expected] : cases) {
        SCOPED_TRACE(static_cast<int>(hit));
        host.Open(picture);
        Select();
        host.Drag(host.Grip(hit), host.Grip(hit) + QPoint(20, 10));
        EXPECT_EQ(host.Cut(), expected);
        EXPECT_EQ(host.Fields(), expected.size());
        ASSERT_TRUE(host.canvas->CropToSelection());
        EXPECT_EQ(host.ImageSize(), expected.size());
        EXPECT_EQ(PlaceOf(host.canvas->GetShowBitmap(), 0, 0), expected.topLeft());
    }
}

TEST_F(CutCanvas, EachAreaHasItsCursor) {
    // A move comes from the window system in its own time.
    const auto shows = [&](QPoint at, Qt::CursorShape shape) {
        QTest::mouseMove(host.canvas.get(), at + QPoint(1, 0));
        QTest::mouseMove(host.canvas.get(), at);
        return QTest::qWaitFor([&] { return host.canvas->cursor().shape() == shape; }, 2000);
    };
    EXPECT_TRUE(shows(host.At({200, 150}), Qt::CrossCursor));
    EXPECT_TRUE(shows({20, 20}, Qt::ArrowCursor));
    Select();
    EXPECT_TRUE(shows(host.Grip(CropHit::TopLeft), Qt::SizeFDiagCursor));
    EXPECT_TRUE(shows(host.Grip(CropHit::BottomRight), Qt::SizeFDiagCursor));
    EXPECT_TRUE(shows(host.Grip(CropHit::TopRight), Qt::SizeBDiagCursor));
    EXPECT_TRUE(shows(host.Grip(CropHit::BottomLeft), Qt::SizeBDiagCursor));
    EXPECT_TRUE(shows(host.Grip(CropHit::Top), Qt::SizeVerCursor));
    EXPECT_TRUE(shows(host.Grip(CropHit::Bottom), Qt::SizeVerCursor));
    EXPECT_TRUE(shows(host.Grip(CropHit::Left), Qt::SizeHorCursor));
    EXPECT_TRUE(shows(host.Grip(CropHit::Right), Qt::SizeHorCursor));
    EXPECT_TRUE(shows(host.Grip(CropHit::Inside), Qt::SizeAllCursor));
    EXPECT_TRUE(shows(host.At({50, 50}), Qt::ArrowCursor));
}

TEST_F(CutCanvas, ArrowsMoveAndWithShiftSizeByOnePicturePixel) {
    Select();
    host.Key(Qt::Key_Right);
    host.Key(Qt::Key_Down);
    host.Key(Qt::Key_Down);
    host.Key(Qt::Key_Left);
    host.Key(Qt::Key_Left);
    host.Key(Qt::Key_Up);
    EXPECT_EQ(host.Cut(), QRect(99, 76, 200, 150));
    host.Key(Qt::Key_Right, Qt::ShiftModifier);
    host.Key(Qt::Key_Right, Qt::ShiftModifier);
    host.Key(Qt::Key_Left, Qt::ShiftModifier);
    host.Key(Qt::Key_Up, Qt::ShiftModifier);
    host.Key(Qt::Key_Down, Qt::ShiftModifier);
    host.Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(host.Cut(), QRect(99, 76, 201, 151));
    EXPECT_EQ(host.Fields(), QSize(201, 151));
}

TEST_F(CutCanvas, ArrowsPanWhileNothingIsSelected) {
    host.Open(TestPictures::Face(2000, 1500));
    host.canvas->ZoomActualSize();
    const QPoint before = host.canvas->Geometry().Pan();
    host.Key(Qt::Key_Left);
    EXPECT_NE(host.canvas->Geometry().Pan(), before);
}

TEST_F(CutCanvas, EnterCutsAndTheWholeIsSelectedAfterwards) {
    Select();
    host.Key(Qt::Key_Return);
    EXPECT_EQ(host.ImageSize(), QSize(200, 150));
    EXPECT_EQ(PlaceOf(host.canvas->GetShowBitmap(), 0, 0), QPoint(100, 75));
    EXPECT_EQ(PlaceOf(host.canvas->GetShowBitmap(), 199, 149), QPoint(299, 224));
    EXPECT_TRUE(host.canvas->Selection().IsWhole());
    EXPECT_EQ(host.history.m_count, 2);
    EXPECT_EQ(host.Sent<HistoryNews>(), 1);
    EXPECT_GE(host.Sent<CropSelectionNews>(), 1);
    EXPECT_FALSE(host.canvas->HasPendingWork());
    EXPECT_TRUE(host.canvas->IsImageChanged());
    // Again: the whole picture is no cut.
    host.Key(Qt::Key_Enter);
    EXPECT_EQ(host.history.m_count, 2);
}

TEST_F(CutCanvas, EnterWithoutASelectionDoesNothing) {
    host.Key(Qt::Key_Return);
    EXPECT_EQ(host.history.m_count, 1);
    EXPECT_EQ(host.ImageSize(), QSize(400, 300));
}

TEST_F(CutCanvas, TheFullSelectionPushesNothingAtAnyZoom) {
    const Bitmap wide = TestPictures::Face(6001, 407);
    for (const int percent : {20, 33, 70, 100, 130, 270, 400}) {
        host.Open(wide);
        QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, host.canvas->rect().center());
        host.canvas->SetSelectionSize(6001, 407);
        host.canvas->ZoomToPercent(percent);
        EXPECT_FALSE(host.canvas->CropToSelection()) << percent;
        EXPECT_EQ(host.history.m_count, 1) << percent;
    }
}

TEST_F(CutCanvas, ASelectionDrawnInAPannedAndZoomedViewIsWhatIsCut) {
    const Bitmap large = Coordinates(2000, 1500);
    for (const int percent : {50, 100, 150, 400}) {
        host.Open(large);
        host.canvas->ZoomToPercent(percent);
        host.canvas->Geometry().PanBy(-123, 77);
        host.canvas->ZoomToPercent(percent);
        const QPoint from(200, 150), to(611, 433);
        const QPointF first = host.canvas->Geometry().ToImage(from), last = host.canvas->Geometry().ToImage(to);
        host.Drag(from, to);
        ASSERT_TRUE(host.canvas->CropToSelection());
        const QPoint start = PlaceOf(host.canvas->GetShowBitmap(), 0, 0);
        const double slack = std::max(1.0, 100.0 / percent) + 1.0;
        EXPECT_NEAR(start.x(), first.x(), slack) << percent;
        EXPECT_NEAR(start.y(), first.y(), slack) << percent;
        EXPECT_NEAR(start.x() + host.ImageSize().width(), last.x(), slack) << percent;
        EXPECT_NEAR(start.y() + host.ImageSize().height(), last.y(), slack) << percent;
    }
}

TEST_F(CutCanvas, EscTakesADragBackAndThenTheSelection) {
    Select();
    QTest::mousePress(host.canvas.get(), Qt::LeftButton, {}, host.At({200, 150}));
    QTest::mouseMove(host.canvas.get(), host.At({250, 180}));
    EXPECT_TRUE(host.canvas->IsStrokeHeld());
    EXPECT_EQ(host.Cut().topLeft(), QPoint(150, 105));
    host.Key(Qt::Key_Escape);
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
    EXPECT_EQ(host.Cut(), QRect(100, 75, 200, 150));
    QTest::mouseMove(host.canvas.get(), host.At({260, 190}));
    QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, host.At({260, 190}));
    EXPECT_EQ(host.Cut(), QRect(100, 75, 200, 150));
    host.Key(Qt::Key_Escape);
    EXPECT_TRUE(host.canvas->Selection().IsDrawingNew());
    EXPECT_TRUE(host.FieldsAreEmpty());
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(CutCanvas, SpaceAndTheMiddleButtonPanAndTheSelectionStaysOnThePicture) {
    host.Open(TestPictures::Face(2000, 1500));
    host.canvas->ZoomActualSize();
    host.Drag({200, 200}, {400, 350});
    const QRect cut = host.Cut();
    const QPoint before = host.canvas->Geometry().Pan();
    QTest::keyPress(host.canvas.get(), Qt::Key_Space);
    host.Drag({300, 300}, {250, 280});
    QTest::keyRelease(host.canvas.get(), Qt::Key_Space);
    EXPECT_EQ(host.canvas->Geometry().Pan(), before + QPoint(-50, -20));
    EXPECT_EQ(host.Cut(), cut);
    host.Drag({10, 10}, {60, 60});  // outside the selection: nothing is taken hold of, and nothing pans
    EXPECT_EQ(host.canvas->Geometry().Pan(), before + QPoint(-50, -20));
    EXPECT_EQ(host.Cut(), cut);
}

TEST_F(CutCanvas, TheOverlayHasItsColours) {
    Select();
    const QImage shown = host.Painted();
    const auto original = [&](QPoint at) { return QColor::fromRgb(TestPictures::PixelAt(picture, at.x(), at.y())); };
    const auto painted = [&](QPoint at) { return QColor(shown.pixel(host.At(at))); };
    // Outside: under the half black veil.
    for (const QPoint at : {QPoint(50, 50), QPoint(350, 150), QPoint(200, 20), QPoint(200, 280)}) {
        EXPECT_NEAR(painted(at).blue(), original(at).blue() / 2, 1);
        EXPECT_NEAR(painted(at).green(), original(at).green() / 2, 1);
    }
    // Inside, off the lines: the picture itself.
    for (const QPoint at : {QPoint(130, 100), QPoint(200, 150), QPoint(280, 200)}) EXPECT_EQ(painted(at), original(at));
    // Frame and corner squares are white.
    EXPECT_EQ(painted({200, 75}), QColor(Qt::white));
    EXPECT_EQ(painted({100, 150}), QColor(Qt::white));
    for (const QPoint corner : {QPoint(100, 75), QPoint(300, 75), QPoint(100, 225), QPoint(300, 225)}) {
        EXPECT_EQ(painted(corner + QPoint(4, 4)), QColor(Qt::white));
        EXPECT_EQ(painted(corner + QPoint(-5, -5)), QColor(Qt::white));
        EXPECT_NE(painted(corner + QPoint(6, -6)), QColor(Qt::white));
    }
    // The lines of thirds, truncated, are dashed in half white: along each there are both.
    const auto dashed = [&](QPoint from, QPoint step) {
        int lit = 0, plain = 0;
        for (int i = 12; i < 40; ++i) {
            const QPoint at = from + step * i;
            (painted(at) == original(at) ? plain : lit) += 1;
        }
        return lit > 4 && plain > 4;
    };
    EXPECT_TRUE(dashed({166, 75}, {0, 1}));
    EXPECT_TRUE(dashed({233, 75}, {0, 1}));
    EXPECT_TRUE(dashed({100, 125}, {1, 0}));
    EXPECT_TRUE(dashed({100, 175}, {1, 0}));
    EXPECT_FALSE(dashed({150, 75}, {0, 1}));
}

TEST_F(CutCanvas, WithoutASelectionThePictureIsPlain) {
    const QImage shown = host.Painted();
    for (const QPoint at : {QPoint(0, 0), QPoint(399, 299), QPoint(200, 150)})
        EXPECT_EQ(shown.pixel(host.At(at)), TestPictures::PixelAt(picture, at.x(), at.y()));
}

TEST_F(CutCanvas, ADragTouchesOnlyTheOverlay) {
    Select();
    const Bitmap view = host.canvas->Logic().View().bitmap;
    host.Drag(host.Grip(CropHit::Right), host.Grip(CropHit::Right) + QPoint(30, 0));
    EXPECT_TRUE(host.canvas->Logic().View().bitmap.SharesPixelsWith(view));
}

TEST_F(CutCanvas, UndoAndRedoBringSizesBackAndSelectTheWhole) {
    Select();
    host.Key(Qt::Key_Return);
    host.messages.clear();
    host.Undo();
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
    EXPECT_EQ(host.Cut(), QRect(0, 0, 400, 300));
    EXPECT_EQ(host.Fields(), QSize(400, 300));
    EXPECT_GE(host.Sent<SizeNews>(), 1);
    host.Redo();
    EXPECT_EQ(host.ImageSize(), QSize(200, 150));
    EXPECT_EQ(host.Cut(), QRect(0, 0, 200, 150));
    host.canvas->OnHistoryJump(0);
    EXPECT_EQ(host.ImageSize(), QSize(400, 300));
    host.canvas->OnHistoryJump(1);
    host.canvas->OnRevert();
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
    EXPECT_EQ(host.history.m_count, 3);  // a revert is a step of its own
}

TEST_F(CutCanvas, ACutOfAnotherZoomTellsTheFit) {
    host.Open(TestPictures::Face(2000, 1500));
    host.Drag({200, 200}, {400, 350});
    host.messages.clear();
    ASSERT_TRUE(host.canvas->CropToSelection());
    EXPECT_GE(host.Sent<ZoomNews>(), 1);
    EXPECT_TRUE(host.canvas->Geometry().AtFit());
}

TEST_F(CutCanvas, LeavingCountsItsClickAndHandsTheViewOn) {
    const int before = CropHost::Clicks("888020202");
    host.canvas->OnApply();
    EXPECT_EQ(CropHost::Clicks("888020202"), before);
    Select();
    host.Key(Qt::Key_Return);
    host.canvas->ZoomToPercent(180);
    host.canvas->OnApply();
    EXPECT_EQ(CropHost::Clicks("888020202"), before + 1);
    const Bitmap result = host.canvas->GetShowBitmap();
    host.NewCanvas();
    ASSERT_TRUE(host.canvas->OnEnter());
    EXPECT_TRUE(host.canvas->GetShowBitmap() == result);
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 1.8);
    EXPECT_TRUE(host.Cut().isEmpty());
    EXPECT_TRUE(host.canvas->Selection().IsDrawingNew());
}

TEST_F(CutCanvas, ACutThatCannotBeRecordedStaysPendingAndIsMadeUpFor) {
    Select();
    // A folder in the snapshot's place refuses the file.
    const QString blocked = host.history.m_fileFormat.arg(host.history.m_tempDir).arg(0);
    QDir().mkpath(blocked + QStringLiteral("/x"));
    EXPECT_TRUE(host.canvas->CropToSelection());
    EXPECT_EQ(host.ImageSize(), QSize(200, 150));
    EXPECT_TRUE(host.canvas->HasPendingWork());
    QDir(blocked).removeRecursively();
    host.canvas->OnApply();
    EXPECT_FALSE(host.canvas->HasPendingWork());
    EXPECT_EQ(host.history.CloneCurrent()->ReadImage().Width(), 200);
}

TEST_F(CutCanvas, WhileBusyNothingIsCutOrTakenHoldOf) {
    Select();
    host.busy = true;
    EXPECT_FALSE(host.canvas->CropToSelection());
    host.Drag(host.At({200, 150}), host.At({250, 150}));
    host.Key(Qt::Key_Right);
    host.busy = false;
    EXPECT_EQ(host.Cut(), QRect(100, 75, 200, 150));
}

TEST_F(CutCanvas, EnteringOnAWorkerWhileTheWindowPaints) {
    const Bitmap large = TestPictures::Face(1600, 1200);
    host.Open(large);
    host.Drag({200, 200}, {400, 350});
    std::unique_ptr<CCutWnd> old = std::move(host.canvas);
    host.NewCanvas();
    QTimer painter;
    QObject::connect(&painter, &QTimer::timeout, [&] {
        old->repaint();
        host.canvas->repaint();
    });
    painter.start(0);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(host.RunTask([&](CObjProgress&) {
            old->OnApply();
            EXPECT_TRUE(host.canvas->OnEnter());
            host.canvas->OnImageReady();
            host.canvas->SetShowBitmap(large);
            host.canvas->ZoomFit();
        }));
    EXPECT_TRUE(host.canvas->GetShowBitmap() == large);
}

}  // namespace
