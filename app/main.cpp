// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtWidgets/QApplication>

#include "CVNSSApp.h"

int main(int argc, char** argv) {
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("QUINCE"));
    // The frame's own loop decides when the program ends, not the last window.
    application.setQuitOnLastWindowClosed(false);
    return CVNSSApp(application).InitInstance(application.arguments().mid(1));
}
