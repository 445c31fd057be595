// SPDX-License-Identifier: GPL-3.0-or-later
#include "Style.h"

#include <QtCore/QFile>
#include <QtGui/QFont>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleFactory>

#include "AppPaths.h"

namespace Style {

void Apply(QApplication& application) {
    // One drawing on every desktop; the style sheet builds on it.
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font;
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Noto Sans CJK SC"), QStringLiteral("Noto Sans"),
                      QStringLiteral("sans-serif")});
    font.setPixelSize(12);
    application.setFont(font);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Text);
    palette.setColor(QPalette::Text, Text);
    palette.setColor(QPalette::ButtonText, Text);
    palette.setColor(QPalette::Highlight, Accent);
    application.setPalette(palette);
    QFile sheet(ResourcePath(QStringLiteral("Style/quince.qss")));
    if (!sheet.open(QIODevice::ReadOnly)) return;
    QString text = QString::fromUtf8(sheet.readAll());
    text.replace(QStringLiteral("@Images@"), ResourcePath(QStringLiteral("Images")));
    application.setStyleSheet(text);
}

}  // namespace Style
