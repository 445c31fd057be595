// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "CXMLWnd.h"

// About: the program's version and licence, and the way to its website where this installation knows one.
class CAboutDlg : public CXMLWnd {
    Q_OBJECT

  public:
    // Opens a page in the user's browser.
    using OpenPage = std::function<bool(const QString& address)>;

    // `website` empty: the button is disabled and says why.
    CAboutDlg(const QString& website, OpenPage openPage);

  protected:
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    const QString m_website;
    const OpenPage m_openPage;
};
