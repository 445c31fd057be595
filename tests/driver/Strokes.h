// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPoint>
#include <vector>

class QWidget;

// Strokes of the left mouse button by real events. Places are logical pixels of the widget.
namespace Strokes {

// Presses at the first place, moves to each of the others and lets go at the last.
void Draw(QWidget& widget, const std::vector<QPoint>& places, Qt::KeyboardModifiers modifiers = {});
// From one place to the other in so many moves.
std::vector<QPoint> Line(QPoint from, QPoint to, int moves);

}  // namespace Strokes
