// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPaletteField.h"

#include <algorithm>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include "Truncate.h"

namespace {

constexpr double MarkSide = 10.0;

}  // namespace

CPaletteField::CPaletteField(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
}

void CPaletteField::SetPicture(const QString& path) {
    m_picture = QImage(path).convertToFormat(QImage::Format_RGB32);
    update();
}

QPointF CPaletteField::HeldInside(QPointF at) const {
    return {std::clamp(at.x(), 0.0, std::max(0.0, width() - 1.0)),
            std::clamp(at.y(), 0.0, std::max(0.0, height() - 1.0))};
}

QColor CPaletteField::ColorAt(QPointF at) const {
    if (m_picture.isNull() || width() < 1 || height() < 1) return {};
    const QPointF inside = HeldInside(at);
    return m_picture.pixelColor(Truncate(inside.x() * m_picture.width() / width()),
                                Truncate(inside.y() * m_picture.height() / height()));
}

void CPaletteField::MarkColor(const QColor& color) {
    int nearest = std::numeric_limits<int>::max();
    for (int y = 0; y < m_picture.height(); ++y)
        for (int x = 0; x < m_picture.width(); ++x) {
            const QRgb pixel = m_picture.pixel(x, y);
            const int r = qRed(pixel) - color.red(), g = qGreen(pixel) - color.green(), b = qBlue(pixel) - color.blue();
            const int distance = r * r + g * g + b * b;
            if (distance >= nearest) continue;
            nearest = distance;
            m_mark = {(x + 0.5) / m_picture.width(), (y + 0.5) / m_picture.height()};
        }
    update();
}

void CPaletteField::MoveMark(QPointF at) {
    const QPointF inside = HeldInside(at);
    m_mark = {(inside.x() + 0.5) / width(), (inside.y() + 0.5) / height()};
    update();
    emit Hovered(ColorAt(inside));
}

void CPaletteField::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.drawImage(rect(), m_picture);
    if (!isEnabled()) return;
    const QPointF mark(m_mark.x() * width(), m_mark.y() * height());
    for (const auto& [color, line] : {std::pair(QColor(0, 0, 0, 150), 3.0), std::pair(QColor(Qt::white), 1.5)}) {
        painter.setPen(QPen(color, line));
        painter.drawEllipse(mark, MarkSide / 2, MarkSide / 2);
    }
    if (!hasFocus()) return;
    painter.setPen(QPen(QColor(0x20, 0xB8, 0xF1), 2));
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
}

void CPaletteField::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) MoveMark(event->position());
}

void CPaletteField::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) return MoveMark(event->position());
    emit Hovered(ColorAt(event->position()));
}

void CPaletteField::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    MoveMark(event->position());
    if (const QColor color = ColorAt(event->position()); color.isValid()) emit Taken(color);
}

void CPaletteField::keyPressEvent(QKeyEvent* event) {
    const QPointF mark(m_mark.x() * width() - 0.5, m_mark.y() * height() - 0.5);
    constexpr double Step = 2.0;
    switch (event->key()) {
        case Qt::Key_Left:
            return MoveMark(mark - QPointF(Step, 0));
        case Qt::Key_Right:
            return MoveMark(mark + QPointF(Step, 0));
        case Qt::Key_Up:
            return MoveMark(mark - QPointF(0, Step));
        case Qt::Key_Down:
            return MoveMark(mark + QPointF(0, Step));
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            if (const QColor color = ColorAt(mark); color.isValid()) emit Taken(color);
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}
