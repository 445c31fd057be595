// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchWindows.h"

#include <memory>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include "Language.h"

namespace {

std::unique_ptr<QApplication>& Application() {
    static std::unique_ptr<QApplication> application;
    return application;
}

}  // namespace

void NeedWindows() {
    if (QCoreApplication::instance()) return;
    static int argc = 1;
    static char name[] = "quince_bench";
    static char* argv[] = {name, nullptr};
    static const QTemporaryDir home;
    qputenv("QUINCE_HOME", home.path().toUtf8());
    Application() = std::make_unique<QApplication>(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    SetLanguage(QStringLiteral("1033"));
}

void EndWindows() {
    Application().reset();
}
