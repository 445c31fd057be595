// SPDX-License-Identifier: GPL-3.0-or-later
#include "CCoverButton.h"

#include <QtGui/QPainterPath>
#include <QtWidgets/QStyleOptionToolButton>
#include <QtWidgets/QStylePainter>

#include "Style.h"

namespace {

constexpr double CoverCorner = 4;
constexpr int TextHeight = 16;

}  // namespace

void CCoverButton::SetImage(const QString& attributes) {
    m_cover.Set(attributes, devicePixelRatioF());
    update();
}

void CCoverButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    QFont face = font();
    face.setWeight(isChecked() ? QFont::DemiBold : QFont::Normal);
    painter.setFont(face);
    painter.setPen(isChecked() ? Style::AccentDark : Style::Secondary);
    painter.drawText(rect().adjusted(0, height() - TextHeight - 2, 0, -2), Qt::AlignCenter, text());
    if (m_cover.IsNull()) return;
    QPainterPath round;
    round.addRoundedRect(m_cover.Place(rect()), CoverCorner, CoverCorner);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(round);
    m_cover.Paint(painter, rect());
}
