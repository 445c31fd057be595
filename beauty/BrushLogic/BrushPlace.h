// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>

// Where stamps go. Screen places are counted from the picture's top left corner on the screen.

// What a pen of `pen` screen pixels whose middle is at `at` covers, in picture pixels; none where the pen does not
// touch the picture, of which a margin of one pen to the left and above is a part. A rectangle that would begin at
// column or row 0 begins at -5, so that a disc's soft rim does not spare the picture's edge; to the right and below it
// ends with the picture.
std::optional<QRect> PenPlace(QPoint at, int pen, double zoom, QSize picture);
// The top left picture pixel of that: where a stamp goes.
std::optional<QPoint> StampPlace(QPoint at, int pen, double zoom, QSize picture);

// A stroke puts its next stamp where it has gone a quarter of the stamp's side, counted along the axes.
bool IsFarEnough(QPoint last, QPoint next, int side);

// The part of the picture that a stamp covers; table place (i, j) is always picture pixel (place.x + i, place.y + j).
QRect StampedPart(QPoint place, int side, QSize picture);
