// SPDX-License-Identifier: GPL-3.0-or-later
#include "WordOverlay.h"

#include <algorithm>
#include <QtGui/QPainter>
#include <utility>

#include "AppPaths.h"

namespace {

constexpr QRgb FrameColour = 0xFF20B8F1;
constexpr QRgb DeleteColour = 0xFFFF0000;
constexpr QRgb GuideColour = 0xFFE5484D;
constexpr double FrameWidth = 2.0;
constexpr int TurningFrame = 0, RestFrame = 1;

QPixmap LoadStrip(const QString& name, double ratio) {
    const QString path = QStringLiteral("Images/Button/") + name;
    if (ratio > 1.0)
        if (QPixmap fine(ResourcePath(path + QStringLiteral("@2x.png"))); !fine.isNull()) return fine;
    return QPixmap(ResourcePath(path + QStringLiteral(".png")));
}

}  // namespace

WordOverlay::WordOverlay(double ratio)
    : WordOverlay(LoadStrip(QStringLiteral("btn_delete"), ratio), LoadStrip(QStringLiteral("btn_rotate"), ratio),
                  ratio) {}

WordOverlay::WordOverlay(QPixmap deleteStrip, QPixmap rotateStrip, double ratio)
    : m_delete(std::move(deleteStrip)), m_rotate(std::move(rotateStrip)), m_ratio(ratio) {
    m_delete.setDevicePixelRatio(1.0);
    m_rotate.setDevicePixelRatio(1.0);
}

// A pale line below the coloured one keeps the frame visible on every picture.
void WordOverlay::PaintFrame(QPainter& painter, const WordBox& box) const {
    const QPolygonF corners = box.Corners();
    painter.setRenderHint(QPainter::Antialiasing, box.angle % 90 != 0);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(
        QPen(QColor(255, 255, 255, 140), (FrameWidth + 1.5) * m_ratio, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawPolygon(corners);
    painter.setPen(
        QPen(QColor::fromRgba(FrameColour), FrameWidth * m_ratio, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawPolygon(corners);
}

void WordOverlay::PaintHover(QPainter& painter, const WordBox& box) const {
    painter.save();
    PaintFrame(painter, box);
    painter.restore();
}

void WordOverlay::PaintSelected(QPainter& painter, const WordBox& box, const WordButtons& buttons, bool turning) const {
    painter.save();
    PaintFrame(painter, box);
    PaintButton(painter, m_delete, RestFrame, buttons.deleteCentre, QColor::fromRgba(DeleteColour));
    PaintButton(painter, m_rotate, turning ? TurningFrame : RestFrame, buttons.rotateCentre,
                QColor::fromRgba(FrameColour));
    painter.restore();
}

void WordOverlay::PaintButton(QPainter& painter, const QPixmap& strip, int frame, QPointF centre,
                              const QColor& without) const {
    if (strip.isNull()) {
        const double radius = WordButtonSide / 2.0 * m_ratio;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(without);
        painter.drawEllipse(centre, radius, radius);
        return;
    }
    const int cell = strip.height();
    const double side = WordButtonSide * m_ratio;
    const QPointF corner = centre - QPointF(side / 2, side / 2);
    const QRect from(cell * std::min(frame, strip.width() / cell - 1), 0, cell, cell);
    // On the screen's pixels where the strip was drawn for them.
    const QPointF at = cell == side ? QPointF(corner.toPoint()) : corner;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRectF(at, QSizeF(side, side)), strip, QRectF(from));
}

void WordOverlay::PaintGuides(QPainter& painter, const QRect& place, bool vertical, bool horizontal) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(QColor::fromRgba(GuideColour), 0));
    const int x = place.x() + place.width() / 2, y = place.y() + place.height() / 2;
    if (vertical) painter.drawLine(x, place.top(), x, place.bottom());
    if (horizontal) painter.drawLine(place.left(), y, place.right(), y);
    painter.restore();
}

QRect WordOverlay::Covers(const WordBox& box, const WordButtons& buttons) const {
    const double line = (FrameWidth + 2) * m_ratio, half = buttons.side / 2 + 2;
    QRectF covers = box.Corners().boundingRect().adjusted(-line, -line, line, line);
    for (const QPointF& centre : {buttons.deleteCentre, buttons.rotateCentre})
        covers |= QRectF(centre - QPointF(half, half), QSizeF(2 * half, 2 * half));
    return covers.toAlignedRect();
}
