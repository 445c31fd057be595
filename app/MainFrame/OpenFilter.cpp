// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenFilter.h"

#include <array>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>

#include "AppPaths.h"
#include "Language.h"

namespace {

// The language file has a line for each: name, "|", and the patterns with ";" between them.
constexpr std::array Kinds = {"ids_openkind_all", "ids_openkind_jpeg", "ids_openkind_bmp", "ids_openkind_gif",
                              "ids_openkind_png"};

QString FilterOf(const QString& kind) {
    QStringList patterns = kind.section(u'|', 1).split(u';', Qt::SkipEmptyParts);
    for (const QString& pattern : QStringList(patterns)) patterns << pattern.toUpper();
    patterns.removeDuplicates();
    return QStringLiteral("%1 (%2)").arg(kind.section(u'|', 0, 0), patterns.join(u' '));
}

}  // namespace

QString OpenFilter() {
    QStringList filters;
    for (const char* kind : Kinds) filters << FilterOf(LanguageText(QLatin1String(kind)));
    return filters.join(QStringLiteral(";;"));
}

QString FolderToOpenFrom(const QString& heldPath) {
    if (!heldPath.isEmpty() && !IsInTemp(heldPath)) return QFileInfo(heldPath).path();
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QFileInfo(pictures).isDir() ? pictures : QDir::homePath();
}
