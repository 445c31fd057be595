// SPDX-License-Identifier: GPL-3.0-or-later
#include "PixelUnder.h"

#include <algorithm>
#include <cmath>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include "Truncate.h"

// The window is asked, not the desktop: some desktops show a program nothing but itself.
std::optional<QRgb> PixelUnder(QPointF global) {
    const QWidget* at =
        QApplication::widgetAt(QPoint(Truncate(std::floor(global.x())), Truncate(std::floor(global.y()))));
    if (!at) return {};
    QWidget* window = at->window();
    const QPointF local = window->mapFromGlobal(global);
    const QPoint corner(Truncate(std::floor(local.x())), Truncate(std::floor(local.y())));
    const QImage shot = window->grab(QRect(corner, QSize(1, 1))).toImage();
    if (shot.isNull()) return {};
    const QPointF inside = (local - corner) * shot.devicePixelRatio();
    return shot.pixel(std::clamp(Truncate(inside.x()), 0, shot.width() - 1),
                      std::clamp(Truncate(inside.y()), 0, shot.height() - 1)) &
           0xFFFFFF;
}
