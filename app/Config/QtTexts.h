// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QLocale>
#include <QtCore/QTranslator>

// Qt's own dialogs, buttons and menus speak the program's language as long as this lives, whatever the system's is: its
// texts are taken from the translations that come with Qt (English is what Qt speaks by itself), and names of kinds of
// files from the system's in that language. Main thread; made once the language is settled and an application object is
// there, before the first window.
class QtTexts {
  public:
    QtTexts();
    ~QtTexts();
    QtTexts(const QtTexts&) = delete;
    QtTexts& operator=(const QtTexts&) = delete;

  private:
    const QLocale m_before;
    QTranslator m_translator;
};
