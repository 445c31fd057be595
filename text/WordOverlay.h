// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>
#include <QtGui/QPixmap>

#include "WordGeometry.h"

class QPainter;

// What is drawn over the texts: the frame of the selected one with its buttons, the frame of the one under the mouse,
// and the guides. Physical client pixels; `ratio` of them to a logical one. Main thread.
class WordOverlay {
  public:
    // Loads the buttons' strips from the program's pictures, for that screen.
    explicit WordOverlay(double ratio);
    // Draws with discs in place of strips that are not there.
    WordOverlay(QPixmap deleteStrip, QPixmap rotateStrip, double ratio);

    void PaintHover(QPainter& painter, const WordBox& box) const;
    void PaintSelected(QPainter& painter, const WordBox& box, const WordButtons& buttons, bool turning) const;
    // Lines through the middle of the picture, which lies at `place`.
    void PaintGuides(QPainter& painter, const QRect& place, bool vertical, bool horizontal) const;

    // All that a selected box's frame and buttons may cover.
    QRect Covers(const WordBox& box, const WordButtons& buttons) const;
    double Ratio() const { return m_ratio; }

  private:
    void PaintFrame(QPainter& painter, const WordBox& box) const;
    void PaintButton(QPainter& painter, const QPixmap& strip, int frame, QPointF centre, const QColor& without) const;

    QPixmap m_delete;
    QPixmap m_rotate;
    double m_ratio;
};
