// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QPixmap>

#include "Bitmap.h"

class QPainter;

// What canvases paint with. Main thread only.

inline constexpr QColor CanvasColor(0xEB, 0xEB, 0xEB);

// The pattern behind translucent pictures; a grey chequer when the file is missing.
QPixmap LoadTexture(const QString& path);
// Fills `rect` with the pattern, drawn at `pixelRatio` physical per logical pixels. Nothing for an empty rectangle.
void PaintTexture(QPainter& painter, const QRect& rect, const QPixmap& texture, double pixelRatio);
// Draws a bitmap into `place`, without a copy. `opaque` promises that every alpha byte is 255 and takes the path of a
// plain copy of rows. A bitmap of another size than its place is scaled smoothly.
void DrawBitmap(QPainter& painter, const QRect& place, const Bitmap& bitmap, bool opaque);
