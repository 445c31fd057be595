// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

namespace {

QString PathOf(const QString& argument) {
    if (!argument.startsWith(QLatin1String("file://"), Qt::CaseInsensitive)) return argument;
    const QString path = QUrl(argument).toLocalFile();
    return path.isEmpty() ? argument : path;
}

// By hand, since QFileInfo takes a name that begins with a colon for one of Qt's own resources.
QString Absolute(const QString& path) {
    return path.startsWith(u'/') ? path : QDir::cleanPath(QDir::currentPath() + u'/' + path);
}

QString FirstFileName(const QStringList& arguments) {
    bool options = true;
    for (const QString& argument : arguments) {
        if (options && argument == QLatin1String("--")) {
            options = false;
        } else if (!argument.isEmpty() && !(options && argument.startsWith(u'-'))) {
            return PathOf(argument);
        }
    }
    return {};
}

}  // namespace

QString PictureFromCommandLine(const QStringList& arguments, const std::function<bool(const QString&)>& exists) {
    const QString raw = arguments.join(u' ');
    QString path = raw;
    if (!exists(raw)) {
        const QString name = FirstFileName(arguments);
        if (!name.isEmpty()) path = name;
    }
    return exists(path) ? Absolute(path) : path;
}

QString PictureFromCommandLine(const QStringList& arguments) {
    return PictureFromCommandLine(
        arguments, [](const QString& path) { return !path.isEmpty() && QFileInfo::exists(Absolute(path)); });
}
