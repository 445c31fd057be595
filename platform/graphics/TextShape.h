// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QPointF>
#include <QtCore/QSizeF>
#include <QtGui/QColor>
#include <vector>

#include "TextLine.h"

class QPainter;

// A text laid out once and drawn at any size: outlines and coloured pictures of its glyphs, in units of TextEm to the
// em. Neither the screen nor its resolution takes part in it, so the same text gives the same pixels everywhere. An
// immutable value; made where there is a QGuiApplication, drawn on any thread, one at a time.
class TextShape {
  public:
    // Line feeds break lines. Each line begins at the side from which it is read. Lines of `before` that are still the
    // same are taken over. Null for an empty text or family.
    static std::shared_ptr<const TextShape> Make(const QString& text, const TextLook& look,
                                                 const TextShape* before = nullptr);

    // What the text takes, for an em of one pixel: lines and columns, and any ink that reaches beyond them.
    QSizeF Size() const { return m_size; }
    const TextLook& Look() const { return m_look; }

    // Draws the text with its upper left corner at `at`, for an em of that many pixels. The colour's alpha is that of
    // the whole text, whose parts never show through each other. Pictures keep their colours, or are black areas as a
    // shadow needs them.
    enum class Colours { Own, Silhouette };
    void Draw(QPainter& painter, QPointF at, double em, const QColor& colour, Colours colours = Colours::Own) const;

  private:
    struct Placed {
        std::shared_ptr<const TextLine> line;
        QPointF at;
    };

    void PlaceLines();
    void DrawOutlines(QPainter& painter, const QColor& colour) const;

    TextLook m_look;
    std::vector<Placed> m_lines;
    // Of the lines as they are shaped, before a column turns them.
    QRectF m_bounds;
    QSizeF m_size;
};
