// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShortName.h"

#include <QtCore/QList>

namespace {

// Counts characters and not halves of surrogate pairs, which a cut must never separate.
QString Ends(const QString& text, int longest, int last) {
    const QList<uint> characters = text.toUcs4();
    const auto count = static_cast<int>(characters.size());
    if (count <= longest) return text;
    const auto part = [&](int from, int length) {
        return QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.constData()) + from, length);
    };
    return part(0, 3) + QStringLiteral("...") + part(count - last, last);
}

}  // namespace

QString ShortenName(const QString& name) {
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot < 0) return Ends(name, 10, 7);
    return Ends(name.left(dot), 9, 3) + name.mid(dot);
}
