// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenFilter.h"

#include <QtCore/QStringList>

namespace {

// "*.jpg" as "*.[jJ][pP][gG]": the dialogs of some systems tell the cases apart.
QString AnyCase(const QString& pattern) {
    QString out;
    for (const QChar c : pattern) {
        if (c.isLetter())
            out += QLatin1Char('[') + c.toLower() + c.toUpper() + QLatin1Char(']');
        else
            out += c;
    }
    return out;
}

}  // namespace

QString OpenFilterText() {
    return QStringLiteral(
        "All File |*.*|Jpeg File(*.jpg;*.jpeg;*.jpe)|*.jpg;*.jpeg;*.jpe|Windows(*.bmp)|*.bmp|CompuServe "
        "GIF(*.gif)|*.gif|Png文件(*.png)|*.png||");
}

QString OpenFilter() {
    const QStringList parts = OpenFilterText().split(QLatin1Char('|'), Qt::SkipEmptyParts);
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns;
        for (const QString& pattern : parts[i + 1].split(QLatin1Char(';')))
            patterns << (pattern == u"*.*" ? QStringLiteral("*") : AnyCase(pattern));
        const QString label = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
        filters << QStringLiteral("%1 (%2)").arg(label, patterns.join(QLatin1Char(' ')));
    }
    return filters.join(QStringLiteral(";;"));
}
