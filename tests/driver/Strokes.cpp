// SPDX-License-Identifier: GPL-3.0-or-later
#include "Strokes.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>

namespace {

void Send(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held,
          Qt::KeyboardModifiers modifiers) {
    QMouseEvent event(type, QPointF(at), widget.mapToGlobal(QPointF(at)), button, held, modifiers);
    QApplication::sendEvent(&widget, &event);
}

}  // namespace

void Strokes::Draw(QWidget& widget, const std::vector<QPoint>& places, Qt::KeyboardModifiers modifiers) {
    Send(widget, QEvent::MouseButtonPress, places.front(), Qt::LeftButton, Qt::LeftButton, modifiers);
    for (std::size_t i = 1; i < places.size(); ++i)
        Send(widget, QEvent::MouseMove, places[i], Qt::NoButton, Qt::LeftButton, modifiers);
    Send(widget, QEvent::MouseButtonRelease, places.back(), Qt::LeftButton, Qt::NoButton, modifiers);
}

std::vector<QPoint> Strokes::Line(QPoint from, QPoint to, int moves) {
    std::vector<QPoint> places;
    for (int i = 0; i <= moves; ++i) places.push_back(from + (to - from) * i / moves);
    return places;
}
