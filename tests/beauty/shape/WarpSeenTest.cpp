// SPDX-License-Identifier: GPL-3.0-or-later
// What the hand saw while it moved is what the picture becomes, at every zoom.
#include "ColourDifference.h"
#include "ShapeVisit.h"
#include "TestHome.h"
#include "TestPictures.h"

namespace {

constexpr QSize Picture(1300, 1000);

// A client in which the picture can be shown at `zoom`.
QSize ClientFor(double zoom) {
    return zoom < 0.2 ? QSize(190, 146) : QSize(420, 360);
}

class Seen : public testing::TestWithParam<double> {
  protected:
    void Begin(WarpLogic& tool) const {
        const QSize client = ClientFor(GetParam());
        tool.SetViewSize(client.width(), client.height());
        tool.SetSource(picture);
        tool.SetZoom(GetParam());
        ASSERT_DOUBLE_EQ(tool.Geometry().Zoom(), GetParam());
    }
    // The mean difference of what was last seen in the stroke and what is shown after it, in the reach of the brush.
    static double Difference(WarpLogic& tool, const QRect& reach) {
        const Bitmap seen = tool.View().bitmap;
        EXPECT_TRUE(tool.EndStroke({}));
        const CanvasView shown = tool.View();
        const QRect part = reach.translated(-shown.dest.topLeft())
                               .intersected(QRect(0, 0, shown.bitmap.Width(), shown.bitmap.Height()));
        double sum = 0.0;
        for (int y = part.top(); y <= part.bottom(); ++y)
            for (int x = part.left(); x <= part.right(); ++x) {
                const auto lab = [&](const Bitmap& bitmap) {
                    const std::uint8_t* const pixel = bitmap.Row(y) + 4 * x;
                    return LabOf(pixel[2], pixel[1], pixel[0]);
                };
                sum += DeltaE2000(lab(seen), lab(shown.bitmap));
            }
        return sum / (part.width() * part.height());
    }
    double Drag(CShouLianSSLogic& slim, QPoint from, QPoint to, int moves) const {
        EXPECT_TRUE(slim.BeginStroke(from));
        for (int i = 0; i <= moves; ++i) slim.MoveStroke(from + (to - from) * i / moves);
        const int r = slim.ViewRadius();
        return Difference(slim, QRect(from, to).normalized().adjusted(-r, -r, r, r));
    }

    const Bitmap picture = TestPictures::Face(Picture.width(), Picture.height());
    CHistoryManager history{TestHome::Path() + QStringLiteral("/Temp/Seen/")};
};

}  // namespace

TEST_P(Seen, ADragIsSavedAsItWasSeen) {
    CShouLianSSLogic slim(history);
    ASSERT_NO_FATAL_FAILURE(Begin(slim));
    slim.SetPenSize(GetParam() < 0.2 ? 30 : 80);
    slim.SetStrength(60);
    const QPoint middle = slim.Geometry().ScreenRect().center();
    EXPECT_LT(Drag(slim, middle - QPoint(30, 10), middle + QPoint(25, 10), 40), 2.0);
    EXPECT_LT(Drag(slim, middle + QPoint(30, 30), middle - QPoint(10, 12), 7), 2.0) << "over the same place";
    const QPoint edge = slim.Geometry().ScreenRect().topLeft() + QPoint(30, 40);
    EXPECT_LT(Drag(slim, edge, edge + QPoint(40, 5), 30), 2.0) << "where the brush reaches over the edge";
}

TEST_P(Seen, ClicksAreSavedAsTheyWereSeen) {
    CYanJingFDLogic eye(history);
    ASSERT_NO_FATAL_FAILURE(Begin(eye));
    eye.SetPenSize(GetParam() < 0.2 ? 30 : 80);
    eye.SetStrength(100);
    const QRect place = eye.Geometry().ScreenRect();
    for (const QPoint at : {place.center(), place.center() + QPoint(9, 4), place.topLeft() + QPoint(12, 15)}) {
        ASSERT_TRUE(eye.BeginStroke(at));
        const int r = eye.ViewRadius();
        EXPECT_LT(Difference(eye, QRect(at, QSize(1, 1)).adjusted(-r, -r, r, r)), 2.0) << at.x() << ", " << at.y();
    }
}

INSTANTIATE_TEST_SUITE_P(Zooms, Seen, testing::Values(0.15, 0.5, 1.0, 2.0));
