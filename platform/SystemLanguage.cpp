// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemLanguage.h"

#include <QtCore/QStringList>

namespace {

int ChineseNumber(QLocale::Territory territory) {
    switch (territory) {
        case QLocale::Taiwan:
            return 1028;
        case QLocale::HongKong:
            return 3076;
        case QLocale::Singapore:
            return 4100;
        case QLocale::Macau:
            return 5124;
        default:
            return 2052;
    }
}

}  // namespace

int LanguageNumber(const QLocale& locale) {
    if (locale.language() == QLocale::Chinese) return ChineseNumber(locale.territory());
    return locale.language() == QLocale::English ? 1033 : 4096;
}

int SystemLanguageNumber() {
    // The languages of messages, in the user's order, rather than of dates and numbers.
    const QStringList languages = QLocale::system().uiLanguages();
    return LanguageNumber(languages.isEmpty() ? QLocale::system() : QLocale(languages.first()));
}
