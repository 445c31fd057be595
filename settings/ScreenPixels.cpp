// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScreenPixels.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

QSize ScreenPixels() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize() : QSize();
}
