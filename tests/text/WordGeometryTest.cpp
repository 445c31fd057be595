// SPDX-License-Identifier: GPL-3.0-or-later
#include "WordGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <QtCore/QLineF>
#include <random>

namespace {

double DistanceToBorder(const QPolygonF& polygon, QPointF at) {
    double nearest = 1e9;
    for (int i = 0; i < 4; ++i) {
        const QPointF a = polygon[i], b = polygon[(i + 1) % 4], along = b - a;
        const double length = QPointF::dotProduct(along, along);
        const double t = length > 0 ? std::clamp(QPointF::dotProduct(at - a, along) / length, 0.0, 1.0) : 0.0;
        nearest = std::min(nearest, QLineF(at, a + along * t).length());
    }
    return nearest;
}

}  // namespace

TEST(Bearing, IsZeroUpwardAndGrowsClockwise) {
    const QPoint centre(100, 100);
    struct Row {
        QPoint by;
        int bearing;
    };
    // Straight above is taken for the upper left; every quarter begins at its own start.
    const Row rows[] = {{{0, 0}, 180},   {{0, -50}, 360},  {{50, 0}, 90},     {{0, 50}, 180},    {{-50, 0}, 270},
                        {{50, -50}, 45}, {{50, 50}, 135},  {{-50, 50}, 224},  {{-50, -50}, 314}, {{10, -100}, 5},
                        {{100, 10}, 95}, {{1, 1000}, 179}, {{-1, 1000}, 180}, {{-1000, -1}, 270}};
    for (const Row& row : rows)
        EXPECT_EQ(BearingOf(centre, centre + row.by), row.bearing) << row.by.x() << ", " << row.by.y();
}

TEST(Bearing, FollowsTheTrueDirectionWithinADegree) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> any(-2000, 2000);
    for (int i = 0; i < 5000; ++i) {
        const QPoint by(any(random), any(random));
        if (by.isNull()) continue;
        double exact = std::atan2(by.x(), -by.y()) * 180 / M_PI;
        if (exact < 0) exact += 360;
        double off = std::abs(BearingOf({0, 0}, by) - exact);
        off = std::min(off, std::abs(off - 360));
        EXPECT_LE(off, 1.05) << by.x() << ", " << by.y();
    }
}

TEST(TurnedHit, AnUprightRectangleHasItsEdgesInside) {
    const QRect rect(10, 20, 30, 40);
    for (const QPoint at : {QPoint(10, 20), QPoint(40, 20), QPoint(10, 60), QPoint(40, 60), QPoint(25, 40)})
        EXPECT_TRUE(IsInTurned(rect, 0, rect.center(), at));
    for (const QPoint at : {QPoint(9, 20), QPoint(41, 20), QPoint(10, 19), QPoint(40, 61)})
        EXPECT_FALSE(IsInTurned(rect, 0, rect.center(), at));
}

TEST(TurnedHit, ARectangleWithoutHeightHoldsNothing) {
    EXPECT_FALSE(IsInTurned(QRect(10, 20, 30, 0), 0, {25, 20}, {25, 20}));
    EXPECT_FALSE(IsInTurned(QRect(10, 20, 30, -5), 45, {25, 20}, {25, 20}));
}

TEST(TurnedHit, AnglesBeyondATurnCountAsTheirRemainder) {
    const QRect rect(0, 0, 200, 20);
    const QPointF centre(100, 10);
    for (int angle = -720; angle <= 720; angle += 15)
        for (const QPoint at : {QPoint(100, 80), QPoint(180, 10), QPoint(160, 70), QPoint(100, 10)})
            EXPECT_EQ(IsInTurned(rect, angle, centre, at), IsInTurned(rect, angle + 720, centre, at)) << angle;
}

TEST(TurnedHit, AgreesWithTheExactOutlineOfRandomBoxesAndAngles) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> place(-300, 300), side(1, 400), turn(-720, 720), far(-450, 450);
    int inside = 0, outside = 0;
    for (int i = 0; i < 20000; ++i) {
        const WordBox box{QRect(place(random), place(random), side(random), side(random)), turn(random)};
        const QPoint at = box.Centre() + QPoint(far(random), far(random)) / (i % 3 + 1);
        const QPolygonF corners = box.Corners();
        if (DistanceToBorder(corners, at) < 1.5) continue;  // both round there
        const bool exact = corners.containsPoint(at, Qt::OddEvenFill);
        EXPECT_EQ(IsInTurned(box.rect, box.angle, box.Centre(), at), exact);
        ++(exact ? inside : outside);
    }
    EXPECT_GT(inside, 1000);
    EXPECT_GT(outside, 1000);
}

TEST(WordButtons, LieAtTheCornersOfALargeBox) {
    const WordBox box{QRect(200, 150, 300, 100), 0};
    const WordButtons buttons = WordButtons::Of(box, QRect(0, 0, 1000, 700), 1.0);
    const auto rect = [&](QPointF centre) { return QRectF(centre - QPointF(16, 16), QSizeF(32, 32)); };
    EXPECT_EQ(rect(buttons.deleteCentre), QRectF(180, 130, 32, 32));
    EXPECT_EQ(rect(buttons.rotateCentre), QRectF(480, 230, 32, 32));
    EXPECT_TRUE(buttons.rotateAtCorner);
    for (const QPoint at : {QPoint(180, 130), QPoint(212, 162), QPoint(196, 146)})
        EXPECT_EQ(buttons.HitTest(at), WordHit::DeleteButton);
    for (const QPoint at : {QPoint(480, 230), QPoint(512, 262)}) EXPECT_EQ(buttons.HitTest(at), WordHit::RotateButton);
    for (const QPoint at : {QPoint(179, 146), QPoint(213, 146), QPoint(350, 200)})
        EXPECT_EQ(buttons.HitTest(at), WordHit::Nothing);
}

TEST(WordButtons, TurnWithTheBox) {
    const WordBox flat{QRect(300, 300, 200, 80), 0}, turned{QRect(300, 300, 200, 80), 90};
    const QRect view(0, 0, 1000, 700);
    const QPointF centre = flat.Centre();
    const auto from = [&](QPointF at) { return at - centre; };
    const QPointF before = from(WordButtons::Of(flat, view, 1.0).rotateCentre);
    const QPointF after = from(WordButtons::Of(turned, view, 1.0).rotateCentre);
    EXPECT_NEAR(after.x(), -before.y(), 1e-9);
    EXPECT_NEAR(after.y(), before.x(), 1e-9);
}

TEST(WordButtons, GrowWithTheScreensScale) {
    const WordBox box{QRect(400, 300, 300, 200), 0};
    const WordButtons buttons = WordButtons::Of(box, QRect(0, 0, 2000, 1400), 2.0);
    EXPECT_EQ(buttons.side, 64);
    EXPECT_EQ(buttons.deleteCentre, QPointF(400 - 40 + 32, 300 - 40 + 32));
}

TEST(WordButtons, LeaveTheMiddleHalfOfASmallTextFree) {
    for (const QSize size : {QSize(20, 12), QSize(60, 16), QSize(12, 80), QSize(4, 4)}) {
        const WordBox box{QRect(QPoint(300, 300), size), 0};
        const WordButtons buttons = WordButtons::Of(box, QRect(0, 0, 1000, 700), 1.0);
        EXPECT_EQ(buttons.HitTest(box.Centre()), WordHit::Nothing);
    }
}

TEST(WordButtons, StayInViewWhereverTheBoxIs) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> place(-3000, 3000), side(1, 5000), turn(0, 359);
    const QRect view(0, 0, 1000, 700);
    for (int i = 0; i < 5000; ++i) {
        const WordBox box{QRect(place(random), place(random), side(random), side(random)), turn(random)};
        const WordButtons buttons = WordButtons::Of(box, view, 1.0);
        for (const QPointF centre : {buttons.deleteCentre, buttons.rotateCentre})
            EXPECT_TRUE(QRectF(15.9, 15.9, 968.2, 668.2).contains(centre)) << centre.x() << ", " << centre.y();
        EXPECT_EQ(buttons.HitTest(buttons.deleteCentre.toPoint()), WordHit::DeleteButton);
        EXPECT_EQ(buttons.HitTest(buttons.rotateCentre.toPoint()), WordHit::RotateButton);
    }
}

TEST(WordButtons, SlideAlongTheirEdgesWhenTheBoxIsLargerThanTheView) {
    const QRect view(0, 0, 1000, 700);
    // The lower edge crosses the view far to the right of it: the rotate button slides along that edge.
    const WordButtons wide = WordButtons::Of({QRect(-500, 100, 3000, 300), 0}, view, 1.0);
    EXPECT_EQ(wide.rotateCentre, QPointF(1000 - 16, 400 - 4));
    EXPECT_EQ(wide.deleteCentre, QPointF(16, 100 - 4));
    EXPECT_FALSE(wide.rotateAtCorner);
    // No edge in sight: the nearest places of the view.
    const WordButtons around = WordButtons::Of({QRect(-900, -900, 4000, 4000), 0}, view, 1.0);
    EXPECT_EQ(around.deleteCentre, QPointF(16, 16));
    EXPECT_EQ(around.rotateCentre, QPointF(1000 - 16, 700 - 16));
}
