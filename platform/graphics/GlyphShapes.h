// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRectF>
#include <QtGui/QGlyphRun>
#include <QtGui/QImage>
#include <QtGui/QPainterPath>
#include <QtGui/QRawFont>
#include <vector>

// A glyph that has colours of its own, such as an emoji.
struct GlyphPicture {
    QImage image;
    QRectF place;
};

// What the glyphs of a run of text look like, at the size of the run's font: outlines filled by the winding rule, and
// pictures. All outlines turn the same way, so that glyphs that overlap are one area.
struct GlyphShapes {
    QPainterPath outline;
    std::vector<GlyphPicture> pictures;

    // Adds a run's glyphs, each moved by `offset`.
    void Add(const QGlyphRun& run, QPointF offset);
    // Adds a rectangle, such as an underline.
    void AddRect(const QRectF& rect);
    // Adds what another holds, seen through `transform`.
    void Add(const GlyphShapes& shapes, const QTransform& transform);
    // Around everything; null without ink.
    QRectF Bounds() const;
};
