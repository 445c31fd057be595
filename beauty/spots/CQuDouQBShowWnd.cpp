// SPDX-License-Identifier: GPL-3.0-or-later
#include "CQuDouQBShowWnd.h"

#include <QtCore/QTimerEvent>
#include <QtGui/QPainter>

namespace {

constexpr QRgb RingColour = 0xFF20B8F1;

}  // namespace

QRect CQuDouQBShowWnd::OnRepaired(QPoint client) {
    const QRect before = m_ring.isActive() ? RingRect() : QRect();
    m_clicked = client;
    m_ring.start(RingTime, this);
    return before | RingRect();
}

void CQuDouQBShowWnd::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_ring.timerId()) return CClickRepairWnd::timerEvent(event);
    m_ring.stop();
    RedrawPart(RingRect());
}

QRect CQuDouQBShowWnd::RingRect() const {
    const int half = PenPixels() / 2 + Truncate(4 * PixelRatio());
    return QRect(m_clicked - QPoint(half, half), QSize(2 * half + 1, 2 * half + 1));
}

void CQuDouQBShowWnd::PaintOverlay(QPainter& painter, const QRect&) {
    if (!m_ring.isActive()) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgba(RingColour), 2 * PixelRatio()));
    painter.setBrush(Qt::NoBrush);
    const double radius = PenPixels() / 2.0 + PixelRatio();
    painter.drawEllipse(QPointF(m_clicked), radius, radius);
    painter.restore();
}
