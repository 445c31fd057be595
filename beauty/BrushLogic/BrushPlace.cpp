// SPDX-License-Identifier: GPL-3.0-or-later
#include "BrushPlace.h"

#include <algorithm>
#include <cstdlib>

#include "Truncate.h"

namespace {

constexpr int BeforeTheEdge = -5;

int StampStart(int screen, double zoom) {
    const int start = Truncate(screen / zoom);
    return start == 0 ? BeforeTheEdge : start;
}

}  // namespace

std::optional<QRect> PenPlace(QPoint at, int pen, double zoom, QSize picture) {
    const int half = Truncate(pen * 0.5);
    const int left = std::max(at.x() - half, -pen), top = std::max(at.y() - half, -pen);
    const int right = std::min(at.x() + half, Truncate(picture.width() * zoom));
    const int bottom = std::min(at.y() + half, Truncate(picture.height() * zoom));
    if (left >= right || top >= bottom) return std::nullopt;
    const QPoint start(StampStart(left, zoom), StampStart(top, zoom)),
        end(Truncate(right / zoom), Truncate(bottom / zoom));
    return QRect(start, QSize(end.x() - start.x(), end.y() - start.y()));
}

std::optional<QPoint> StampPlace(QPoint at, int pen, double zoom, QSize picture) {
    const std::optional<QRect> place = PenPlace(at, pen, zoom, picture);
    return place ? std::optional(place->topLeft()) : std::nullopt;
}

bool IsFarEnough(QPoint last, QPoint next, int side) {
    return std::abs(last.x() - next.x()) + std::abs(last.y() - next.y()) >= side / 4;
}

QRect StampedPart(QPoint place, int side, QSize picture) {
    return QRect(place, QSize(side, side)).intersected(QRect(QPoint(0, 0), picture));
}
