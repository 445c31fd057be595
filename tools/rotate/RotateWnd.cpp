// SPDX-License-Identifier: GPL-3.0-or-later
#include "RotateWnd.h"

#include <algorithm>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>

#include "ClickCount.h"
#include "Truncate.h"

namespace {

const QString LeaveChangedClick = QStringLiteral("888020204");
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

CRotateWnd::CRotateWnd(ToolHost& host, QWidget* parent, CHistoryManager& history)
    : CPictureWnd(host, ToolNumber, LeaveChangedClick, parent), m_logic(history) {
    Geometry() = m_logic.Geometry();
}

// While the button is down on the slider, history and tools wait; the mouse is asked too, since a release may get lost.
bool CRotateWnd::IsStrokeHeld() const {
    const bool sliderHeld = m_dragged && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    return sliderHeld || CPictureWnd::IsStrokeHeld();
}

void CRotateWnd::DragAngle(int degrees) {
    m_logic.DragAngle(degrees);
    m_dragged = m_logic.IsDragging();
    TakeUpPicture();
}

void CRotateWnd::SetAngle(int degrees) {
    m_logic.SetAngle(degrees);
    TakeUpOperation();
}

void CRotateWnd::TurnLeft() {
    m_logic.TurnLeft();
    TakeUpOperation();
}

void CRotateWnd::TurnRight() {
    m_logic.TurnRight();
    TakeUpOperation();
}

void CRotateWnd::FlipLeftRight() {
    m_logic.FlipLeftRight();
    TakeUpOperation();
}

void CRotateWnd::FlipTopBottom() {
    m_logic.FlipTopBottom();
    TakeUpOperation();
}

void CRotateWnd::RestoreEntry() {
    if (!m_logic.RestoreEntry()) return;
    CountClick(RestoreClick);
    TakeUpOperation();
}

void CRotateWnd::TakeUpOperation() {
    m_dragged = false;
    TakeUpPicture();
    NotifyView(SizeCode, 1);
    NotifyView(HistoryCode, 0);
}

void CRotateWnd::PaintOverlay(QPainter& painter) {
    if (m_dragged) PaintThirds(painter, Geometry().ScreenRect(), PixelRatio());
}
