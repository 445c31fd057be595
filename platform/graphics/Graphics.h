// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtGui/QTransform>

#include "Bitmap.h"
#include "TextShape.h"

class QImage;
class QPainter;

// A surface to draw on, with the vocabulary of the operation records: a bitmap, or what a window paints. Places are
// pixels of the surface; turns are in degrees, clockwise. One thread at a time.
class Graphics {
  public:
    // Draws into the bitmap's own pixels, inside `part` of it, which must lie in it; places count from the bitmap's own
    // corner. The bitmap must not be used otherwise meanwhile. Throws std::bad_alloc.
    Graphics(Bitmap& target, const QRect& part);
    explicit Graphics(Bitmap& target) : Graphics(target, QRect(0, 0, target.Width(), target.Height())) {}
    // Draws with a painter as it stands.
    explicit Graphics(QPainter& painter);
    ~Graphics();
    Graphics(const Graphics&) = delete;
    Graphics& operator=(const Graphics&) = delete;

    // What is drawn from here on is turned about a point.
    void RotateAt(double degrees, QPointF centre);
    // The surface as it was at first.
    void ResetTransform();

    // A text with its upper left corner at `at`, for an em of that many pixels.
    void DrawString(const TextShape& text, QPointF at, double em, const QColor& colour,
                    TextShape::Colours colours = TextShape::Colours::Own);

    // Fills a rectangle with copies of `tile` beside and below each other, seen through `transform`.
    void FillTiled(const QRect& rect, const Bitmap& tile, const QTransform& transform);

  private:
    std::unique_ptr<QImage> m_image;
    std::unique_ptr<QPainter> m_own;
    QPainter* m_painter;
    QTransform m_initial;
};
