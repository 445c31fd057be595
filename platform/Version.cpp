// SPDX-License-Identifier: GPL-3.0-or-later
#include "Version.h"

QString GetVersionText() {
    return VersionTextFrom(QStringLiteral(QUINCE_VERSION));
}

QString VersionTextFrom(const QString& data) {
    if (data.isEmpty()) return QStringLiteral("None VerSion Supprot");
    return QString(data).replace(u',', u'.').remove(u' ');
}
