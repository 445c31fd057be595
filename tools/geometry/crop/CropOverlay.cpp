// SPDX-License-Identifier: GPL-3.0-or-later
#include "CropOverlay.h"

#include <QtGui/QPainter>

#include "CropSelection.h"
#include "Truncate.h"

namespace {

constexpr QRgb Veil = 0x7F000000;
constexpr QRgb Thirds = 0x7FFFFFFF;
constexpr QRgb Line = 0xFFFFFFFF;
constexpr double LineWidth = 2.0;

// Four strips around the frame: filling a region with a hole costs more than the picture below it.
void PaintVeil(QPainter& painter, const QRect& picture, const QRect& frame) {
    const QColor veil = QColor::fromRgba(Veil);
    const auto strip = [&](int left, int top, int right, int bottom) {
        if (right > left && bottom > top) painter.fillRect(QRect(left, top, right - left, bottom - top), veil);
    };
    const int left = picture.x(), top = picture.y(), right = left + picture.width(), bottom = top + picture.height();
    const QRect hole = frame.intersected(picture);
    if (hole.isEmpty()) return strip(left, top, right, bottom);
    const int holeRight = hole.x() + hole.width(), holeBottom = hole.y() + hole.height();
    strip(left, top, right, hole.y());
    strip(left, hole.y(), hole.x(), holeBottom);
    strip(holeRight, hole.y(), right, holeBottom);
    strip(left, holeBottom, right, bottom);
}

void PaintThirds(QPainter& painter, const QRect& frame, double width) {
    painter.setPen(QPen(QColor::fromRgba(Thirds), width, Qt::DashLine, Qt::FlatCap));
    for (int i = 1; i <= 2; ++i) {
        const int x = frame.x() + frame.width() * i / 3;
        const int y = frame.y() + frame.height() * i / 3;
        painter.drawLine(x, frame.y(), x, frame.y() + frame.height());
        painter.drawLine(frame.x(), y, frame.x() + frame.width(), y);
    }
}

}  // namespace

void PaintCropOverlay(QPainter& painter, const CropSelection& selection, QPoint offset, QSize client, double ratio) {
    if (selection.IsEmpty()) return;
    const QRectF& at = selection.Frame();
    const QPoint first = offset + QPoint(Truncate(at.left()), Truncate(at.top()));
    const QPoint last = offset + QPoint(Truncate(at.right()), Truncate(at.bottom()));
    const QRect frame(first, QSize(last.x() - first.x(), last.y() - first.y()));
    const QRect picture = QRect(offset, selection.Scaled()).intersected(QRect(QPoint(0, 0), client));
    PaintVeil(painter, picture, frame);
    PaintThirds(painter, frame, LineWidth * ratio);
    painter.setPen(QPen(QColor::fromRgba(Line), LineWidth * ratio, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
    if (selection.IsDrawingNew()) return;
    const auto areas = selection.HitAreas();
    for (std::size_t corner = 0; corner < 4; ++corner) {
        const QRectF& square = areas[corner];
        painter.fillRect(QRect(offset.x() + Truncate(square.x()), offset.y() + Truncate(square.y()),
                               Truncate(square.width()), Truncate(square.height())),
                         QColor::fromRgba(Line));
    }
}
