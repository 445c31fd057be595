// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QString>

#include "GlyphShapes.h"

// What a text looks like but for its size and colour.
struct TextLook {
    QString family;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    // Glyphs follow each other downward, columns from right to left.
    bool vertical = false;
    bool operator==(const TextLook&) const = default;
};

// Side of the em square at which texts are shaped, in units. Large enough that what a font engine rounds is too small
// to see, so that a shape is good for every size.
inline constexpr int TextEm = 256;

// One line of a text, shaped and ordered for reading in either direction, with glyphs of other fonts where the family
// lacks a script. Its origin is the line's upper left corner. An immutable value.
struct TextLine {
    QString text;
    GlyphShapes shapes;
    double width = 0;
    double height = 0;
    // The line is read from right to left and begins at the right.
    bool rightToLeft = false;

    // Needs a QGuiApplication.
    static std::shared_ptr<const TextLine> Make(const QString& text, const TextLook& look);
};
