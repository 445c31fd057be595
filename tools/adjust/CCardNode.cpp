// SPDX-License-Identifier: GPL-3.0-or-later
#include "CCardNode.h"

#include <QtGui/QAccessible>
#include <QtGui/QFontMetrics>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>

#include "Style.h"

namespace {
constexpr int HeadingSize = 13;
constexpr int NodeHeight = 20;
constexpr int Gap = 7;
// The arrow's box: twice as wide as high when it points down.
constexpr double ArrowWidth = 7;
constexpr double ArrowHeight = 3.5;
}  // namespace

CCardNode::CCardNode(QWidget* parent) : QAbstractButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void CCardNode::SetFolded(bool folded) {
    if (folded == m_folded) return;
    m_folded = folded;
    QAccessible::State changed;
    changed.expanded = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    update();
}

QFont CCardNode::HeadingFont() const {
    QFont heading = font();
    heading.setPixelSize(HeadingSize);
    heading.setWeight(QFont::DemiBold);
    return heading;
}

QSize CCardNode::sizeHint() const {
    return {QFontMetrics(HeadingFont()).horizontalAdvance(text()) + Gap + static_cast<int>(ArrowWidth) + 4, NodeHeight};
}

void CCardNode::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !event->isAutoRepeat())
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void CCardNode::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFont heading = HeadingFont();
    painter.setFont(heading);
    painter.setPen(hasFocus() ? Style::AccentDark : Style::Text);
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, text());

    const double middle = QFontMetrics(heading).horizontalAdvance(text()) + Gap + ArrowWidth / 2;
    painter.translate(middle, height() / 2.0 + 0.5);
    if (m_folded) painter.rotate(-90);
    painter.setPen(QPen(underMouse() || hasFocus() ? Style::AccentDark : Style::Secondary, 1.5, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    const QPointF arrow[] = {
        {-ArrowWidth / 2, -ArrowHeight / 2}, {0, ArrowHeight / 2}, {ArrowWidth / 2, -ArrowHeight / 2}};
    painter.drawPolyline(arrow, 3);
}
