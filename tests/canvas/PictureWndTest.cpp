// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPictureWnd.h"

#include <gtest/gtest.h>

#include "CanvasSupport.h"
#include "ClickCount.h"
#include "ToySnapshots.h"

namespace {

// A canvas over the halving logic.
class HalvingWnd : public CPictureWnd {
  public:
    HalvingWnd(ToolHost& host, CHistoryManager& history)
        : CPictureWnd(host, HalvingTool, logic, nullptr), logic(history) {}
    void Halve() {
        Perform([this] {
            logic.Halve();
            logic.CommitStep();
            return true;
        });
    }
    HalvingLogic logic;
    int taken = 0;

  protected:
    void OnPictureTaken() override { ++taken; }
};

struct PictureWndTest : testing::Test, OpenedHistory {
    PictureWndTest() {
        NewCanvas();
        canvas->show();
        static_cast<void>(QTest::qWaitForWindowExposed(canvas.get()));
    }
    void NewCanvas() {
        canvas = std::make_unique<HalvingWnd>(host, history);
        canvas->setWindowFlag(Qt::FramelessWindowHint);
        canvas->Place(QRect(50, 50, 400, 300));
    }
    void OpenHere(const Bitmap& picture) {
        Open(picture);
        canvas->SetShowBitmap(picture);
        canvas->ZoomFit();
        host.messages.clear();
    }
    QSize Size() const {
        int width = 0, height = 0;
        canvas->GetImageSize(&width, &height);
        return {width, height};
    }
    int Clicks() const {
        const auto counts = ClickCounts().Counts();
        const auto found = counts.find(QStringLiteral("8880299"));
        return found == counts.end() ? 0 : found->second;
    }
    RecordingHost host;
    std::unique_ptr<HalvingWnd> canvas;
};

TEST_F(PictureWndTest, WhatTheLogicHoldsIsWhatIsSavedAndShown) {
    const Bitmap picture = TestPictures::Face(120, 90);
    OpenHere(picture);
    EXPECT_TRUE(canvas->GetShowBitmap() == picture);
    QRectF source;
    QRect place;
    canvas->GetViewRects(&source, &place);
    EXPECT_EQ(place, canvas->logic.View().dest);
    const QImage shown = canvas->grab().toImage();
    const QPoint at = canvas->rect().center();
    EXPECT_EQ(shown.pixel(at * shown.devicePixelRatio()),
              TestPictures::PixelAt(picture, static_cast<int>(at.x() * shown.devicePixelRatio()) - place.x(),
                                    static_cast<int>(at.y() * shown.devicePixelRatio()) - place.y()));
}

TEST_F(PictureWndTest, MovesInTheHistoryAreTakenUpPaintedAndTold) {
    OpenHere(TestPictures::Face(1600, 300));
    canvas->Halve();
    EXPECT_EQ(Size(), QSize(800, 300));
    host.messages.clear();
    canvas->taken = 0;
    canvas->OnUndo();
    EXPECT_EQ(Size(), QSize(1600, 300));
    EXPECT_EQ(canvas->taken, 1);
    EXPECT_EQ(host.News<ZoomNews>().size(), 1u);  // another size, another fit
    EXPECT_EQ(host.News<SizeNews>().size(), 1u);
    EXPECT_EQ(host.News<HistoryNews>().size(), 1u);
    canvas->OnRedo();
    EXPECT_EQ(Size(), QSize(800, 300));
    canvas->OnHistoryJump(0);
    EXPECT_EQ(Size(), QSize(1600, 300));
    canvas->OnHistoryJump(1);
    canvas->OnRevert();
    EXPECT_EQ(Size(), QSize(1600, 300));
    EXPECT_EQ(canvas->taken, 5);
}

TEST_F(PictureWndTest, TheNextCanvasTakesUpPictureZoomAndPan) {
    OpenHere(TestPictures::Face(1600, 1200));
    canvas->ZoomToPercent(130);
    canvas->OnApply();
    const Bitmap view = canvas->logic.View().bitmap;
    NewCanvas();
    ASSERT_TRUE(canvas->OnEnter());
    EXPECT_DOUBLE_EQ(canvas->GetZoom(), 1.3);
    EXPECT_EQ(canvas->Geometry(), canvas->logic.Geometry());
    EXPECT_TRUE(canvas->logic.View().bitmap == view);
}

TEST_F(PictureWndTest, EnteringWithoutALeftViewIsRefused) {
    Open(TestPictures::Face(120, 90));
    NewCanvas();
    EXPECT_FALSE(canvas->OnEnter());
    EXPECT_EQ(Size(), QSize(0, 0));
}

TEST_F(PictureWndTest, LeavingCountsItsClickOnlyWithAChangedPicture) {
    OpenHere(TestPictures::Face(120, 90));
    const int before = Clicks();
    canvas->OnApply();
    EXPECT_EQ(Clicks(), before);
    EXPECT_FALSE(canvas->IsImageChanged());
    canvas->logic.Halve();
    EXPECT_TRUE(canvas->IsImageChanged());
    EXPECT_TRUE(canvas->HasPendingWork());
    canvas->OnApply();
    EXPECT_EQ(Clicks(), before + 1);
    EXPECT_FALSE(canvas->HasPendingWork());
}

TEST_F(PictureWndTest, ZoomAndPanReachTheLogic) {
    OpenHere(TestPictures::Face(1600, 1200));
    canvas->ZoomActualSize();
    EXPECT_DOUBLE_EQ(canvas->logic.Geometry().Zoom(), 1.0);
    Drag(*canvas, Qt::LeftButton, {200, 150}, {180, 140});
    EXPECT_EQ(canvas->logic.Geometry(), canvas->Geometry());
    EXPECT_FALSE(canvas->Geometry().Pan().isNull());
    EXPECT_TRUE(canvas->Navigator().isVisible());
}

}  // namespace
