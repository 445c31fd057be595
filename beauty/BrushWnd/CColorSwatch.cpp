// SPDX-License-Identifier: GPL-3.0-or-later
#include "CColorSwatch.h"

#include <QtGui/QPainter>

namespace {

const QColor Accent(0x20, 0xB8, 0xF1);
const QColor Hairline(0, 0, 0, 40);

}  // namespace

CColorSwatch::CColorSwatch(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void CColorSwatch::SetColor(const QColor& color) {
    m_color = color;
    const QString name = QStringLiteral("%1, %2, %3").arg(color.red()).arg(color.green()).arg(color.blue());
    setAccessibleName(name);
    setToolTip(name);
    update();
}

void CColorSwatch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = std::min(width(), height());
    const QPointF middle = QRectF(rect()).center();
    const double radius = side / 2 - 5.0;
    painter.setPen(QPen(Hairline, 1));
    painter.setBrush(m_color);
    painter.drawEllipse(middle, radius, radius);
    if (!isChecked() && !hasFocus() && !underMouse()) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Accent, isChecked() ? 2.0 : 1.0));
    painter.drawEllipse(middle, radius + 3.0, radius + 3.0);
}
