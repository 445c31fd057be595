// SPDX-License-Identifier: GPL-3.0-or-later
// The canvas and panel of slimming with real events: what waits for a held stroke, and how a stroke ends.
#include <QtWidgets/QAbstractButton>

#include "BlockAllocator.h"
#include "CEyesZoomPanel.h"
#include "CMeiRongSouShen.h"
#include "CShouLianSSWnd.h"
#include "CSliderCtrl.h"
#include "CYanJingFDWnd.h"
#include "Messages.h"
#include "ShapeVisit.h"
#include "ToolTestHost.h"

namespace {

using SlimHost = ToolTestHost<CShouLianSSWnd, CMeiRongSouShen>;

class SlimWindow : public testing::Test {
  protected:
    void SetUp() override {
        host.Open(picture);
        twin.Take(picture);
        middle = host.canvas->rect().center();
    }
    void TearDown() override { BlockAllocator::SetGuard(nullptr); }

    void Send(QEvent::Type type, QPoint at) {
        const bool move = type == QEvent::MouseMove;
        QMouseEvent event(type, QPointF(at), host.canvas->mapToGlobal(QPointF(at)),
                          move ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QCoreApplication::sendEvent(host.canvas.get(), &event);
    }
    void Press(QPoint at) {
        Send(QEvent::MouseButtonPress, at);
        twin.PressTwin(at);
    }
    void Move(QPoint at) {
        Send(QEvent::MouseMove, at);
        twin.MoveTwin(at);
    }
    void Release() { Send(QEvent::MouseButtonRelease, middle); }
    // Some way of a stroke that is still held.
    void HoldADrag() {
        Press(middle);
        for (int i = 0; i < 8; ++i) Move(middle + QPoint(5 * i, 2 * i));
    }
    WarpLogic& Logic() { return const_cast<CShouLianSSLogic&>(host.canvas->Logic()); }
    Bitmap OnShow() { return host.canvas->GetShowBitmap(); }

    const Bitmap picture = TestPictures::Face(500, 400);
    SlimHost host{QStringLiteral("1033")};
    ShapeVisit twin{Logic(), true};
    QPoint middle;
};

}  // namespace

TEST_F(SlimWindow, TheSlidersGiveTheCanvasItsBrush) {
    EXPECT_EQ(host.canvas->PenSize(), 100);
    EXPECT_EQ(host.canvas->Strength(), 20);
    host.Control<CSliderCtrl>("SliderSouShenPenSize")->SetQuietly(33);
    host.Control<CSliderCtrl>("SliderSouShenLiDu")->SetQuietly(70);
    host.NewCanvas();
    host.Open(picture);
    EXPECT_EQ(host.canvas->PenSize(), 66) << "twice the slider's value, in place of the canvas's own";
    EXPECT_EQ(host.canvas->Strength(), 70);
    host.canvas->setFocus();
    QTest::keyClick(host.canvas.get(), Qt::Key_BracketRight);
    const auto news = std::find_if(host.messages.rbegin(), host.messages.rend(), [](const FrameMessage& message) {
        return PanelNewsOf<BrushStepNews>(message) != nullptr;
    });
    ASSERT_NE(news, host.messages.rend());
    EXPECT_EQ(host.canvas->PenSize(), 76);
}

TEST_F(SlimWindow, TheButtonSwapsTheLabelsAndNothingElse) {
    QWidget* size = host.Control("TextSouShenPenSize");
    QWidget* other = host.Control("TextSouShenEraseSize");
    auto* button = host.Control<QAbstractButton>("BtnSouShenErase");
    EXPECT_TRUE(size->isVisible());
    EXPECT_FALSE(other->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(size->isVisible());
    EXPECT_TRUE(other->isVisible());
    HoldADrag();
    Release();
    EXPECT_TRUE(OnShow() == twin.Expected()) << "it pushes as before";
    EXPECT_FALSE(OnShow() == picture);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(size->isVisible());
    EXPECT_FALSE(other->isVisible());
}

TEST_F(SlimWindow, AZoomOrFitWaitsForTheStrokesEnd) {
    HoldADrag();
    const double before = host.canvas->GetZoom();
    CanvasView view = Logic().View();
    host.canvas->ZoomToPercent(200);
    host.canvas->ZoomIn();
    EXPECT_EQ(host.canvas->GetZoom(), before);
    EXPECT_TRUE(Logic().View().bitmap == view.bitmap) << "what the hand saw stays";
    Move(middle + QPoint(50, 0));
    host.canvas->ZoomOut();
    Release();
    EXPECT_TRUE(OnShow() == twin.Expected());
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 2.0) << "200 %, a step up, a step down";
    HoldADrag();
    host.canvas->ZoomFit();
    host.canvas->FitToWindow();
    host.canvas->ZoomActualSize();
    EXPECT_DOUBLE_EQ(host.canvas->GetZoom(), 2.0);
    host.canvas->ZoomFit();
    Release();
    EXPECT_TRUE(Logic().Geometry().AtFit());
    EXPECT_TRUE(OnShow() == twin.Expected());
}

TEST_F(SlimWindow, AnotherSizeOfTheWindowWaitsToo) {
    HoldADrag();
    const QRect before = Logic().Geometry().ScreenRect();
    host.canvas->Place(QRect(250, 0, 600, 500));
    EXPECT_EQ(Logic().Geometry().ScreenRect(), before);
    Move(middle + QPoint(30, 20));
    Release();
    EXPECT_TRUE(OnShow() == twin.Expected());
    EXPECT_EQ(Logic().Geometry().Client(), host.canvas->PhysicalClient());
    EXPECT_NE(Logic().Geometry().ScreenRect(), before);
}

TEST_F(SlimWindow, EscInTheHandTakesTheStrokeBack) {
    host.canvas->setFocus();
    HoldADrag();
    QTest::keyClick(host.canvas.get(), Qt::Key_Escape);
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
    Release();
    EXPECT_TRUE(OnShow() == picture);
    EXPECT_EQ(host.history.m_count, 1);
    EXPECT_FALSE(host.canvas->IsImageChanged());
}

TEST_F(SlimWindow, EscWhileThePictureIsWorkedKeepsWhatIsDone) {
    host.cancelAt = 0.0f;  // at the first question
    HoldADrag();
    for (int i = 0; i < 400; ++i) Move(middle + QPoint(i % 40, i % 7));
    Release();
    host.cancelAt.reset();
    EXPECT_EQ(host.tasks, 1);
    EXPECT_FALSE(Logic().HasWaiting());
    EXPECT_EQ(host.history.m_count, 2) << "the step records it";
    EXPECT_FALSE(OnShow() == picture);
    EXPECT_FALSE(OnShow() == twin.Expected());
    EXPECT_TRUE(host.history.CloneCurrent()->ReadImage() == OnShow());
    EXPECT_TRUE(Logic().View().bitmap == OnShow()) << "and the view shows it, at 100 %";
    EXPECT_EQ(host.Sent<HistoryNews>(), 1);
}

TEST_F(SlimWindow, AStrokeThatAnotherWindowCutsShortIsWholeAllTheSame) {
    HoldADrag();
    host.busy = true;
    QEvent blocked(QEvent::WindowBlocked);
    QCoreApplication::sendEvent(host.canvas.get(), &blocked);
    host.busy = false;
    EXPECT_EQ(host.tasks, 0) << "no second window under the one that is up";
    EXPECT_EQ(host.history.m_count, 2);
    EXPECT_TRUE(OnShow() == twin.Expected());
}

TEST_F(SlimWindow, TheResultAndMovesInTheHistoryFinishAHeldStroke) {
    HoldADrag();
    EXPECT_TRUE(OnShow() == twin.Expected()) << "asked for in the middle";
    Move(middle + QPoint(-20, 10));
    host.canvas->OnUndo();
    EXPECT_TRUE(OnShow() == picture);
    Send(QEvent::MouseMove, middle);
    Release();
    EXPECT_TRUE(OnShow() == picture);
    host.canvas->OnRedo();
    EXPECT_TRUE(OnShow() == twin.Expected());
    EXPECT_EQ(host.history.m_count, 2);
    const Bitmap first = OnShow();
    twin.Take(first);
    HoldADrag();
    host.canvas->OnHistoryJump(0);
    EXPECT_TRUE(OnShow() == picture);
    Release();
    EXPECT_EQ(host.history.m_count, 3);
    twin.Take(picture);
    HoldADrag();
    host.canvas->OnRevert();
    EXPECT_TRUE(OnShow() == picture);
    Release();
    twin.Take(picture);
    HoldADrag();
    host.canvas->OnApply();
    EXPECT_TRUE(host.history.CurrentBitmap() == twin.Expected());
}

TEST_F(SlimWindow, WithoutMemoryForTheFieldStrokesAreRefusedWithAMessage) {
    const Bitmap large = TestPictures::Face(900, 1200);
    BlockAllocator::SetGuard([](std::size_t bytes) { return bytes < 3000000; });  // for the view, not for the picture
    host.canvas->SetShowBitmap(large);
    EXPECT_TRUE(host.told.empty());
    Send(QEvent::MouseButtonPress, middle);
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
    Send(QEvent::MouseMove, middle + QPoint(20, 0));
    Release();
    EXPECT_EQ(host.told, std::vector<QString>{QStringLiteral("ids_outofmemory")});
    EXPECT_TRUE(OnShow() == large);
    EXPECT_FALSE(host.canvas->IsImageChanged());
    BlockAllocator::SetGuard(nullptr);
    twin.Take(large);
    HoldADrag();
    Release();
    EXPECT_TRUE(OnShow() == twin.Expected());
}

TEST(EnlargeWindow, AClickEnlargesAndAMoveOnlyMovesTheRing) {
    const Bitmap picture = TestPictures::Face(500, 400);
    ToolTestHost<CYanJingFDWnd, CEyesZoomPanel> host(QStringLiteral("2052"));
    host.Open(picture);
    EXPECT_EQ(host.canvas->PenSize(), 60);
    EXPECT_EQ(host.canvas->Strength(), 30);
    ShapeVisit twin(const_cast<CYanJingFDLogic&>(host.canvas->Logic()), false);
    twin.Take(picture);
    const QPoint middle = host.canvas->rect().center();
    for (const QPoint at : {middle, middle + QPoint(60, -20), middle + QPoint(3, 1)}) {
        QTest::mousePress(host.canvas.get(), Qt::LeftButton, {}, at);
        QTest::mouseMove(host.canvas.get(), at + QPoint(40, 40));
        QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, at + QPoint(40, 40));
        twin.PressTwin(at);
        EXPECT_TRUE(host.canvas->GetShowBitmap() == twin.Expected());
    }
    EXPECT_EQ(host.history.m_count, 4) << "each click is a step";
    EXPECT_FALSE(host.canvas->GetShowBitmap() == picture);
}
