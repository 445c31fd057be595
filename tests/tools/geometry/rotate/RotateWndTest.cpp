// SPDX-License-Identifier: GPL-3.0-or-later
#include "RotateHost.h"

namespace {

class RotateWnd : public testing::Test {
  protected:
    void SetUp() override {
        picture = TestPictures::Face(400, 300);
        host.Open(picture);
    }
    // The canvas as it is on the screen.
    QImage Grab() { return host.canvas->grab().toImage().convertToFormat(QImage::Format_ARGB32); }

    Bitmap picture;
    RotateHost host;
};

// Places of the picture's lines of thirds, and one beside each.
std::vector<std::pair<QPoint, QPoint>> OnAndOffThirds(const QRect& place) {
    std::vector<std::pair<QPoint, QPoint>> points;
    for (int i = 1; i <= 2; ++i) {
        const int x = place.x() + place.width() * i / 3, y = place.y() + place.height() * i / 3;
        points.push_back({{x, place.y() + place.height() / 2}, {x - 4, place.y() + place.height() / 2}});
        points.push_back({{place.x() + place.width() / 2, y}, {place.x() + place.width() / 2, y - 4}});
    }
    return points;
}

TEST_F(RotateWnd, ThirdsShowWhileTheSliderIsHeldAndOnlyThen) {
    host.Open(TestPictures::Plain(400, 300, 0xFF305070));
    const auto brighter = [&] {
        const QImage image = Grab();
        int count = 0;
        for (const auto& [on, off] : OnAndOffThirds(host.canvas->Geometry().ScreenRect()))
            count += qGray(image.pixel(on)) > qGray(image.pixel(off)) + 40;
        return count;
    };
    EXPECT_EQ(brighter(), 0);
    host.PressSlider();
    host.MoveSlider(10);
    EXPECT_EQ(brighter(), 4);
    host.ReleaseSlider();
    EXPECT_EQ(brighter(), 0);
}

TEST_F(RotateWnd, EveryMoveIsPaintedBeforeTheEventReturns) {
    int paints = 0;
    class Counter : public QObject {
      public:
        explicit Counter(int& count) : m_count(count) {}
        bool eventFilter(QObject*, QEvent* event) override {
            m_count += event->type() == QEvent::Paint;
            return false;
        }

      private:
        int& m_count;
    } counter(paints);
    host.canvas->installEventFilter(&counter);
    host.PressSlider();
    for (const int angle : {10, 30, 60}) {
        const int before = paints;
        host.MoveSlider(angle);
        EXPECT_GT(paints, before);
    }
    host.ReleaseSlider();
    host.canvas->removeEventFilter(&counter);
}

TEST_F(RotateWnd, PaintsTheTurnedPictureOverThePattern) {
    host.Open(TestPictures::Plain(400, 300, 0xFF305070));
    host.SetAngle(30);
    const QImage image = Grab();
    const QRect place = host.canvas->Geometry().ScreenRect();
    EXPECT_EQ(image.pixel(place.center()), 0xFF305070u);
    EXPECT_NE(image.pixel(place.topLeft() + QPoint(4, 4)), 0xFF305070u) << "the corner is transparent";
}

TEST_F(RotateWnd, TheSizeIsThatOfTheResultAndIsTold) {
    host.Click("BtnYouXuanZhuan");
    EXPECT_EQ(host.ImageSize(), QSize(300, 400));
    EXPECT_EQ(host.Sent<SizeNews>(), 1);
    host.SetAngle(45);
    EXPECT_EQ(host.ImageSize(), QSize(host.Result().Width(), host.Result().Height()));
}

TEST_F(RotateWnd, CompareAndSaveReadTheFullResultOfAnOpenDrag) {
    host.PressSlider();
    host.MoveSlider(33);
    ASSERT_TRUE(host.canvas->Logic().IsDragging());
    const int angle = host.Slider()->value();
    EXPECT_TRUE(host.canvas->GetShowBitmap() == RotateHost::Turned(picture, angle));
    EXPECT_FALSE(host.canvas->Logic().IsDragging());
    // The hand goes on.
    host.MoveSlider(60);
    host.ReleaseSlider();
    EXPECT_TRUE(host.Result() == RotateHost::Turned(picture, host.Slider()->value()));
}

TEST_F(RotateWnd, HistoryMovesFinishAnOpenDrag) {
    const struct {
        const char* name;
        void (*move)(CRotateWnd&);
    } moves[] = {{"undo", [](CRotateWnd& canvas) { canvas.OnUndo(); }},
                 {"jump", [](CRotateWnd& canvas) { canvas.OnHistoryJump(0); }},
                 {"revert", [](CRotateWnd& canvas) { canvas.OnRevert(); }},
                 {"leave", [](CRotateWnd& canvas) { canvas.OnApply(); }}};
    for (const auto& row : moves) {
        host.Open(picture);
        host.PressSlider();
        host.MoveSlider(33);
        const int angle = host.Slider()->value();
        row.move(*host.canvas);
        ASSERT_GE(host.history.m_count, 2) << row.name;
        EXPECT_TRUE(host.history.m_ring[1]->Clone()->ReadImage() == RotateHost::Turned(picture, angle)) << row.name;
        EXPECT_FALSE(host.canvas->Logic().IsDragging()) << row.name;
        host.ReleaseSlider();
    }
}

TEST_F(RotateWnd, LeavingAChangedPictureCountsAClick) {
    const int clicks = RotateHost::Clicks("888020204");
    host.canvas->OnApply();
    EXPECT_EQ(RotateHost::Clicks("888020204"), clicks);
    host.Click("BtnZuoXuanZhuan");
    host.canvas->OnApply();
    EXPECT_EQ(RotateHost::Clicks("888020204"), clicks + 1);
    EXPECT_EQ(host.history.m_count, 2);
}

TEST_F(RotateWnd, TheNextVisitTakesPictureAndViewUp) {
    host.SetAngle(20);
    const Bitmap result = host.Result();
    const ViewGeometry geometry = host.canvas->Geometry();
    host.canvas->OnApply();
    host.NewCanvas();
    ASSERT_TRUE(host.canvas->OnEnter());
    EXPECT_TRUE(host.Result() == result);
    EXPECT_TRUE(host.State().IsUnchanged());
    EXPECT_DOUBLE_EQ(host.canvas->Geometry().Zoom(), geometry.Zoom());
}

TEST_F(RotateWnd, ZoomKeepsWorkingWhileAResultIsPending) {
    host.SetAngle(20);
    host.canvas->ZoomActualSize();
    EXPECT_DOUBLE_EQ(host.canvas->Geometry().Zoom(), 1.0);
    host.canvas->ZoomIn();
    EXPECT_NEAR(host.canvas->Geometry().Zoom(), 1.1, 1e-9);
    EXPECT_TRUE(host.canvas->HasPendingWork());
    host.Click("BtnShangXiaFanZhuan");
    EXPECT_NEAR(host.canvas->Geometry().Zoom(), 1.1, 1e-9) << "a flip keeps the view";
}

}  // namespace
