// SPDX-License-Identifier: GPL-3.0-or-later
#include "CropSelection.h"

#include "KeptRatio.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "CropRatio.h"
#include "ViewGeometry.h"

namespace {

ViewGeometry View(QSize image, double zoom, QSize client = {1600, 1000}) {
    ViewGeometry geometry;
    geometry.SetClient(client);
    geometry.SetImage(image);
    geometry.Fit();
    geometry.SetZoom(zoom);
    return geometry;
}

CropSelection On(QSize image, double zoom = 1.0) {
    CropSelection selection;
    selection.SetGeometry(View(image, zoom));
    return selection;
}

void Drag(CropSelection& selection, QPointF from, QPointF to) {
    ASSERT_TRUE(selection.Press(from));
    selection.MoveTo((from + to) / 2);
    selection.MoveTo(to);
    selection.Release();
}

// The middle of a hit area that no earlier one covers.
QPointF Grip(const CropSelection& selection, CropHit hit) {
    return selection.HitAreas()[static_cast<std::size_t>(hit)].center();
}

class Random {
  public:
    int Int(int least, int most) { return std::uniform_int_distribution(least, most)(m_engine); }
    double Real(double least, double most) { return std::uniform_real_distribution(least, most)(m_engine); }

  private:
    std::mt19937 m_engine{20240611};
};

// A picture and a view of it at a zoom between 0.15 and 4.0, panned anywhere.
ViewGeometry AnyView(Random& random) {
    const double zoom = random.Real(0.15, 4.0);
    // The least zoom is the fit zoom where that is below 20 %.
    const QSize image = zoom < 0.2 ? QSize(random.Int(11000, 20000), random.Int(10, 9000))
                                   : QSize(random.Int(60, 7000), random.Int(60, 7000));
    ViewGeometry geometry = View(image, zoom);
    geometry.PanBy(random.Int(-9000, 9000), random.Int(-9000, 9000));
    return geometry;
}

// How far, in canvas pixels, the border of what is cut may lie from the border of what was framed: a truncated start
// and a truncated side below 100 %; enlarged, frames stand on the borders of pixels. One at the picture's own edge.
double Tolerance(double zoom) {
    return zoom > 1.0 ? 1.0001 : std::max(1.0, 2 * zoom) + 0.0001;
}

void ExpectCutAsFramed(const CropSelection& selection, double zoom) {
    const QRectF& frame = selection.Frame();
    const QRect& cut = selection.Cut();
    const double tolerance = Tolerance(zoom);
    EXPECT_NEAR(cut.x() * zoom, frame.left(), tolerance);
    EXPECT_NEAR(cut.y() * zoom, frame.top(), tolerance);
    EXPECT_NEAR((cut.x() + cut.width()) * zoom, frame.right(), tolerance);
    EXPECT_NEAR((cut.y() + cut.height()) * zoom, frame.bottom(), tolerance);
}

}  // namespace

TEST(CropSelection, WhatWasFramedIsWhatIsCutAtAnyPanAndZoom) {
    Random random;
    for (int i = 0; i < 4000; ++i) {
        const ViewGeometry view = AnyView(random);
        SCOPED_TRACE(testing::Message() << view.Image().width() << " x " << view.Image().height() << " at "
                                        << view.Zoom());
        CropSelection selection;
        selection.SetGeometry(view);
        // Two points that the user sees, drawn from one to the other.
        const QRect place = view.ScreenRect();
        const auto point = [&] {
            return QPoint(random.Int(place.left(), place.right()), random.Int(place.top(), place.bottom()));
        };
        const QPoint first = point(), second = point();
        ASSERT_TRUE(selection.Press(first - view.ViewOffset()));
        selection.MoveTo(second - view.ViewOffset());
        selection.Release();
        ExpectCutAsFramed(selection, view.Zoom());
        const QRectF seen(view.ToImage(selection.Frame().topLeft() + view.ViewOffset()),
                          view.ToImage(selection.Frame().bottomRight() + view.ViewOffset()));
        const double slack = (Tolerance(view.Zoom()) + 1.0) / view.Zoom();
        EXPECT_NEAR(selection.Cut().x(), seen.left(), slack);
        EXPECT_NEAR(selection.Cut().y(), seen.top(), slack);
        EXPECT_NEAR(selection.Cut().x() + selection.Cut().width(), seen.right(), slack);
        EXPECT_NEAR(selection.Cut().y() + selection.Cut().height(), seen.bottom(), slack);
        EXPECT_TRUE(QRect(QPoint(0, 0), view.Image()).contains(selection.Cut()));
        if (testing::Test::HasFailure()) return;
    }
}

TEST(CropSelection, NoZoomAndNoPanChangesWhatIsCut) {
    Random random;
    for (int i = 0; i < 500; ++i) {
        ViewGeometry view = AnyView(random);
        CropSelection selection;
        selection.SetGeometry(view);
        selection.SelectDefault();
        const QRect cut = selection.Cut();
        for (int step = 0; step < 6; ++step) {
            view.SetZoom(random.Real(0.15, 4.0));
            view.PanBy(random.Int(-500, 500), random.Int(-500, 500));
            selection.SetGeometry(view);
            ASSERT_EQ(selection.Cut(), cut);
            ExpectCutAsFramed(selection, view.Zoom());
            EXPECT_NEAR(selection.Frame().width(), view.Zoom() * cut.width(), 1.0);
            if (testing::Test::HasFailure()) return;
        }
    }
}

TEST(CropSelection, APanLeavesTheFrameAlone) {
    ViewGeometry view = View({4000, 3000}, 1.0);
    CropSelection selection;
    selection.SetGeometry(view);
    Drag(selection, {1203, 1007}, {1511, 1409});
    const QRectF frame = selection.Frame();
    view.PanBy(-111, 57);
    selection.SetGeometry(view);
    EXPECT_EQ(selection.Frame(), frame);
}

TEST(CropSelection, AnEdgeWithinOneCanvasPixelOfThePicturesEdgeIsThatEdge) {
    for (const double zoom : {0.15, 0.33, 1.0, 1.3, 4.0}) {
        SCOPED_TRACE(zoom);
        CropSelection selection = On({12001, 9001}, zoom);
        const QPointF end(selection.Scaled().width() - 1, selection.Scaled().height() - 1);
        Drag(selection, {1, 1}, end);
        EXPECT_TRUE(selection.IsWhole());
        // Two canvas pixels away, or a whole picture pixel, it is not.
        CropSelection inner = On({12001, 9001}, zoom);
        const double away = std::max(2.0, zoom);
        Drag(inner, {away, away}, end);
        EXPECT_FALSE(inner.IsWhole());
    }
}

TEST(CropSelection, TheFullSelectionIsTheWholePictureAtEveryZoom) {
    Random random;
    for (int i = 0; i < 1000; ++i) {
        ViewGeometry view = AnyView(random);
        CropSelection selection;
        selection.SetGeometry(view);
        selection.SelectAll();
        EXPECT_TRUE(selection.IsWhole());
        EXPECT_EQ(selection.Frame(), QRectF(QPointF(0, 0), QSizeF(view.Shown())));
        view.SetZoom(random.Real(0.15, 4.0));
        selection.SetGeometry(view);
        EXPECT_TRUE(selection.IsWhole());
        EXPECT_EQ(selection.Frame(), QRectF(QPointF(0, 0), QSizeF(view.Shown())));
    }
}

TEST(CropSelection, ABareClickGivesTheMiddleQuarter) {
    for (const double zoom : {0.5, 1.0, 2.0}) {
        CropSelection selection = On({400, 300}, zoom);
        ASSERT_TRUE(selection.IsDrawingNew());
        ASSERT_TRUE(selection.Press({50, 60}));
        EXPECT_TRUE(selection.Release());
        EXPECT_EQ(selection.Frame(), QRectF(100 * zoom, 75 * zoom, 200 * zoom, 150 * zoom));
        EXPECT_EQ(selection.Cut(), QRect(100, 75, 200, 150));
        EXPECT_FALSE(selection.IsDrawingNew());
    }
}

TEST(CropSelection, DrawingSpansTheSameFrameWhicheverWayItGoes) {
    const QRect expected(40, 30, 120, 90);
    const QPointF first(40, 30), second(160, 120);
    for (const auto& [from, to] : {std::pair{first, second},
                                   {second, first},
                                   {QPointF(40, 120), QPointF(160, 30)},
                                   {QPointF(160, 30), QPointF(40, 120)}}) {
        CropSelection selection = On({400, 300});
        Drag(selection, from, to);
        EXPECT_EQ(selection.Cut(), expected);
    }
}

TEST(CropSelection, DrawingBeginsInsideThePictureAndEndsAtItsEdge) {
    CropSelection selection = On({400, 300});
    EXPECT_FALSE(selection.Press({-1, 20}));
    EXPECT_FALSE(selection.Press({20, 301}));
    Drag(selection, {100, 100}, {900, 180});
    EXPECT_EQ(selection.Cut(), QRect(100, 100, 300, 80));
}

TEST(CropSelection, ATinyDrawingGrowsToTheLeastSide) {
    CropSelection selection = On({400, 300});
    Drag(selection, {100, 100}, {103, 102});
    EXPECT_EQ(selection.Frame(), QRectF(100, 100, 10, 10));
    CropSelection corner = On({400, 300});
    Drag(corner, {397, 297}, {395, 295});
    EXPECT_TRUE(QRectF(0, 0, 400, 300).contains(corner.Frame()));
    EXPECT_GE(corner.Frame().width(), 10);
    EXPECT_GE(corner.Frame().height(), 10);
}

TEST(CropSelection, NothingIsDraggedSmallerThanTenCanvasPixelsWhateverTheZoom) {
    Random random;
    for (int i = 0; i < 3000; ++i) {
        const ViewGeometry view = AnyView(random);
        SCOPED_TRACE(testing::Message() << view.Image().width() << " x " << view.Image().height() << " at "
                                        << view.Zoom() << ", " << i);
        CropSelection selection;
        selection.SetGeometry(view);
        if (i % 3 == 0) selection.SetRatio(random.Real(0.3, 3.0));
        selection.SetSize({random.Int(1, view.Image().width()), random.Int(1, view.Image().height())});
        const auto hit = static_cast<CropHit>(random.Int(0, 7));
        const QPointF grip = Grip(selection, hit);
        const CropHit taken = selection.HitTest(grip);
        ASSERT_NE(taken, CropHit::None);
        if (taken == CropHit::Inside) continue;
        ASSERT_TRUE(selection.Press(grip));
        selection.MoveTo(grip + QPointF(random.Int(-3000, 3000), random.Int(-3000, 3000)));
        selection.Release();
        const QRectF picture(QPointF(0, 0), QSizeF(view.Shown()));
        EXPECT_TRUE(picture.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(selection.Frame()));
        EXPECT_TRUE(QRect(QPoint(0, 0), view.Image()).contains(selection.Cut()));
        if (selection.Ratio() == 0.0) {
            const bool horizontal = taken != CropHit::Top && taken != CropHit::Bottom;
            const bool vertical = taken != CropHit::Left && taken != CropHit::Right;
            if (horizontal) {
                EXPECT_GE(selection.Frame().width() + 1e-6, std::min(10, view.Shown().width()));
            }
            if (vertical) {
                EXPECT_GE(selection.Frame().height() + 1e-6, std::min(10, view.Shown().height()));
            }
        }
        if (testing::Test::HasFailure()) return;
    }
}

TEST(CropSelection, TheOppositeEdgesOfADragStay) {
    struct Case {
        CropHit hit;
        QRect expected;
    };
    // Each is dragged by (20, 10).
    for (const auto& [hit, expected] : {Case{CropHit::TopLeft, {120, 85, 180, 140}},
                                        {CropHit::TopRight, {100, 85, 220, 140}},
                                        {CropHit::BottomLeft, {120, 75, 180, 160}},
                                        {CropHit::BottomRight, {100, 75, 220, 160}},
                                        {CropHit::Top, {100, 85, 200, 140}},
                                        {CropHit::Left, {120, 75, 180, 150}},
                                        {CropHit::Bottom, {100, 75, 200, 160}},
                                        {CropHit::Right, {100, 75, 220, 150}},
                                        {CropHit::Inside, {120, 85, 200, 150}}}) {
        SCOPED_TRACE(static_cast<int>(hit));
        CropSelection selection = On({400, 300});
        selection.SelectDefault();
        selection.MoveBy(0, 0);
        ASSERT_TRUE(selection.IsDrawingNew());
        selection.SetSize({200, 150});
        Drag(selection, Grip(selection, hit), Grip(selection, hit) + QPointF(20, 10));
        EXPECT_EQ(selection.Cut(), expected);
    }
}

TEST(CropSelection, EdgesStopAtThePictureAndWaitForTheMouseToComeBack) {
    CropSelection selection = On({400, 300});
    selection.SetSize({200, 150});
    const QPointF grip = Grip(selection, CropHit::Right);
    ASSERT_TRUE(selection.Press(grip));
    selection.MoveTo(grip + QPointF(500, 0));
    EXPECT_EQ(selection.Cut(), QRect(100, 75, 300, 150));
    selection.MoveTo(grip + QPointF(60, 0));
    EXPECT_EQ(selection.Cut(), QRect(100, 75, 260, 150));
    selection.MoveTo(grip - QPointF(500, 0));
    EXPECT_EQ(selection.Frame(), QRectF(100, 75, 10, 150));
    selection.MoveTo(grip);
    EXPECT_EQ(selection.Cut(), QRect(100, 75, 200, 150));
}

TEST(CropSelection, AMoveKeepsTheSizeAndStaysInsideThePicture) {
    Random random;
    for (int i = 0; i < 2000; ++i) {
        const ViewGeometry view = AnyView(random);
        CropSelection selection;
        selection.SetGeometry(view);
        const QSize size(random.Int(1, view.Image().width()), random.Int(1, view.Image().height()));
        selection.SetSize(size);
        const QPointF grip = selection.Frame().center();
        if (selection.HitTest(grip) != CropHit::Inside) continue;
        ASSERT_TRUE(selection.Press(grip));
        selection.MoveTo(grip + QPointF(random.Int(-4000, 4000), random.Int(-4000, 4000)));
        selection.Release();
        EXPECT_EQ(selection.Cut().size(), size);
        EXPECT_TRUE(QRect(QPoint(0, 0), view.Image()).contains(selection.Cut()));
        EXPECT_NEAR(selection.Cut().x() * view.Zoom(), selection.Frame().x(), Tolerance(view.Zoom()));
        EXPECT_NEAR(selection.Cut().y() * view.Zoom(), selection.Frame().y(), Tolerance(view.Zoom()));
        if (testing::Test::HasFailure()) return;
    }
}

TEST(CropSelection, AMoveReachesBothEnds) {
    CropSelection selection = On({12001, 9001}, 0.15);
    selection.SetSize({1920, 1080});
    Drag(selection, selection.Frame().center(), {9999, 9999});
    EXPECT_EQ(selection.Cut(), QRect(12001 - 1920, 9001 - 1080, 1920, 1080));
    Drag(selection, selection.Frame().center(), {-9999, -9999});
    EXPECT_EQ(selection.Cut(), QRect(0, 0, 1920, 1080));
}

TEST(CropSelection, TypedNumbersAreUsedAsTypedUntilTheyAreSizedByTheMouse) {
    ViewGeometry view = View({12000, 9000}, 0.15);
    CropSelection selection;
    selection.SetGeometry(view);
    selection.SetSize({3, 7});  // far below the least frame
    EXPECT_EQ(selection.Cut().size(), QSize(3, 7));
    // A press that moves nothing changes nothing.
    ASSERT_TRUE(selection.Press(Grip(selection, CropHit::BottomRight)));
    selection.Release();
    EXPECT_EQ(selection.Cut().size(), QSize(3, 7));
    view.SetZoom(2.7);
    selection.SetGeometry(view);
    EXPECT_EQ(selection.Cut().size(), QSize(3, 7));
    selection.SetSize({1921, 1081});
    Drag(selection, selection.Frame().center(), selection.Frame().center() + QPointF(33, -21));
    EXPECT_EQ(selection.Cut().size(), QSize(1921, 1081));
}

TEST(CropSelection, TheFirstTypedSizeIsCentredAndTheNextKeepsItsPlace) {
    CropSelection selection = On({400, 300});
    selection.SetSize({100, 50});
    EXPECT_EQ(selection.Cut(), QRect(150, 125, 100, 50));
    EXPECT_FALSE(selection.IsDrawingNew());
    selection.SetSize({200, 60});
    EXPECT_EQ(selection.Cut(), QRect(150, 125, 200, 60));
    selection.SetSize({300, 280});  // no room to the right and below
    EXPECT_EQ(selection.Cut(), QRect(100, 20, 300, 280));
    selection.SetSize({9999, 0});
    EXPECT_EQ(selection.Cut(), QRect(0, 20, 400, 1));
}

TEST(CropSelection, ALockedProportionHoldsInEveryDrag) {
    Random random;
    for (int i = 0; i < 4000; ++i) {
        const ViewGeometry view = AnyView(random);
        const double ratio = random.Real(0.4, 2.5);
        SCOPED_TRACE(testing::Message() << view.Image().width() << " x " << view.Image().height() << " at "
                                        << view.Zoom() << ", ratio " << ratio << ", " << i);
        CropSelection selection;
        selection.SetGeometry(view);
        selection.SetRatio(ratio);
        const QSize fit = FitRatio(view.Image(), ratio);
        selection.SetSize({std::max(1, fit.width() / 2), HeightFor(std::max(1, fit.width() / 2), ratio)});
        const auto hit = static_cast<CropHit>(random.Int(0, 7));
        const QPointF grip = Grip(selection, hit);
        if (selection.HitTest(grip) != hit) continue;
        const QRectF before = selection.Frame();
        ASSERT_TRUE(selection.Press(grip));
        selection.MoveTo(grip + QPointF(random.Int(-2000, 2000), random.Int(-2000, 2000)));
        selection.Release();
        const QRect cut = selection.Cut();
        EXPECT_TRUE(cut.height() == HeightFor(cut.width(), ratio) || cut.width() == WidthFor(cut.height(), ratio))
            << cut.width() << " x " << cut.height();
        EXPECT_TRUE(QRect(QPoint(0, 0), view.Image()).contains(cut));
        EXPECT_NEAR(selection.Frame().height(), ratio * selection.Frame().width(), 1e-6);
        const QRectF picture(QPointF(0, 0), QSizeF(view.Shown()));
        EXPECT_TRUE(picture.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(selection.Frame()));
        // The corner that the hand does not hold stays.
        const bool left = hit == CropHit::TopLeft || hit == CropHit::BottomLeft || hit == CropHit::Left;
        const bool top = hit == CropHit::TopLeft || hit == CropHit::TopRight || hit == CropHit::Top;
        EXPECT_NEAR(left ? selection.Frame().right() : selection.Frame().left(), left ? before.right() : before.left(),
                    1e-6);
        EXPECT_NEAR(top ? selection.Frame().bottom() : selection.Frame().top(), top ? before.bottom() : before.top(),
                    1e-6);
        if (testing::Test::HasFailure()) return;
    }
}

TEST(CropSelection, HitAreasAreAskedInTheirOrderAndAreHalfOpen) {
    CropSelection selection = On({400, 300});
    selection.SetSize({200, 150});  // frame 100, 75, 200 x 150
    struct Case {
        QPointF at;
        CropHit hit;
    };
    for (const auto& [at, hit] : {Case{{95, 70}, CropHit::TopLeft},
                                  {{104.9, 79.9}, CropHit::TopLeft},
                                  {{105, 75}, CropHit::Top},
                                  {{94.9, 75}, CropHit::None},
                                  {{300, 75}, CropHit::TopRight},
                                  {{305, 75}, CropHit::None},
                                  {{100, 225}, CropHit::BottomLeft},
                                  {{304, 229}, CropHit::BottomRight},
                                  {{200, 70}, CropHit::Top},
                                  {{200, 69.9}, CropHit::None},
                                  {{200, 80}, CropHit::Inside},
                                  {{95, 150}, CropHit::Left},
                                  {{200, 220}, CropHit::Bottom},
                                  {{200, 230}, CropHit::None},
                                  {{304.9, 150}, CropHit::Right},
                                  {{200, 150}, CropHit::Inside}})
        EXPECT_EQ(selection.HitTest(at), hit) << at.x() << ", " << at.y();
    selection.StartDrawing();
    EXPECT_EQ(selection.HitTest({200, 150}), CropHit::None);
}

TEST(CropSelection, KeysMoveAndSizeByOnePicturePixelAtEveryZoom) {
    for (const double zoom : {0.15, 0.37, 1.0, 4.0}) {
        SCOPED_TRACE(zoom);
        CropSelection selection = On({12000, 9000}, zoom);
        EXPECT_FALSE(selection.MoveBy(1, 0));
        EXPECT_FALSE(selection.GrowBy(1, 0));
        selection.SetSize({500, 400});
        const QRect start = selection.Cut();
        EXPECT_TRUE(selection.MoveBy(1, 0));
        EXPECT_TRUE(selection.MoveBy(0, -1));
        EXPECT_EQ(selection.Cut(), start.translated(1, -1));
        EXPECT_TRUE(selection.GrowBy(1, 0));
        EXPECT_TRUE(selection.GrowBy(0, -1));
        EXPECT_EQ(selection.Cut(), QRect(start.topLeft() + QPoint(1, -1), QSize(501, 399)));
        ExpectCutAsFramed(selection, zoom);
        // From the very edge one pixel inward, though that is less than a canvas pixel.
        selection.MoveBy(-99999, -99999);
        EXPECT_EQ(selection.Cut().topLeft(), QPoint(0, 0));
        EXPECT_FALSE(selection.MoveBy(-1, 0));
        EXPECT_TRUE(selection.MoveBy(1, 1));
        EXPECT_EQ(selection.Cut().topLeft(), QPoint(1, 1));
    }
}

TEST(CropSelection, KeysKeepALockedProportion) {
    CropSelection selection = On({400, 300});
    selection.SetRatio(1.5);
    selection.SetSize({100, 150});
    EXPECT_TRUE(selection.GrowBy(2, 0));
    EXPECT_EQ(selection.Cut().size(), QSize(102, 153));
    EXPECT_TRUE(selection.GrowBy(0, 3));
    EXPECT_EQ(selection.Cut().size(), QSize(104, 156));
    selection.SetSize({200, 300});
    EXPECT_FALSE(selection.GrowBy(1, 0));  // no room below
}

TEST(CropSelection, KeysStopAtOnePixelAndAtThePicture) {
    CropSelection selection = On({20, 10});
    selection.SetSize({1, 1});
    EXPECT_FALSE(selection.GrowBy(-1, 0));
    EXPECT_FALSE(selection.GrowBy(0, -1));
    selection.SelectAll();
    EXPECT_FALSE(selection.GrowBy(1, 0));
    EXPECT_FALSE(selection.MoveBy(1, 1));
}

TEST(CropSelection, ADragIsTakenBack) {
    CropSelection selection = On({400, 300});
    EXPECT_FALSE(selection.CancelDrag());
    ASSERT_TRUE(selection.Press({10, 10}));
    selection.MoveTo({200, 200});
    EXPECT_TRUE(selection.CancelDrag());
    EXPECT_TRUE(selection.IsEmpty());
    EXPECT_TRUE(selection.IsDrawingNew());
    selection.SetSize({200, 150});
    ASSERT_TRUE(selection.Press(Grip(selection, CropHit::Left)));
    selection.MoveTo({20, 100});
    EXPECT_TRUE(selection.CancelDrag());
    EXPECT_EQ(selection.Cut(), QRect(100, 75, 200, 150));
    EXPECT_FALSE(selection.MoveTo({50, 50}));
}

TEST(CropSelection, ThePicturesThatAreSmallerThanTheLeastFrame) {
    for (const QSize image : {QSize(1, 1), QSize(3, 5), QSize(9, 40), QSize(40, 2)}) {
        CropSelection selection = On(image);
        Drag(selection, {0, 0}, {1, 1});
        EXPECT_TRUE(QRect(QPoint(0, 0), image).contains(selection.Cut()));
        EXPECT_GE(selection.Frame().width(), std::min(10, image.width()));
        EXPECT_GE(selection.Frame().height(), std::min(10, image.height()));
    }
}

TEST(CropSelection, AnotherPictureSizeSelectsTheWholeUnlessNothingWasSelected) {
    CropSelection selection = On({400, 300});
    selection.SetGeometry(View({200, 500}, 1.0));
    EXPECT_TRUE(selection.IsEmpty());
    EXPECT_TRUE(selection.IsDrawingNew());
    selection.SetSize({50, 50});
    selection.SetGeometry(View({300, 300}, 1.0));
    EXPECT_EQ(selection.Cut(), QRect(0, 0, 300, 300));
}

TEST(CropSelection, NothingHappensWithoutAPicture) {
    CropSelection selection;
    selection.SelectAll();
    selection.SelectDefault();
    selection.SetSize({10, 10});
    EXPECT_TRUE(selection.IsEmpty());
    EXPECT_FALSE(selection.Press({0, 0}));
    EXPECT_FALSE(selection.MoveTo({5, 5}));
    EXPECT_FALSE(selection.Release());
}
