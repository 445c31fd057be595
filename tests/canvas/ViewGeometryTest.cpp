// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <random>

#include "Truncate.h"

void PrintTo(const QSize& s, std::ostream* out) {
    *out << s.width() << "x" << s.height();
}
void PrintTo(const QPoint& p, std::ostream* out) {
    *out << p.x() << "," << p.y();
}
void PrintTo(const QRect& r, std::ostream* out) {
    *out << r.x() << "," << r.y() << " " << r.width() << "x" << r.height();
}
void PrintTo(const QRectF& r, std::ostream* out) {
    *out << r.x() << "," << r.y() << " " << r.width() << "x" << r.height();
}

namespace {

ViewGeometry Fitted(QSize image, QSize client, ViewGeometry::ZoomFloor floor = ViewGeometry::ZoomFloor::Minimum) {
    ViewGeometry geometry(floor);
    geometry.SetClient(client);
    geometry.SetImage(image);
    geometry.Fit();
    return geometry;
}

struct FitCase {
    QSize image, client;
    double zoom;
    QRect screen;
};

class FitTable : public testing::TestWithParam<FitCase> {};

TEST_P(FitTable, GivesZoomAndPlace) {
    const FitCase& c = GetParam();
    const ViewGeometry geometry = Fitted(c.image, c.client);
    EXPECT_DOUBLE_EQ(geometry.Zoom(), c.zoom);
    EXPECT_DOUBLE_EQ(geometry.FitZoom(), c.zoom);
    EXPECT_EQ(geometry.ScreenRect(), c.screen);
    EXPECT_EQ(geometry.ImageRect(), QRectF(QPointF(0, 0), QSizeF(c.image)));
    EXPECT_FALSE(geometry.CanDrag());
    EXPECT_EQ(geometry.Pan(), QPoint(0, 0));
    EXPECT_TRUE(geometry.AtFit());
}

INSTANTIATE_TEST_SUITE_P(Pictures, FitTable,
                         testing::Values(
                             // Smaller than the client: 100 %, centred, halves cut off.
                             FitCase{{301, 200}, {1024, 730}, 1.0, {361, 265, 301, 200}},
                             // As large as the client in one direction: still 100 %.
                             FitCase{{1024, 200}, {1024, 730}, 1.0, {0, 265, 1024, 200}},
                             FitCase{{1024, 730}, {1024, 730}, 1.0, {0, 0, 1024, 730}},
                             // One pixel more: the margin of 0.2 appears.
                             FitCase{{1000, 500}, {500, 500}, 1.0 / 2.2, {23, 136, 454, 227}},
                             FitCase{{500, 1000}, {500, 500}, 1.0 / 2.2, {136, 23, 227, 454}},
                             FitCase{{6000, 4000}, {1000, 1000}, 1.0 / 6.2, {16, 177, 967, 645}},
                             // Sides are never below one pixel.
                             FitCase{{1, 1}, {500, 500}, 1.0, {249, 249, 1, 1}},
                             FitCase{{100000, 1}, {500, 500}, 1.0 / 200.2, {0, 249, 499, 1}}));

struct ZoomCase {
    QSize image, client;
    double zoom;
    QRectF source;
    QRect screen;
};

class RectsTable : public testing::TestWithParam<ZoomCase> {};

TEST_P(RectsTable, GivesSourceAndDestination) {
    const ZoomCase& c = GetParam();
    ViewGeometry geometry = Fitted(c.image, c.client);
    geometry.SetZoom(c.zoom);
    EXPECT_EQ(geometry.ScreenRect(), c.screen);
    EXPECT_NEAR(geometry.ImageRect().x(), c.source.x(), 1e-9);
    EXPECT_NEAR(geometry.ImageRect().y(), c.source.y(), 1e-9);
    EXPECT_NEAR(geometry.ImageRect().width(), c.source.width(), 1e-9);
    EXPECT_NEAR(geometry.ImageRect().height(), c.source.height(), 1e-9);
}

INSTANTIATE_TEST_SUITE_P(
    Clipped, RectsTable,
    testing::Values(
        // x alone: y whole and centred.
        ZoomCase{{1000, 100}, {400, 300}, 1.0, {300, 0, 400, 100}, {0, 100, 400, 100}},
        ZoomCase{{1000, 100}, {400, 301}, 1.0, {300, 0, 400, 100}, {0, 100, 400, 100}},
        // y alone: the mirror.
        ZoomCase{{100, 1000}, {300, 400}, 1.0, {0, 300, 100, 400}, {100, 0, 100, 400}},
        // Both; the odd half pixel is cut off, so that 100 % stays pixel on pixel.
        ZoomCase{{1001, 1001}, {400, 300}, 1.0, {300, 350, 400, 300}, {0, 0, 400, 300}},
        // Twice the size: half a picture pixel is a whole screen pixel.
        ZoomCase{{301, 301}, {400, 300}, 2.0, {50.5, 75.5, 200, 150}, {0, 0, 400, 300}},
        // Exactly the client's width while the height is clipped: x counts as clipped and shows the whole width.
        ZoomCase{{400, 1000}, {400, 300}, 1.0, {0, 350, 400, 300}, {0, 0, 400, 300}}));

TEST(ViewGeometry, HasNoRectanglesWithoutPictureOrClient) {
    ViewGeometry geometry;
    EXPECT_FALSE(geometry.HasPicture());
    geometry.SetImage({100, 100});
    EXPECT_TRUE(geometry.ImageRect().isEmpty());
    geometry.SetImage({0, 100});
    geometry.SetClient({100, 100});
    EXPECT_FALSE(geometry.HasPicture());
    EXPECT_TRUE(geometry.ScreenRect().isEmpty());
    geometry.ZoomIn();
    geometry.ZoomOut();
    geometry.Wheel(true, {5, 5});
    geometry.PanBy(3, 3);
    EXPECT_EQ(geometry.Zoom(), 1.0);
    EXPECT_EQ(geometry.ToImage({3, 4}), QPointF(3, 4));
}

TEST(ViewGeometry, IgnoresAClientWithoutArea) {
    ViewGeometry geometry = Fitted({1000, 500}, {500, 500});
    const ViewGeometry before = geometry;
    geometry.SetClient({0, 500});
    geometry.SetClient({500, -1});
    EXPECT_EQ(geometry, before);
}

TEST(ViewGeometry, FitOfAPictureSmallerThanTheClientIsActualSize) {
    ViewGeometry geometry = Fitted({300, 200}, {1024, 730});
    const ViewGeometry fit = geometry;
    geometry.ZoomIn();
    EXPECT_NE(geometry, fit);
    geometry.ZoomActualSize();
    EXPECT_EQ(geometry, fit);
}

TEST(ViewGeometry, ZoomInAddsTenthsUpToFourHundredPercent) {
    ViewGeometry geometry = Fitted({300, 200}, {1024, 730});
    for (int percent = 110; percent <= 400; percent += 10) {
        geometry.ZoomIn();
        EXPECT_EQ(geometry.ZoomPercent(), percent);
    }
    geometry.ZoomIn();
    EXPECT_EQ(geometry.Zoom(), 4.0);
}

TEST(ViewGeometry, RepeatedZoomOutStopsAtTwentyPercent) {
    ViewGeometry geometry = Fitted({300, 200}, {1024, 730});
    for (int i = 0; i < 12; ++i) geometry.ZoomOut();
    EXPECT_EQ(geometry.Zoom(), 0.2);
}

TEST(ViewGeometry, RepeatedZoomOutReturnsToAFitBelowTwentyPercent) {
    ViewGeometry geometry = Fitted({6000, 4000}, {1000, 1000});
    geometry.ZoomActualSize();
    for (int i = 0; i < 12; ++i) {
        geometry.ZoomOut();
        EXPECT_GE(geometry.Zoom(), geometry.FitZoom());
    }
    EXPECT_TRUE(geometry.AtFit());
    EXPECT_EQ(geometry.ZoomPercent(), 16);
}

TEST(ViewGeometry, ZoomFloorsDifferWhereTwentyPercentJustLiesInside) {
    // 4900 : 1000, so 20 % shows 980 of 1000 client pixels while the fit zoom is 1 / 5.1.
    ViewGeometry minimum = Fitted({4900, 100}, {1000, 1000});
    ViewGeometry fit = Fitted({4900, 100}, {1000, 1000}, ViewGeometry::ZoomFloor::FitBelowMinimum);
    for (ViewGeometry* geometry : {&minimum, &fit}) {
        geometry->ZoomActualSize();
        for (int i = 0; i < 12; ++i) geometry->ZoomOut();
    }
    EXPECT_EQ(minimum.Zoom(), 0.2);
    EXPECT_DOUBLE_EQ(fit.Zoom(), 1 / 5.1);
}

TEST(ViewGeometry, ZoomFloorsAgreeWhereTheFitIsNotBelowTwentyPercent) {
    for (const auto floor : {ViewGeometry::ZoomFloor::Minimum, ViewGeometry::ZoomFloor::FitBelowMinimum}) {
        ViewGeometry geometry = Fitted({2000, 1000}, {1000, 1000}, floor);
        for (int i = 0; i < 12; ++i) geometry.ZoomOut();
        EXPECT_EQ(geometry.Zoom(), 0.2);
    }
}

TEST(ViewGeometry, EightStepsUpFromTwentyPercentAreExactlyActualSize) {
    ViewGeometry geometry = Fitted({1000, 1000}, {500, 500});
    geometry.ZoomToPercent(20);
    for (int i = 0; i < 8; ++i) geometry.ZoomIn();
    EXPECT_EQ(geometry.Zoom(), 1.0);
    EXPECT_EQ(geometry.Shown(), QSize(1000, 1000));
}

TEST(ViewGeometry, ShowsEveryPercentThatWasAskedFor) {
    ViewGeometry geometry = Fitted({1000, 1000}, {500, 500});
    for (int percent = 20; percent <= 400; ++percent) {
        geometry.ZoomToPercent(percent);
        EXPECT_EQ(geometry.ZoomPercent(), percent);
        EXPECT_DOUBLE_EQ(geometry.Zoom(), percent * 0.01);
    }
}

TEST(ViewGeometry, LimitsAnExplicitZoom) {
    ViewGeometry geometry = Fitted({1000, 1000}, {500, 500});
    geometry.ZoomToPercent(900);
    EXPECT_EQ(geometry.Zoom(), 4.0);
    geometry.ZoomToPercent(1);
    EXPECT_EQ(geometry.Zoom(), 0.2);
    ViewGeometry large = Fitted({10000, 1000}, {500, 500});
    large.SetZoom(0.0);
    EXPECT_TRUE(large.AtFit());
}

TEST(ViewGeometryWheel, TurnsByTenthsWithinTheLimits) {
    ViewGeometry geometry = Fitted({300, 200}, {1024, 730});
    geometry.Wheel(true, {500, 300});
    EXPECT_EQ(geometry.ZoomPercent(), 110);
    for (int i = 0; i < 50; ++i) geometry.Wheel(true, {500, 300});
    EXPECT_EQ(geometry.Zoom(), 4.0);
    for (int i = 0; i < 50; ++i) geometry.Wheel(false, {500, 300});
    EXPECT_EQ(geometry.Zoom(), 0.2);
}

TEST(ViewGeometryWheel, DoesNothingOutsideTheClient) {
    ViewGeometry geometry = Fitted({300, 200}, {1024, 730});
    const ViewGeometry before = geometry;
    for (const QPointF at : {QPointF(-1, 5), QPointF(5, -1), QPointF(1024, 5), QPointF(5, 730)}) {
        geometry.Wheel(true, at);
        EXPECT_EQ(geometry, before);
    }
    geometry.Wheel(true, {1023, 729});
    EXPECT_NE(geometry, before);
}

TEST(ViewGeometryWheel, AtAFitBelowTwentyPercentTurningTowardsTheUserDoesNothing) {
    ViewGeometry geometry = Fitted({6000, 4000}, {1000, 1000});
    const ViewGeometry before = geometry;
    geometry.Wheel(false, {500, 500});
    EXPECT_EQ(geometry, before);
    // The same zoom up to the comparison's tolerance.
    geometry.Restore(before.Zoom() + 5e-7, {});
    const double zoom = geometry.Zoom();
    geometry.Wheel(false, {500, 500});
    EXPECT_EQ(geometry.Zoom(), zoom);
}

TEST(ViewGeometryWheel, FallsFromTwentyPercentToALowerFit) {
    ViewGeometry geometry = Fitted({6000, 4000}, {1000, 1000});
    for (const double zoom : {0.2, 0.2 + 5e-7}) {
        geometry.SetZoom(zoom);
        geometry.Wheel(false, {500, 500});
        EXPECT_EQ(geometry.Zoom(), geometry.FitZoom());
        EXPECT_FALSE(geometry.CanDrag());
    }
    // Just beyond the tolerance the step is limited to 20 % first.
    geometry.SetZoom(0.2 + 5e-6);
    geometry.Wheel(false, {500, 500});
    EXPECT_EQ(geometry.Zoom(), 0.2);
}

TEST(ViewGeometryWheel, LeavesALowFitByOneTenth) {
    ViewGeometry geometry = Fitted({6000, 4000}, {1000, 1000});
    geometry.Wheel(true, {500, 500});
    EXPECT_NEAR(geometry.Zoom(), 1.0 / 6.2 + 0.1, 1e-9);
}

TEST(ViewGeometryWheel, KeepsThePointUnderTheCursor) {
    ViewGeometry geometry = Fitted({6000, 4000}, {1000, 800});
    geometry.ZoomActualSize();
    const QPointF at(700, 200);
    for (int i = 0; i < 10; ++i) {
        const QPointF before = geometry.ToImage(at);
        geometry.Wheel(true, at);
        // The pan is whole screen pixels: one of them at the new zoom is the most that the point may move.
        const QPointF moved = geometry.ToClient(before) - at;
        EXPECT_LE(std::abs(moved.x()), 1.0) << geometry.Zoom();
        EXPECT_LE(std::abs(moved.y()), 1.0) << geometry.Zoom();
    }
}

TEST(ViewGeometry, ACentredViewStaysCentredThroughEveryZoom) {
    ViewGeometry geometry = Fitted({1001, 777}, {400, 300});
    for (const int percent : {100, 37, 400, 123, 20, 250}) {
        geometry.ZoomToPercent(percent);
        geometry.ZoomIn();
        geometry.ZoomOut();
        EXPECT_EQ(geometry.Pan(), QPoint(0, 0));
    }
}

TEST(ViewGeometry, StepsKeepTheMiddleOfTheView) {
    ViewGeometry geometry = Fitted({6000, 4000}, {1000, 800});
    geometry.ZoomActualSize();
    geometry.PanBy(400, -300);
    const QPointF middle(500, 400);
    const QPointF before = geometry.ToImage(middle);
    geometry.ZoomIn();
    const QPointF moved = geometry.ToClient(before) - middle;
    // The pan and the centring are cut to whole screen pixels, each by less than one.
    EXPECT_LE(std::abs(moved.x()), 2.0);
    EXPECT_LE(std::abs(moved.y()), 2.0);
}

TEST(ViewGeometry, PanStopsAtThePicturesEdges) {
    ViewGeometry geometry = Fitted({1000, 800}, {400, 300});
    geometry.ZoomActualSize();
    geometry.PanBy(10000, 10000);
    EXPECT_EQ(geometry.ViewOffset(), QPoint(0, 0));
    EXPECT_EQ(geometry.ImageRect(), QRectF(0, 0, 400, 300));
    EXPECT_EQ(geometry.Pan(), QPoint(300, 250));
    geometry.PanBy(-10000, -10000);
    EXPECT_EQ(geometry.ViewOffset(), QPoint(-600, -500));
    EXPECT_EQ(geometry.ImageRect(), QRectF(600, 500, 400, 300));
    geometry.PanBy(7, 0);
    EXPECT_EQ(geometry.ImageRect(), QRectF(593, 500, 400, 300));
}

TEST(ViewGeometry, PanMovesOnlyTheClippedAxis) {
    ViewGeometry geometry = Fitted({1000, 100}, {400, 300});
    geometry.ZoomActualSize();
    geometry.PanBy(-50, 40);
    EXPECT_EQ(geometry.Pan(), QPoint(-50, 0));
    EXPECT_EQ(geometry.ScreenRect(), QRect(0, 100, 400, 100));
}

TEST(ViewGeometry, AnUnclippedPictureCannotBePanned) {
    ViewGeometry geometry = Fitted({100, 100}, {400, 300});
    const ViewGeometry before = geometry;
    geometry.PanBy(30, 30);
    EXPECT_EQ(geometry, before);
}

TEST(ViewGeometry, PansToThePartThatTheNavigatorFrames) {
    ViewGeometry geometry = Fitted({1000, 800}, {400, 300});
    geometry.ZoomToPercent(200);
    geometry.PanToImage({120, 60});
    EXPECT_EQ(geometry.ImageRect(), QRectF(120, 60, 200, 150));
    geometry.PanToImage({-5, 9000});
    EXPECT_EQ(geometry.ImageRect().topLeft(), QPointF(0, 650));
}

TEST(ViewGeometry, ANewClientFitsOnlyAViewAtFit) {
    ViewGeometry geometry = Fitted({1000, 1000}, {500, 500});
    geometry.SetClient({250, 250});
    EXPECT_DOUBLE_EQ(geometry.Zoom(), 1 / 4.2);
    geometry.ZoomActualSize();
    geometry.SetClient({500, 500});
    EXPECT_EQ(geometry.Zoom(), 1.0);
    EXPECT_DOUBLE_EQ(geometry.FitZoom(), 1 / 2.2);
}

TEST(ViewGeometry, RestoreTakesUpAnotherToolsView) {
    ViewGeometry old = Fitted({6000, 4000}, {1000, 800});
    old.ZoomToPercent(70);
    old.PanBy(321, -123);
    ViewGeometry fresh;
    fresh.SetClient({1000, 800});
    fresh.SetImage({6000, 4000});
    fresh.Restore(old.Zoom(), old.Pan());
    EXPECT_EQ(fresh, old);
}

TEST(ViewGeometry, RestoreBeforeTheClientIsKnownIsKept) {
    ViewGeometry geometry;
    geometry.SetImage({6000, 4000});
    geometry.Restore(0.165, {0, 0});
    geometry.SetClient({1000, 800});
    EXPECT_EQ(geometry.Zoom(), 0.165);
}

// What must hold after any sequence of acts.
void ExpectWhole(const ViewGeometry& g) {
    const QRectF source = g.ImageRect();
    const QRect screen = g.ScreenRect();
    const double slack = 1e-6;
    EXPECT_GE(source.x(), -slack);
    EXPECT_GE(source.y(), -slack);
    EXPECT_LE(source.right(), g.Image().width() + slack);
    EXPECT_LE(source.bottom(), g.Image().height() + slack);
    EXPECT_TRUE(QRect(QPoint(0, 0), g.Client()).contains(screen));
    EXPECT_EQ(g.Shown().width(), TruncateSide(g.Image().width() * g.Zoom()));
    // No client pixel outside the picture on a clipped axis.
    if (g.Shown().width() > g.Client().width()) {
        EXPECT_EQ(screen.width(), g.Client().width());
    }
    if (g.Shown().height() > g.Client().height()) {
        EXPECT_EQ(screen.height(), g.Client().height());
    }
    EXPECT_GE(g.Zoom(), std::min(0.2, g.FitZoom()) - slack);
    EXPECT_LE(g.Zoom(), 4.0);
    for (const QPointF at : {QPointF(0, 0), QPointF(17.25, 93.5), QPointF(g.Client().width(), g.Client().height())}) {
        const QPointF back = g.ToClient(g.ToImage(at));
        EXPECT_LE(std::abs(back.x() - at.x()), 1e-6);
        EXPECT_LE(std::abs(back.y() - at.y()), 1e-6);
    }
    ViewGeometry again = g;
    again.UpdateViewRects();
    EXPECT_EQ(again, g);
}

TEST(ViewGeometry, StaysWholeThroughRandomActs) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
        const auto floor = seed % 2 ? ViewGeometry::ZoomFloor::Minimum : ViewGeometry::ZoomFloor::FitBelowMinimum;
        ViewGeometry g = Fitted({1 + below(8000), 1 + below(8000)}, {1 + below(2000), 1 + below(1500)}, floor);
        for (int i = 0; i < 300 && !testing::Test::HasFailure(); ++i) {
            const QPointF at(below(2200) - 100, below(1700) - 100);
            switch (below(10)) {
                case 0:
                    g.ZoomIn();
                    break;
                case 1:
                    g.ZoomOut();
                    break;
                case 2:
                    g.ZoomToPercent(below(500));
                    break;
                case 3:
                    g.Wheel(true, at);
                    break;
                case 4:
                    g.Wheel(false, at);
                    break;
                case 5:
                    g.PanBy(below(800) - 400, below(800) - 400);
                    break;
                case 6:
                    g.PanToImage(at);
                    break;
                case 7:
                    g.SetClient({1 + below(2000), 1 + below(1500)});
                    break;
                case 8:
                    g.SetZoomAt(0.05 + below(500) * 0.01, at);
                    break;
                default:
                    g.Fit();
                    break;
            }
            ExpectWhole(g);
        }
        ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
    }
}

TEST(ViewGeometry, ZoomOutThenInReturnsWhereTheLimitsDoNotBite) {
    ViewGeometry geometry = Fitted({3000, 2000}, {500, 500});
    for (int percent = 30; percent <= 400; percent += 10) {
        geometry.ZoomToPercent(percent);
        const double zoom = geometry.Zoom();
        geometry.ZoomOut();
        if (geometry.Zoom() <= 0.2) continue;
        geometry.ZoomIn();
        EXPECT_NEAR(geometry.Zoom(), zoom, 1e-9);
    }
}

TEST(ViewGeometry, MapsRectanglesLikeTheirCorners) {
    ViewGeometry geometry = Fitted({1000, 800}, {400, 300});
    geometry.ZoomToPercent(200);
    const QRectF mapped = geometry.ToClient(geometry.ImageRect());
    EXPECT_NEAR(mapped.x(), 0, 1e-9);
    EXPECT_NEAR(mapped.width(), 400, 1e-9);
    EXPECT_NEAR(mapped.height(), 300, 1e-9);
}

}  // namespace
