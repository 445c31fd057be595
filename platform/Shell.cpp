// SPDX-License-Identifier: GPL-3.0-or-later
#include "Shell.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>

#include "AppPaths.h"

QString ProgramFileFor(const QString& path) {
    const QFileInfo file(NativePath(path));
    const bool companion = file.suffix().compare(QLatin1String("exe"), Qt::CaseInsensitive) == 0;
    return companion ? ProgramPath(file.completeBaseName()) : file.filePath();
}

bool StartProgram(const QString& path, const QStringList& arguments) {
    const QFileInfo program(ProgramFileFor(path));
    if (!program.isFile() || !program.isExecutable()) return false;
    return QProcess::startDetached(program.absoluteFilePath(), arguments);
}

namespace {

// The desktop's own tools, so that this layer needs no window library.
bool StartDesktopTool(const char* tool, const QStringList& arguments) {
    const QString program = QStandardPaths::findExecutable(QLatin1String(tool));
    return !program.isEmpty() && QProcess::startDetached(program, arguments);
}

}  // namespace

bool OpenFolder(const QString& path) {
    const QFileInfo folder(NativePath(path));
    return !path.isEmpty() && folder.isDir() && StartDesktopTool("xdg-open", {folder.absoluteFilePath()});
}

bool OpenFile(const QString& path) {
    const QFileInfo file(NativePath(path));
    return !path.isEmpty() && file.isFile() && StartDesktopTool("xdg-open", {file.absoluteFilePath()});
}

bool OpenPage(const QString& address) {
    return address.startsWith(QLatin1String("https://"), Qt::CaseInsensitive) &&
           StartDesktopTool("xdg-open", {address});
}

bool WriteMail(const QString& subject, const QString& attachment) {
    const QFileInfo file(NativePath(attachment));
    return file.isFile() && StartDesktopTool("xdg-email", {QStringLiteral("--subject"), subject,
                                                           QStringLiteral("--attach"), file.absoluteFilePath()});
}
