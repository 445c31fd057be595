// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGui/QImage>
#include <QtWidgets/QWidget>

// A picture of colours to take one from: the mouse over it shows the colour under it, a press or drag that ends on it
// takes it. With the keyboard the arrow keys move the mark, and Enter or Space takes. The colour is that of the
// picture's own pixels, whatever the screen makes of them. Main thread.
class CPaletteField : public QWidget {
    Q_OBJECT

  public:
    explicit CPaletteField(QWidget* parent = nullptr);

    // The file of the picture, and its place in the widget: all of it.
    void SetPicture(const QString& path);
    // The colour at a place of the widget, in logical pixels; held to its inside. Invalid without a picture.
    QColor ColorAt(QPointF at) const;
    // Where a taken colour lies: the nearest place of the picture to `color`.
    void MarkColor(const QColor& color);

    QSize sizeHint() const override { return {200, 110}; }

  signals:
    void Hovered(const QColor& color);
    void Taken(const QColor& color);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QPointF HeldInside(QPointF at) const;
    void MoveMark(QPointF at);

    QImage m_picture;
    // The mark's place as a share of the widget.
    QPointF m_mark{0.5, 0.5};
};
