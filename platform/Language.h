// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// The language of the interface and its texts. Set at start, before any worker; readable on any thread.

// "2052" (Simplified Chinese) or "1033" (English): the folder under I18N.
void SetLanguage(const QString& id);
QString LanguageId();

// The language's file of texts, I18N/<id>/CoreStringLanguage.ini.
QString LanguageIni();
// "/I18N/<id>": the language's folder, to be put behind a base folder.
QString LanguageDirName();

// A text of the language file; empty when the file, the section or the key is missing.
QString LanguageText(const QString& key, const QString& section = QStringLiteral("Language"));

// The program's caption, for windows and messages; "QUINCE" until it is set.
QString AppTitle();
void SetAppTitle(const QString& title);
