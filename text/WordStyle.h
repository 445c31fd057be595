// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtGui/QRgb>

// What a text says and looks like, as panel and canvas tell each other.
struct WordStyle {
    QString text;
    QString fontName = QStringLiteral("Arial");
    // Em size in picture pixels.
    int fontSize = 10;
    double angle = 0;
    // 0xRRGGBB.
    QRgb colour = 0xFFFFFF;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool shadow = false;
    bool vertical = false;
    int alphaPercent = 100;
    bool operator==(const WordStyle&) const = default;
};
