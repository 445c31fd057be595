// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestHome.h"

#include <memory>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

namespace TestHome {
namespace {

std::unique_ptr<QTemporaryDir> g_home;

// Test programs lie in <build>/tests, the program with its staged resources in <build>/bin.
QString StagedResources() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../bin"));
}

}  // namespace

void Create() {
    g_home = std::make_unique<QTemporaryDir>();
    if (!g_home->isValid()) qFatal("no temporary folder for the tests");
    const QDir staged(StagedResources());
    for (const QFileInfo& entry : staged.entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot)) {
        if (entry.isExecutable() && entry.isFile()) continue;
        const QString name = entry.fileName();
        if (name == QStringLiteral("Temp") || name == QStringLiteral("Config.ini")) continue;
        QFile::link(entry.absoluteFilePath(), g_home->filePath(name));
    }
    qputenv("QUINCE_HOME", g_home->path().toUtf8());
}

void Remove() {
    g_home.reset();
}

QString Path() {
    return g_home ? g_home->path() : QString();
}

}  // namespace TestHome
