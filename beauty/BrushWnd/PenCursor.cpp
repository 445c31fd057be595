// SPDX-License-Identifier: GPL-3.0-or-later
#include "PenCursor.h"

#include <QtGui/QPainter>
#include <QtGui/QPixmap>

#include "Truncate.h"

namespace {

constexpr int LeastDisc = 4;
// Black that lets the skin under the pen be seen, and that sets the edge off from light skin.
constexpr QColor Fill(0, 0, 0, 40), Shade(0, 0, 0, 110);

}  // namespace

QCursor PenCursor(int pen, double scale) {
    if (pen < LeastDisc) return Qt::CrossCursor;
    const int side = TruncateSide(pen * scale);
    QPixmap disc(side, side);
    disc.fill(Qt::transparent);
    QPainter painter(&disc);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF edge = QRectF(disc.rect()).adjusted(scale, scale, -scale, -scale);
    painter.setPen(QPen(Shade, 2 * scale));
    painter.setBrush(Fill);
    painter.drawEllipse(edge);
    painter.setPen(QPen(Qt::white, scale));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(edge);
    painter.end();
    disc.setDevicePixelRatio(scale);
    return QCursor(disc);
}
