// SPDX-License-Identifier: GPL-3.0-or-later
#include "CColorButton.h"

#include <algorithm>
#include <QtGui/QPainter>

#include "Style.h"

namespace {

constexpr int LargestCorner = 6;

}  // namespace

CColorButton::CColorButton(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
}

void CColorButton::SetColor(QRgb color) {
    m_color = color;
    update();
}

// The colour, with a hairline that keeps white apart from the ground; a ring round the chosen one and that with the
// keyboard.
void CColorButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double corner = std::min(LargestCorner, height() / 5);
    const bool ringed = isChecked() || hasFocus() || underMouse();
    const double inset = ringed ? 2.5 : 1.0;
    const QRectF swatch = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    painter.setPen(QPen(QColor(0, 0, 0, 50), 1));
    painter.setBrush(isEnabled() ? QColor::fromRgb(m_color) : Style::Track);
    painter.drawRoundedRect(swatch, corner, corner);
    if (!ringed) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(isChecked() || hasFocus() ? Style::Accent : Style::HandleLine, 1.5));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), corner + 1, corner + 1);
}

void CColorButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void CColorButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}
