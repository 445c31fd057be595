// SPDX-License-Identifier: GPL-3.0-or-later
#include "Language.h"

#include "AppPaths.h"
#include "IniFile.h"
#include "SharedText.h"

namespace {

SharedText g_id;
SharedText g_title;

}  // namespace

void SetLanguage(const QString& id) {
    g_id.Set(id);
}

QString LanguageId() {
    const QString id = g_id.Get();
    return id.isEmpty() ? QStringLiteral("1033") : id;
}

QString LanguageIni() {
    return ResourcePath(LanguageDirName() + QStringLiteral("/CoreStringLanguage.ini"));
}

QString LanguageDirName() {
    return QStringLiteral("/I18N/") + LanguageId();
}

QString LanguageText(const QString& key, const QString& section) {
    return GetProfileString(section, key, QString(), LanguageIni());
}

QString AppTitle() {
    const QString title = g_title.Get();
    return title.isEmpty() ? QStringLiteral("QUINCE") : title;
}

void SetAppTitle(const QString& title) {
    g_title.Set(title);
}
