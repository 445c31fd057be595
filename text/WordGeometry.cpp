// SPDX-License-Identifier: GPL-3.0-or-later
#include "WordGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <QtCore/QLineF>

#include "CMathDefine.h"
#include "Truncate.h"

namespace {

// These digits belong to the definition of the bearing, which is truncated.
constexpr double BearingPi = 3.1415;
constexpr int FullTurn = 360;
// What rounding the outline of a turned box to pixels adds to it.
constexpr double OutlineReach = 0.5;
// A box whose longer side is below this many logical pixels would be covered by its buttons.
constexpr double SmallBox = 64.0;

QPointF Turned(QPointF at, QPointF pivot, double degrees) {
    const MathPoint turned = CMathDefine::PtChangeByRotate({at.x(), at.y()}, {pivot.x(), pivot.y()}, degrees);
    return {turned.x, turned.y};
}

// The nearest point to `from`, which is an end of the edge, that the edge has inside the rectangle.
std::optional<QPointF> NearestInside(QPointF from, QPointF to, const QRectF& view) {
    double first = 0, last = 1;
    const QPointF by = to - from;
    const auto clip = [&](double start, double delta, double low, double high) {
        if (delta == 0) return start >= low && start <= high;
        const double a = (low - start) / delta, b = (high - start) / delta;
        first = std::max(first, std::min(a, b));
        last = std::min(last, std::max(a, b));
        return first <= last;
    };
    if (!clip(from.x(), by.x(), view.left(), view.right())) return {};
    if (!clip(from.y(), by.y(), view.top(), view.bottom())) return {};
    return from + by * first;
}

// How far a button that covers so much of a side steps out of the box, so that the middle half of the side stays free.
double Aside(double covered, int side) {
    return std::max(0.0, covered - side / 4.0);
}

// Where the button of a corner is reached.
QPointF Reachable(QPointF corner, QPointF before, QPointF after, const QRectF& view) {
    if (view.contains(corner)) return corner;
    const auto one = NearestInside(corner, before, view), other = NearestInside(corner, after, view);
    const auto distance = [&](QPointF at) { return QLineF(corner, at).length(); };
    if (one && other) return distance(*one) <= distance(*other) ? *one : *other;
    if (one || other) return one ? *one : *other;
    return {std::clamp(corner.x(), view.left(), view.right()), std::clamp(corner.y(), view.top(), view.bottom())};
}

}  // namespace

QPolygonF WordBox::Corners() const {
    const QPointF centre = Centre();
    const double left = rect.x(), top = rect.y(), right = left + rect.width(), bottom = top + rect.height();
    QPolygonF corners;
    for (const QPointF& at : {QPointF(left, top), QPointF(right, top), QPointF(right, bottom), QPointF(left, bottom)})
        corners << Turned(at, centre, angle);
    return corners;
}

bool IsInTurned(const QRect& rect, int angle, QPointF pivot, QPoint at) {
    if (rect.height() <= 0) return false;
    if (angle < 0 || angle > FullTurn) angle %= FullTurn;
    const double reach = angle == 0 ? 0.0 : OutlineReach;
    const QPointF flat = angle == 0 ? QPointF(at) : Turned(at, pivot, -angle);
    return flat.x() >= rect.x() - reach && flat.x() <= rect.x() + rect.width() + reach &&
           flat.y() >= rect.y() - reach && flat.y() <= rect.y() + rect.height() + reach;
}

int BearingOf(QPoint centre, QPoint at) {
    const double dx = std::abs(at.x() - centre.x()), dy = std::abs(at.y() - centre.y());
    const auto degrees = [](double ratio) { return std::atan(ratio) * 180 / BearingPi; };
    const bool right = at.x() >= centre.x(), left = at.x() <= centre.x();
    const bool above = at.y() <= centre.y(), below = at.y() >= centre.y();
    int bearing = 180;
    if (dy != 0) {
        if (right && above) bearing = Truncate(degrees(dx / dy));
        if (left && above) bearing = Truncate(360 - degrees(dx / dy));
    }
    if (dx != 0) {
        if (right && below) bearing = Truncate(degrees(dy / dx) + 90);
        if (left && below) bearing = Truncate(270 - degrees(dy / dx));
    }
    return bearing;
}

WordButtons WordButtons::Of(const WordBox& box, const QRect& view, double ratio) {
    const double side = WordButtonSide * ratio;
    // The squares' centres make a box too, a little up and left of the text's; for a small text a larger one.
    const double shift = side / 2 - WordButtonReach * ratio;
    const double inDelete = (WordButtonSide - WordButtonReach) * ratio, inRotate = WordButtonReach * ratio;
    const bool small = std::max(box.rect.width(), box.rect.height()) < SmallBox * ratio;
    const auto aside = [&](double covered, int length) { return small ? Aside(covered, length) : 0.0; };
    const QRectF outer = QRectF(box.rect)
                             .adjusted(-aside(inDelete, box.rect.width()), -aside(inDelete, box.rect.height()),
                                       aside(inRotate, box.rect.width()), aside(inRotate, box.rect.height()))
                             .translated(shift, shift);
    const QPointF centre = box.Centre();
    std::array<QPointF, 4> corners{outer.topLeft(), outer.topRight(), outer.bottomRight(), outer.bottomLeft()};
    for (QPointF& corner : corners) corner = Turned(corner, centre, box.angle);
    const double half = side / 2;
    QRectF reach = QRectF(view).adjusted(half, half, -half, -half);
    if (reach.width() <= 0 || reach.height() <= 0) reach = QRectF(view.center(), QSizeF(1, 1));
    WordButtons buttons;
    buttons.side = side;
    buttons.angle = box.angle;
    buttons.deleteCentre = Reachable(corners[0], corners[3], corners[1], reach);
    buttons.rotateCentre = Reachable(corners[2], corners[1], corners[3], reach);
    buttons.rotateAtCorner = buttons.rotateCentre == corners[2];
    const bool moved = !buttons.rotateAtCorner || buttons.deleteCentre != corners[0];
    if (moved && QLineF(buttons.deleteCentre, buttons.rotateCentre).length() < side) {
        // Both came to one place: the rotate button steps aside, to where there is more room.
        const double away = buttons.deleteCentre.y() + side <= reach.bottom() ? side : -side;
        buttons.rotateCentre = buttons.deleteCentre + QPointF(0, away);
        buttons.rotateAtCorner = false;
    }
    return buttons;
}

WordHit WordButtons::HitTest(QPoint at) const {
    const auto hits = [&](QPointF centre) {
        const QRect square(Truncate(std::round(centre.x() - side / 2)), Truncate(std::round(centre.y() - side / 2)),
                           Truncate(side), Truncate(side));
        return IsInTurned(square, angle, centre, at);
    };
    if (hits(rotateCentre)) return WordHit::RotateButton;
    if (hits(deleteCentre)) return WordHit::DeleteButton;
    return WordHit::Nothing;
}
