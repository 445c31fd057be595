// SPDX-License-Identifier: GPL-3.0-or-later
#include "Canvas.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

bool WriteSprite(const QString& folder, const QString& name, int width, int height,
                 const std::function<void(QPainter&)>& draw) {
    for (const int scale : {1, 2}) {
        QImage image(width * scale, height * scale, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        draw(painter);
        painter.end();
        const QString path =
            folder + QLatin1Char('/') + name + (scale == 1 ? QStringLiteral(".png") : QStringLiteral("@2x.png"));
        if (!QDir().mkpath(QFileInfo(path).path())) return false;
        if (!image.convertToFormat(QImage::Format_ARGB32).save(path, "PNG")) return false;
    }
    return true;
}
