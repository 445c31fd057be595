// SPDX-License-Identifier: GPL-3.0-or-later
#include "CBrushWnd.h"

#include <QtGui/QPainter>

#include "Truncate.h"
#include "WithinMemory.h"

namespace {

constexpr QRgb Outline = 0xFF20B8F1;
constexpr QRgb HoverFill = 0x3AFFFFFF;
// Lighter, so that the hand sees what it paints.
constexpr QRgb StrokeFill = 0x1AFFFFFF;

QPoint Whole(QPointF at) {
    return {Truncate(at.x()), Truncate(at.y())};
}

}  // namespace

void CBrushWnd::SetPenSize(int pen) {
    const QRect before = CursorRect();
    CPenWnd::SetPenSize(pen);
    ShowCursorAt(m_cursor, before);
}

bool CBrushWnd::BeginStroke(const StrokePoint& at) {
    Follow(at);
    bool begun = false;
    WithinMemory(Host(), [&] { begun = m_brush.BeginStroke(Whole(at.client)); });
    if (begun) Redraw(Paint::Now);
    return begun;
}

void CBrushWnd::MoveStroke(const StrokePoint& at) {
    Follow(at);
    const QRect changed = m_brush.MoveStroke(Whole(at.client));
    ShowCursorAt(Whole(at.client), changed);
}

void CBrushWnd::EndStroke(StrokeEnd) {
    Perform([this] {
        m_brush.EndStroke();
        return true;
    });
}

void CBrushWnd::Hover(const StrokePoint& at) {
    ShowCursorAt(Whole(at.client));
}

void CBrushWnd::leaveEvent(QEvent* event) {
    ShowCursorAt(std::nullopt);
    CPenWnd::leaveEvent(event);
}

QRect CBrushWnd::CursorRect() const {
    if (!m_cursor) return {};
    const int half = PenPixels() / 2 + 2;
    return QRect(*m_cursor - QPoint(half, half), QSize(2 * half + 1, 2 * half + 1));
}

// Paints what the cursor leaves, what it comes to, and what a stroke changed besides.
void CBrushWnd::ShowCursorAt(std::optional<QPoint> at, const QRect& changed) {
    const QRect before = CursorRect();
    m_cursor = at;
    const QRect now = CursorRect();
    const QRect near = now | changed;
    if (before.intersects(near)) return RedrawPart(before | near);
    if (!before.isEmpty()) RedrawPart(before);
    if (!near.isEmpty()) RedrawPart(near);
}

// Within the picture, or within the client with a margin where the picture is larger both ways.
QRect CBrushWnd::CursorClip(const QRect& place) const {
    const QSize client = PhysicalClient();
    if (place.width() < client.width() || place.height() < client.height()) return place;
    const int margin = IsStroking() ? 12 : 2;
    return QRect(QPoint(0, 0), client - QSize(margin, margin));
}

void CBrushWnd::PaintOverlay(QPainter& painter, const QRect& place) {
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
