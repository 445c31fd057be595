// SPDX-License-Identifier: GPL-3.0-or-later
#include "ClickCount.h"
#include "TextHost.h"

namespace {

int Differing(const QImage& a, const QImage& b, const QRect& part) {
    int differing = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) differing += a.pixel(x, y) != b.pixel(x, y);
    return differing;
}

}  // namespace

TEST(WordWnd, AnAddedTextIsPaintedSelectedRecordedAndTold) {
    TextHost host;
    const QImage before = host.Painted();
    EXPECT_TRUE(host.canvas->AddText(QStringLiteral("Hello"), {}));
    EXPECT_EQ(host.Sent<WordAddedNews>(), 1);
    EXPECT_GE(host.Sent<HistoryNews>(), 1);
    EXPECT_EQ(host.Logic().Selected(), 0);
    EXPECT_EQ(host.history.m_count, 2);
    EXPECT_GT(Differing(before, host.Painted(), host.canvas->rect()), 50);
    EXPECT_FALSE(host.canvas->AddText({}, {}));
    EXPECT_EQ(host.Sent<WordAddedNews>(), 1);
}

TEST(WordWnd, SettersWithNothingSelectedDoNothing) {
    TextHost host;
    host.Add(QStringLiteral("Hello"));
    host.Key(Qt::Key_Escape);
    const Bitmap before = host.canvas->GetShowBitmap();
    host.canvas->SetText(QStringLiteral("x"));
    host.canvas->SetFontName(QStringLiteral("DejaVu Serif"));
    host.canvas->SetFontSize(99);
    host.canvas->SetBold(true);
    host.canvas->SetItalic(true);
    host.canvas->SetUnderline(true);
    host.canvas->SetShadow(true);
    host.canvas->SetVertical(true);
    host.canvas->SetColor(0xFF0000);
    host.canvas->SetAlpha(0.5);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == before);
    EXPECT_FALSE(host.canvas->HasPendingWork());
}

TEST(WordWnd, APressSelectsAndTellsTheStyle) {
    TextHost host;
    host.Add(QStringLiteral("One"));
    const QPoint at = host.Middle();
    host.Key(Qt::Key_Escape);
    EXPECT_EQ(host.Logic().Selected(), CWordLogic::None);
    host.messages.clear();
    QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, at);
    EXPECT_EQ(host.Sent<WordSelectedNews>(), 1);
    EXPECT_EQ(host.Logic().Selected(), 0);
}

TEST(WordWnd, ADragMovesAndRecordsAtItsRelease) {
    TextHost host;
    host.Add(QStringLiteral("Drag me"));
    const QPoint from = host.Middle();
    const QPointF place = host.Logic().BoxOf(0).rect.topLeft();
    QTest::mousePress(host.canvas.get(), Qt::LeftButton, {}, from);
    EXPECT_TRUE(host.canvas->IsStrokeHeld());
    host.Move(from + QPoint(40, 60));
    EXPECT_TRUE(host.canvas->HasPendingWork());
    QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, from + QPoint(40, 60));
    EXPECT_FALSE(host.canvas->HasPendingWork());
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
    EXPECT_EQ(QPointF(host.Logic().BoxOf(0).rect.topLeft()), place + QPointF(40, 60));
    EXPECT_EQ(host.history.m_count, 2);
}

TEST(WordWnd, ATurnTellsThePanelTheSize) {
    TextHost host;
    host.Add(QStringLiteral("Turn me round"));
    const QPoint centre = host.Middle();
    host.messages.clear();
    host.Drag(host.RotateAt(), centre + QPoint(10, 160));
    EXPECT_GE(host.Sent<WordSizeNews>(), 1);
    EXPECT_EQ(host.Size()->Value(), static_cast<int>(host.Selected().GetFontSize()));
    EXPECT_NE(host.Selected().GetAngle(), 0.0);
    host.Drag(host.RotateAt(), centre + QPoint(-100, 100), Qt::ShiftModifier);
    EXPECT_EQ(static_cast<int>(host.Selected().GetAngle()) % 15, 0);
}

TEST(WordWnd, OnlyWhatChangesIsPaintedWhileDragging) {
    TextHost host;
    host.Add(QStringLiteral("Corner"));
    host.Drag(host.Middle(), host.Logic().Geometry().ScreenRect().topLeft() + QPoint(100, 60));
    const QPoint from = host.Middle();
    QTest::mousePress(host.canvas.get(), Qt::LeftButton, {}, from);
    QRegion painted;
    struct Watch : QObject {
        QRegion* painted;
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) *painted += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
    } watch;
    watch.painted = &painted;
    host.canvas->installEventFilter(&watch);
    host.Move(from + QPoint(5, 5));
    EXPECT_FALSE(painted.isEmpty());
    EXPECT_LT(painted.boundingRect().width(), 400);
    EXPECT_LT(painted.boundingRect().height(), 200);
    // What was painted in parts is what a whole paint shows.
    const QImage parts = host.canvas->grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(Differing(parts, host.Painted(), parts.rect()), 0);
    QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, from);
}

TEST(WordWnd, EscDuringADragTakesItBack) {
    TextHost host;
    host.Add(QStringLiteral("Back"));
    const QPoint from = host.Middle();
    QTest::mousePress(host.canvas.get(), Qt::LeftButton, {}, from);
    host.Move(from + QPoint(50, 0));
    host.Key(Qt::Key_Escape);
    EXPECT_EQ(host.Middle(), from);
    EXPECT_EQ(host.Logic().Selected(), 0);
    host.Move(from + QPoint(90, 0));
    EXPECT_EQ(host.Middle(), from);
    QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, from);
}

TEST(WordWnd, TheDeleteButtonDeletesAndUndoBringsTheTextBack) {
    TextHost host;
    host.Add(QStringLiteral("Gone"));
    const Bitmap before = host.canvas->GetShowBitmap();
    QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, host.DeleteAt());
    EXPECT_EQ(host.Logic().Count(), 0);
    host.Undo();
    EXPECT_EQ(host.Logic().Count(), 1);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == before);
    EXPECT_EQ(host.history.m_count, 2);
    host.Undo();
    EXPECT_EQ(host.Logic().Count(), 0);
    EXPECT_EQ(host.history.m_currentNo, 1);
}

TEST(WordWnd, BesideAllTextsAPressPansAPictureThatIsLargerThanTheView) {
    TextHost host(QStringLiteral("1033"), {2400, 2000});
    host.canvas->ZoomActualSize();
    const QPoint before = host.Logic().Geometry().ViewOffset();
    host.Drag({400, 300}, {350, 260});
    EXPECT_EQ(host.Logic().Geometry().ViewOffset(), before + QPoint(-50, -40));
    // A text is moved instead.
    host.Add(QStringLiteral("Held"));
    const QPoint offset = host.Logic().Geometry().ViewOffset();
    host.Drag(host.Middle(), host.Middle() + QPoint(30, 30));
    EXPECT_EQ(host.Logic().Geometry().ViewOffset(), offset);
}

TEST(WordWnd, KeysMoveTurnDoubleRemoveAndDeselect) {
    TextHost host;
    host.Add(QStringLiteral("Keys"));
    const auto place = [&] {
        float x = 0, y = 0;
        host.Selected().GetPosition(&x, &y);
        return QPointF(x, y);
    };
    const QPointF start = place();
    host.Key(Qt::Key_Right);
    host.Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(place(), start + QPointF(1, 10));
    host.Key(Qt::Key_Left, Qt::ShiftModifier);
    host.Key(Qt::Key_Up);
    EXPECT_EQ(place(), start + QPointF(-9, 9));
    host.Key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(host.Selected().GetAngle(), 1.0);
    host.Key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(host.Selected().GetAngle(), -14.0);
    host.Key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(host.Logic().Count(), 2);
    host.Key(Qt::Key_Delete);
    EXPECT_EQ(host.Logic().Count(), 1);
    EXPECT_EQ(host.Logic().Selected(), CWordLogic::None);
    host.Key(Qt::Key_PageDown);
    EXPECT_EQ(host.Logic().Selected(), 0);
    host.Key(Qt::Key_Escape);
    EXPECT_EQ(host.Logic().Selected(), CWordLogic::None);
    EXPECT_EQ(host.history.m_count, 2);
    EXPECT_FALSE(host.canvas->HasPendingWork());
}

TEST(WordWnd, ADoubleClickPutsTheCursorIntoTheTextWithAllOfItSelected) {
    TextHost host;
    host.Add(QStringLiteral("Edit me"));
    const QPoint at = host.Middle();
    host.Key(Qt::Key_Escape);
    QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(host.canvas.get(), Qt::LeftButton, {}, at);
    QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, at);
    EXPECT_TRUE(host.Edit()->hasFocus());
    EXPECT_EQ(host.Edit()->textCursor().selectedText(), QStringLiteral("Edit me"));
    QTest::keyClicks(host.Edit(), QStringLiteral("New"));
    EXPECT_EQ(host.Selected().GetText(), QStringLiteral("New"));
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
}

TEST(WordWnd, APressTakesTheKeyboardFromTheText) {
    TextHost host;
    host.Add(QStringLiteral("Focus"));
    host.Edit()->setFocus();
    QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, {3, 3});
    EXPECT_FALSE(host.Edit()->hasFocus());
    EXPECT_TRUE(host.canvas->hasFocus());
}

TEST(WordWnd, TheCursorSaysMoveTurnAndDelete) {
    TextHost host;
    host.Add(QStringLiteral("Cursors"));
    host.MoveOver(host.canvas.get(), host.Middle());
    EXPECT_EQ(host.canvas->cursor().shape(), Qt::SizeAllCursor);
    host.MoveOver(host.canvas.get(), host.RotateAt());
    EXPECT_EQ(host.canvas->cursor().shape(), Qt::BitmapCursor);
    const QImage turn = host.canvas->cursor().pixmap().toImage();
    host.MoveOver(host.canvas.get(), host.DeleteAt());
    EXPECT_EQ(host.canvas->cursor().shape(), Qt::BitmapCursor);
    EXPECT_FALSE(host.canvas->cursor().pixmap().toImage() == turn);
    host.MoveOver(host.canvas.get(), {2, 2});
    EXPECT_EQ(host.canvas->cursor().shape(), Qt::ArrowCursor);
}

TEST(WordWnd, TheTextUnderTheMouseGetsAFrame) {
    TextHost host;
    host.Add(QStringLiteral("Hover"));
    const QPoint at = host.Middle();
    host.Key(Qt::Key_Escape);
    const QImage before = host.Painted();
    host.MoveOver(host.canvas.get(), at);
    EXPECT_GT(Differing(before, host.Painted(), before.rect()), 100);
    host.MoveOver(host.canvas.get(), {2, 2});
    EXPECT_EQ(Differing(before, host.Painted(), before.rect()), 0);
}

TEST(WordWnd, GuidesShowWhileATextIsHeldInTheMiddle) {
    TextHost host;
    host.Add(QStringLiteral("Guides"));
    const QPoint from = host.Middle();
    QTest::mousePress(host.canvas.get(), Qt::LeftButton, {}, from);
    host.Move(from + QPoint(60, 60));
    const QImage free = host.Painted();
    host.Move(from + QPoint(2, 60));
    EXPECT_TRUE(host.Logic().AtMiddleX());
    const QRect place = host.Logic().Geometry().ScreenRect();
    const QRect line(place.x() + place.width() / 2, place.y() + 5, 1, 40);
    EXPECT_EQ(Differing(free, host.Painted(), line), 40);
    QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, from + QPoint(2, 60));
    EXPECT_EQ(Differing(free, host.Painted(), line), 0);
}

TEST(WordWnd, LeavingCountsAClickWhenThePictureIsChanged) {
    TextHost host;
    ClickCounts().Clear();
    host.canvas->OnApply();
    EXPECT_TRUE(ClickCounts().Counts().empty());
    host.Add(QStringLiteral("Counted"));
    host.canvas->OnApply();
    EXPECT_EQ(ClickCounts().Counts().at(QStringLiteral("888020301")), 1);
}

TEST(WordWnd, NothingHappensWhileTheProgramIsBusy) {
    TextHost host;
    host.Add(QStringLiteral("Busy"));
    const QPoint at = host.Middle();
    host.busy = true;
    host.Drag(at, at + QPoint(50, 50));
    host.Key(Qt::Key_Delete);
    EXPECT_FALSE(host.canvas->AddText(QStringLiteral("x"), {}));
    host.busy = false;
    EXPECT_EQ(host.Logic().Count(), 1);
    EXPECT_EQ(host.Middle(), at);
}

TEST(WordWnd, ThePaintedCanvasIsTheBurntPicture) {
    TextHost host;
    host.Add(QStringLiteral("Seen"));
    host.Key(Qt::Key_Escape);
    const Bitmap burnt = host.canvas->GetShowBitmap();
    const QImage painted = host.Painted();
    const QRect place = host.Logic().Geometry().ScreenRect();
    ASSERT_EQ(place.size(), QSize(burnt.Width(), burnt.Height()));
    int differing = 0;
    for (int y = 0; y < burnt.Height(); ++y)
        for (int x = 0; x < burnt.Width(); ++x)
            differing += (painted.pixel(place.x() + x, place.y() + y) & 0xFFFFFF) !=
                         (TestPictures::PixelAt(burnt, x, y) & 0xFFFFFF);
    EXPECT_EQ(differing, 0);
}
