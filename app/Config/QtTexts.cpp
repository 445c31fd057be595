// SPDX-License-Identifier: GPL-3.0-or-later
#include "QtTexts.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibraryInfo>

#include "Language.h"

QtTexts::QtTexts() {
    const bool chinese = LanguageId() == u"2052";
    QLocale::setDefault(chinese ? QLocale(QLocale::Chinese, QLocale::China) : QLocale(QLocale::English));
    if (chinese &&
        m_translator.load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_translator);
}

// Removing one that was not installed does nothing.
QtTexts::~QtTexts() {
    QCoreApplication::removeTranslator(&m_translator);
    QLocale::setDefault(m_before);
}
