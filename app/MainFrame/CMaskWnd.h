// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

// The dimming cover over the main frame while a dialog is up. It lies over the frame's client and takes no clicks.
class CMaskWnd : public CXMLWnd {
    Q_OBJECT

  public:
    explicit CMaskWnd(QWidget* frame);
    // Windows that need the mask may lie over one another: it goes with the last of them.
    void ShowMask(bool show);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    int m_users = 0;
};
