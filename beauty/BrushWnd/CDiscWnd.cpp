// SPDX-License-Identifier: GPL-3.0-or-later
#include "CDiscWnd.h"

#include <QtGui/QPainter>

namespace {

constexpr QRgb Outline = 0xFF20B8F1;
constexpr QRgb HoverFill = 0x3AFFFFFF;
// Lighter, so that the hand sees what it does.
constexpr QRgb StrokeFill = 0x1AFFFFFF;

}  // namespace

void CDiscWnd::SetPenSize(int pen) {
    const QRect before = CursorRect();
    CPenWnd::SetPenSize(pen);
    ShowCursorAt(m_cursor, before);
}

void CDiscWnd::Hover(const StrokePoint& at) {
    ShowCursorAt(PixelOf(at));
}

void CDiscWnd::leaveEvent(QEvent* event) {
    ShowCursorAt(std::nullopt);
    CPenWnd::leaveEvent(event);
}

QRect CDiscWnd::CursorRect() const {
    if (!m_cursor) return {};
    const int half = PenPixels() / 2 + 2;
    return QRect(*m_cursor - QPoint(half, half), QSize(2 * half + 1, 2 * half + 1));
}

void CDiscWnd::ShowCursorAt(std::optional<QPoint> at, const QRect& changed) {
    const QRect before = CursorRect();
    m_cursor = at;
    const QRect now = CursorRect();
    const QRect near = now | changed;
    if (before.intersects(near)) return RedrawPart(before | near);
    if (!before.isEmpty()) RedrawPart(before);
    if (!near.isEmpty()) RedrawPart(near);
}

// Within the picture, or within the client with a margin where the picture is larger both ways.
QRect CDiscWnd::CursorClip(const QRect& place) const {
    const QSize client = PhysicalClient();
    if (place.width() < client.width() || place.height() < client.height()) return place;
    const int margin = IsStroking() ? 12 : 2;
    return QRect(QPoint(0, 0), client - QSize(margin, margin));
}

void CDiscWnd::PaintOverlay(QPainter& painter, const QRect& place) {
    if (!m_cursor || IsPanning()) return;
    const int pen = PenPixels(), half = pen / 2;
    painter.save();
    painter.setClipRect(CursorClip(place), Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgba(Outline), PixelRatio()));
    painter.setBrush(QColor::fromRgba(IsStroking() ? StrokeFill : HoverFill));
    painter.drawEllipse(QRect(*m_cursor - QPoint(half - 1, half - 1), QSize(pen - 3, pen - 3)));
    painter.restore();
}
