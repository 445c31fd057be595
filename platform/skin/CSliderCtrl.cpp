// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSliderCtrl.h"

#include <algorithm>
#include <QtCore/QSignalBlocker>
#include <QtCore/QStringList>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>

#include "Style.h"

namespace {
constexpr double HandleSize = 14;
constexpr double TrackHeight = 3;
}  // namespace

CSliderCtrl::CSliderCtrl(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void CSliderCtrl::SetNeutral(int value) {
    m_neutral = value;
    update();
}

bool CSliderCtrl::HasNeutral() const {
    return m_neutral >= minimum() && m_neutral <= maximum();
}

void CSliderCtrl::SetTrackColors(const QString& colors) {
    m_trackColors = colors;
    update();
}

void CSliderCtrl::SetQuietly(int value) {
    const QSignalBlocker blocker(this);
    setValue(value);
    update();
}

QSize CSliderCtrl::sizeHint() const {
    return {120, 20};
}

QSize CSliderCtrl::minimumSizeHint() const {
    return {48, 18};
}

double CSliderCtrl::PositionOf(int value) const {
    const double span = std::max(1, maximum() - minimum());
    return HandleSize / 2 + (width() - HandleSize) * (std::clamp(value, minimum(), maximum()) - minimum()) / span;
}

QPoint CSliderCtrl::HandleAt(int value) const {
    return {qRound(PositionOf(value)), height() / 2};
}

int CSliderCtrl::ValueAt(double x) const {
    const double share = (x - HandleSize / 2) / std::max(1.0, width() - HandleSize);
    return qRound(minimum() + std::clamp(share, 0.0, 1.0) * (maximum() - minimum()));
}

void CSliderCtrl::Drag(double x) {
    const int value = ValueAt(x);
    if (value == this->value()) return;
    setSliderPosition(value);
    update();
    emit ValueChanging(value);
}

void CSliderCtrl::Settle(int value) {
    setValue(value);
    update();
    emit ValueChanged(this->value());
}

void CSliderCtrl::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    m_held = true;
    setSliderDown(true);
    Drag(event->position().x());
}

void CSliderCtrl::mouseMoveEvent(QMouseEvent* event) {
    if (m_held) Drag(event->position().x());
}

void CSliderCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (!m_held || event->button() != Qt::LeftButton) return;
    m_held = false;
    Drag(event->position().x());
    setSliderDown(false);
    Settle(value());
}

void CSliderCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    m_held = false;
    setSliderDown(false);
    if (HasNeutral()) Settle(m_neutral);
}

void CSliderCtrl::keyPressEvent(QKeyEvent* event) {
    int target = value();
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            target -= singleStep();
            break;
        case Qt::Key_Right:
        case Qt::Key_Up:
            target += singleStep();
            break;
        case Qt::Key_PageDown:
            target -= pageStep();
            break;
        case Qt::Key_PageUp:
            target += pageStep();
            break;
        case Qt::Key_Home:
            target = minimum();
            break;
        case Qt::Key_End:
            target = maximum();
            break;
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            if (HasNeutral()) target = m_neutral;
            break;
        default:
            event->ignore();
            return;
    }
    target = std::clamp(target, minimum(), maximum());
    if (target != value()) Settle(target);
}

// Without the keyboard the wheel belongs to the panel that scrolls around the slider.
void CSliderCtrl::wheelEvent(QWheelEvent* event) {
    if (!hasFocus() || event->angleDelta().y() == 0) {
        event->ignore();
        return;
    }
    const int step = event->angleDelta().y() > 0 ? singleStep() : -singleStep();
    const int target = std::clamp(value() + step, minimum(), maximum());
    if (target != value()) Settle(target);
    event->accept();
}

void CSliderCtrl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double middle = height() / 2.0;
    const QRectF track(HandleSize / 2 - 2, middle - TrackHeight / 2, width() - HandleSize + 4, TrackHeight);
    const double here = PositionOf(value());
    if (!m_trackColors.isEmpty()) {
        QLinearGradient gradient(track.topLeft(), track.topRight());
        const QStringList colors = m_trackColors.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (int i = 0; i < colors.size(); ++i)
            gradient.setColorAt(colors.size() > 1 ? double(i) / double(colors.size() - 1) : 0.0, QColor(colors[i]));
        painter.setOpacity(isEnabled() ? 1.0 : 0.45);
        painter.setBrush(gradient);
        painter.drawRoundedRect(track, 1.5, 1.5);
    } else {
        painter.setBrush(Style::Track);
        painter.drawRoundedRect(track, 1.5, 1.5);
        const double from = PositionOf(m_neutral);
        painter.setBrush(isEnabled() ? Style::Accent : Style::Disabled);
        painter.drawRoundedRect(QRectF(std::min(from, here), track.top(), std::abs(here - from), TrackHeight), 1.5,
                                1.5);
    }
    painter.setOpacity(1.0);
    const double size = HandleSize - 1;
    const QRectF handle(here - size / 2, middle - size / 2, size, size);
    if (hasFocus() && isEnabled()) {
        painter.setBrush(Style::FocusRing);
        painter.drawEllipse(handle.adjusted(-2.5, -2.5, 2.5, 2.5));
    }
    painter.setBrush(QColor(20, 30, 45, 34));
    painter.drawEllipse(handle.translated(0, 1));
    painter.setBrush(m_held || underMouse() ? Style::HandleHover : Qt::white);
    painter.setPen(QPen(isEnabled() ? (m_held ? Style::Accent : Style::HandleLine) : Style::Hairline, 1));
    painter.drawEllipse(handle);
}
