// SPDX-License-Identifier: GPL-3.0-or-later
#include "CRotateWnd.h"

#include <algorithm>
#include <QtGui/QPainter>

#include "ClickCount.h"
#include "Truncate.h"

namespace {

const QString RestoreClick = QStringLiteral("2010401");

constexpr QColor GridLine(255, 255, 255, 190);
constexpr QColor GridShade(0, 0, 0, 80);

// The lines that divide `rect` into thirds both ways, to be seen on dark and light pictures alike.
void PaintThirds(QPainter& painter, const QRect& rect, double pixelRatio) {
    const int width = std::max(1, Truncate(pixelRatio));
    const auto line = [&](const QRect& at) {
        painter.fillRect(at.translated(width, width).intersected(rect), GridShade);
        painter.fillRect(at, GridLine);
    };
    for (int i = 1; i <= 2; ++i) {
        line({rect.x() + rect.width() * i / 3, rect.y(), width, rect.height()});
        line({rect.x(), rect.y() + rect.height() * i / 3, rect.width(), width});
    }
}

}  // namespace

void CRotateWnd::DragAngle(int degrees) {
    Preview([&] {
        m_logic.DragAngle(degrees);
        m_dragged = m_logic.IsDragging();
    });
}

void CRotateWnd::SetAngle(int degrees) {
    m_dragged = false;
    Perform([&] {
        m_logic.SetAngle(degrees);
        return true;
    });
}

void CRotateWnd::Turn(void (CRotateLogic::*turn)()) {
    m_dragged = false;
    Perform([&] {
        (m_logic.*turn)();
        return true;
    });
}

void CRotateWnd::RestoreEntry() {
    m_dragged = false;
    if (Perform([&] { return m_logic.RestoreEntry(); })) CountClick(RestoreClick);
}

void CRotateWnd::PaintOverlay(QPainter& painter, const QRect& place) {
    if (m_dragged) PaintThirds(painter, place, PixelRatio());
}
