// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextShape.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <map>
#include <mutex>
#include <QtGui/QPainter>

#include "Coverage.h"

namespace {

QImage SilhouetteOf(QImage image) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), Qt::black);
    return image;
}

// Pictures are reduced with all their pixels, which painting does not do, and kept for the next paint.
QImage Prepared(const QImage& image, QSize size, TextShape::Colours colours) {
    struct Key {
        qint64 image;
        int width, height;
        bool silhouette;
        auto operator<=>(const Key&) const = default;
    };
    static std::mutex lock;
    static std::map<Key, QImage> known;
    const bool silhouette = colours == TextShape::Colours::Silhouette;
    const bool reduces = size.width() < image.width() && size.height() < image.height();
    const QSize wanted = reduces ? size : image.size();
    const std::lock_guard guard(lock);
    if (known.size() > 512) known.clear();
    QImage& prepared = known[{image.cacheKey(), wanted.width(), wanted.height(), silhouette}];
    if (prepared.isNull()) {
        prepared = reduces ? image.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation) : image;
        if (silhouette) prepared = SilhouetteOf(prepared);
    }
    return prepared;
}

// What of the device can be painted, in its pixels. A widget's own pixels begin anywhere on the surface behind it, so
// whoever paints one sets a clip.
QRect ClipOf(const QPainter& painter) {
    if (painter.hasClipping()) return painter.deviceTransform().mapRect(painter.clipBoundingRect()).toAlignedRect();
    const QPaintDevice& device = *painter.device();
    return {QPoint(0, 0), QSize(device.width(), device.height()) * device.devicePixelRatio()};
}

void DrawPicture(QPainter& painter, const GlyphPicture& picture, const QColor& colour, TextShape::Colours colours) {
    const double scale = std::hypot(painter.worldTransform().m11(), painter.worldTransform().m12());
    const QSize size(std::max(1, qRound(picture.place.width() * scale)),
                     std::max(1, qRound(picture.place.height() * scale)));
    painter.setOpacity(colour.alphaF());
    painter.drawImage(picture.place, Prepared(picture.image, size, colours));
    painter.setOpacity(1.0);
}

}  // namespace

std::shared_ptr<const TextShape> TextShape::Make(const QString& text, const TextLook& look, const TextShape* before) {
    if (text.isEmpty() || look.family.isEmpty()) return nullptr;
    auto shape = std::make_shared<TextShape>();
    shape->m_look = look;
    const bool sameLook = before && before->m_look == look;
    for (const QString& line : text.split(u'\n')) {
        std::shared_ptr<const TextLine> made;
        if (sameLook)
            for (const Placed& known : before->m_lines)
                if (!made && known.line->text == line) made = known.line;
        shape->m_lines.push_back({made ? made : TextLine::Make(line, look), {}});
    }
    shape->PlaceLines();
    return shape;
}

void TextShape::PlaceLines() {
    double width = 0, top = 0;
    for (const Placed& placed : m_lines) width = std::max(width, placed.line->width);
    m_bounds = QRectF(0, 0, width, 0);
    for (Placed& placed : m_lines) {
        placed.at = {placed.line->rightToLeft ? width - placed.line->width : 0.0, top};
        top += placed.line->height;
        m_bounds.setBottom(std::max(m_bounds.bottom(), top));
        const QRectF ink = placed.line->shapes.Bounds();
        if (!ink.isNull()) m_bounds |= ink.translated(placed.at);
    }
    m_size = m_bounds.size() / TextEm;
    if (m_look.vertical) m_size.transpose();
}

void TextShape::Draw(QPainter& painter, QPointF at, double em, const QColor& colour, Colours colours) const {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(at);
    painter.scale(em / TextEm, em / TextEm);
    if (m_look.vertical) {
        painter.translate(m_bounds.height(), 0);
        painter.rotate(90);
    }
    painter.translate(-m_bounds.topLeft());
    DrawOutlines(painter, colour);
    for (const Placed& placed : m_lines) {
        painter.translate(placed.at);
        for (const GlyphPicture& picture : placed.line->shapes.pictures) DrawPicture(painter, picture, colour, colours);
        painter.translate(-placed.at);
    }
    painter.restore();
}

void TextShape::DrawOutlines(QPainter& painter, const QColor& colour) const {
    const QTransform device = painter.deviceTransform();
    Coverage coverage;
    for (const Placed& placed : m_lines)
        coverage.Add(placed.line->shapes.outline, QTransform::fromTranslate(placed.at.x(), placed.at.y()) * device);
    if (coverage.Fill(painter, ClipOf(painter), colour)) return;
    for (const Placed& placed : m_lines) painter.fillPath(placed.line->shapes.outline.translated(placed.at), colour);
}
