// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"
#include "SharedPicture.h"

// Sharing: takes the picture on to what the desktop offers: the clipboard, another program, a mail, the file manager.
// It keeps no account and sends nothing itself.
class CShareWnd : public CXMLWnd {
    Q_OBJECT

  public:
    // `path` of the picture; without one the window says so.
    CShareWnd(const QString& path, const QString& title);

    const SharedPicture& Picture() const { return m_picture; }

  protected:
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void Copy();
    // Says what became of an act: this text, or that the desktop has nothing for it.
    void Report(bool done, const char* key);

    SharedPicture m_picture;
};
