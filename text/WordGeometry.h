// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtGui/QPolygonF>

// The plane geometry of boxes that are turned about their centres. Points and rectangles are client pixels, angles are
// degrees, clockwise. Plain functions, any thread.

// What a press takes hold of.
enum class WordHit { Nothing = 1, DeleteButton = 3, RotateButton = 6, Body = 7 };

// A text's box on the screen, unturned, with its angle about its own centre.
struct WordBox {
    QRect rect;
    int angle = 0;
    QPoint Centre() const { return {rect.x() + rect.width() / 2, rect.y() + rect.height() / 2}; }
    // Its four corners as they are turned, from the upper left one clockwise.
    QPolygonF Corners() const;
};

// `at` lies in the rectangle as it is turned about the pivot, edges included. A rectangle without height holds nothing.
bool IsInTurned(const QRect& rect, int angle, QPointF pivot, QPoint at);

// Direction of a point seen from a centre, in whole degrees: 0 upward, growing clockwise, 360 straight above, 180 at
// the centre itself.
int BearingOf(QPoint centre, QPoint at);

// Side of the square in which a button of a box is hit, and how far it reaches out of the box, in logical pixels.
inline constexpr int WordButtonSide = 32, WordButtonReach = 20;

// Where the buttons of a box are, by the centres of their squares. A button lies at its corner of the turned box, and
// leaves the middle half of a small one free; one that the view does not show lies at the nearest visible place of the
// corner's two edges, or where these are out of sight too, at the nearest place of the view.
struct WordButtons {
    QPointF deleteCentre;
    QPointF rotateCentre;
    // The rotate button lies at its corner.
    bool rotateAtCorner = true;
    // Side of a button's square.
    double side = WordButtonSide;
    // The angle of the squares.
    int angle = 0;

    // `ratio` is physical pixels per logical one; `view` the part of the client where buttons can be reached.
    static WordButtons Of(const WordBox& box, const QRect& view, double ratio);
    // The button at a point: Rotate before Delete; Nothing beside both.
    WordHit HitTest(QPoint at) const;
};
