// SPDX-License-Identifier: GPL-3.0-or-later
#include "CanvasPaint.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "BitmapView.h"

namespace {

QPixmap Chequer() {
    constexpr int side = 8;
    QPixmap pattern(2 * side, 2 * side);
    pattern.fill(Qt::white);
    QPainter painter(&pattern);
    painter.fillRect(0, 0, side, side, QColor(0xE4, 0xE4, 0xE4));
    painter.fillRect(side, side, side, side, QColor(0xE4, 0xE4, 0xE4));
    return pattern;
}

}  // namespace

QPixmap LoadTexture(const QString& path) {
    QPixmap texture(path);
    return texture.isNull() ? Chequer() : texture;
}

void PaintTexture(QPainter& painter, const QRect& rect, const QPixmap& texture, double pixelRatio) {
    if (rect.isEmpty()) return;
    QBrush brush(texture);
    brush.setTransform(QTransform::fromScale(pixelRatio, pixelRatio));
    painter.setBrushOrigin(rect.topLeft());
    painter.fillRect(rect, brush);
}

void DrawBitmap(QPainter& painter, const QRect& place, const Bitmap& bitmap, bool opaque) {
    const QImage view = ViewOf(bitmap, opaque ? AlphaUse::Ignore : AlphaUse::Straight);
    if (view.size() == place.size()) return painter.drawImage(place.topLeft(), view);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, view);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
}
