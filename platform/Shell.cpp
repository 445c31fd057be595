// SPDX-License-Identifier: GPL-3.0-or-later
#include "Shell.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>

#include "AppPaths.h"

QString ProgramFileFor(const QString& path) {
    const QFileInfo file(NativePath(path));
    const bool companion = file.suffix().compare(QLatin1String("exe"), Qt::CaseInsensitive) == 0;
    return companion ? AppPath(file.completeBaseName()) : file.filePath();
}

bool StartProgram(const QString& path, const QStringList& arguments) {
    const QFileInfo program(ProgramFileFor(path));
    if (!program.isFile() || !program.isExecutable()) return false;
    return QProcess::startDetached(program.absoluteFilePath(), arguments);
}

bool OpenFolder(const QString& path) {
    const QFileInfo folder(NativePath(path));
    // The desktop's own opener, so that this layer needs no window library.
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (path.isEmpty() || !folder.isDir() || opener.isEmpty()) return false;
    return QProcess::startDetached(opener, {folder.absoluteFilePath()});
}
