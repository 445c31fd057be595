// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPoint>
#include <QtWidgets/QWidget>

// The wider field of colours: all hues from left to right, from white above by the full colour to black below; and the
// marker of the place last taken, a small square around it.
class CColorField : public QWidget {
    Q_OBJECT

  public:
    explicit CColorField(QWidget* parent = nullptr);

    // The colour of a point, 0xRRGGBB; the nearest one for a point outside.
    QRgb ColorAt(QPointF at) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
};
