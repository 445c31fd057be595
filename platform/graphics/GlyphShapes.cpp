// SPDX-License-Identifier: GPL-3.0-or-later
#include "GlyphShapes.h"

#include <cmath>
#include <mutex>
#include <QtCore/QHash>
#include <QtGui/QPainter>

namespace {

// The glyphs of one face that were asked for, since reading an outline costs more than drawing it. Values only, no
// font is held.
struct Face {
    bool coloured = false;
    QHash<quint32, QPainterPath> outlines;
    QHash<quint32, GlyphPicture> pictures;
};

constexpr int MostFaces = 64;
constexpr int MostGlyphs = 4096;

// The tables in which a font keeps pictures: bitmaps and layers of colour.
bool HasColours(const QRawFont& font) {
    return !font.fontTable("CBLC").isEmpty() || !font.fontTable("COLR").isEmpty() || !font.fontTable("sbix").isEmpty();
}

QString KeyOf(const QRawFont& font) {
    return QStringLiteral("%1/%2/%3/%4/%5")
        .arg(font.familyName(), font.styleName())
        .arg(font.weight())
        .arg(static_cast<int>(font.style()))
        .arg(font.pixelSize());
}

// Twice the area within the outline, negative when it turns the other way. Curves count as their control polygon,
// which is enough for the sign.
double Turning(const QPainterPath& path) {
    double sum = 0;
    QPointF start, last;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element at = path.elementAt(i);
        if (at.isMoveTo()) {
            sum += last.x() * start.y() - start.x() * last.y();
            start = at;
        } else {
            sum += last.x() * at.y - at.x * last.y();
        }
        last = at;
    }
    return sum + last.x() * start.y() - start.x() * last.y();
}

QPainterPath OutlineOf(const QRawFont& font, quint32 glyph) {
    QPainterPath path = font.pathForGlyph(glyph);
    if (Turning(path) < 0) path = path.toReversed();
    path.setFillRule(Qt::WindingFill);
    return path;
}

GlyphPicture PictureOf(const QRawFont& font, quint32 glyph) {
    const QRect bounds = font.boundingRect(glyph).toAlignedRect();
    if (bounds.isEmpty()) return {};
    QImage image(bounds.size(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return {};
    image.fill(Qt::transparent);
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes({glyph});
    run.setPositions({QPointF(0, 0)});
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.drawGlyphRun(-QPointF(bounds.topLeft()), run);
    return {image, QRectF(bounds)};
}

}  // namespace

void GlyphShapes::Add(const QGlyphRun& run, QPointF offset) {
    static std::mutex lock;
    static QHash<QString, Face> faces;
    const QRawFont font = run.rawFont();
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> places = run.positions();
    const std::lock_guard guard(lock);
    const QString key = KeyOf(font);
    if (!faces.contains(key)) {
        if (faces.size() >= MostFaces) faces.clear();
        faces[key].coloured = HasColours(font);
    }
    Face& face = faces[key];
    if (face.outlines.size() + face.pictures.size() > MostGlyphs) face = {face.coloured, {}, {}};
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
        const QPointF at = places[i] + offset;
        if (face.coloured) {
            auto known = face.pictures.constFind(glyphs[i]);
            if (known == face.pictures.constEnd()) known = face.pictures.insert(glyphs[i], PictureOf(font, glyphs[i]));
            if (!known->image.isNull()) pictures.push_back({known->image, known->place.translated(at)});
            continue;
        }
        auto known = face.outlines.constFind(glyphs[i]);
        if (known == face.outlines.constEnd()) known = face.outlines.insert(glyphs[i], OutlineOf(font, glyphs[i]));
        outline.addPath(known->translated(at));
    }
    outline.setFillRule(Qt::WindingFill);
}

void GlyphShapes::AddRect(const QRectF& rect) {
    QPainterPath path;
    path.addRect(rect);
    outline.addPath(Turning(path) < 0 ? path.toReversed() : path);
    outline.setFillRule(Qt::WindingFill);
}

void GlyphShapes::Add(const GlyphShapes& shapes, const QTransform& transform) {
    outline.addPath(transform.map(shapes.outline));
    outline.setFillRule(Qt::WindingFill);
    const bool turned = transform.isRotating();
    for (const GlyphPicture& picture : shapes.pictures) {
        const QImage image = turned ? picture.image.transformed(QTransform(transform.m11(), transform.m12(),
                                                                           transform.m21(), transform.m22(), 0, 0))
                                    : picture.image;
        pictures.push_back({image, transform.mapRect(picture.place)});
    }
}

QRectF GlyphShapes::Bounds() const {
    QRectF bounds = outline.isEmpty() ? QRectF() : outline.boundingRect();
    for (const GlyphPicture& picture : pictures) bounds |= picture.place;
    return bounds;
}
