// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

struct Addresses;

// What is sent: says in plain words what goes over the network in this installation and where to, shows the last report
// word for word, and turns the statistics off. Only Save writes the switch.
class CNetworkDlg : public CXMLWnd {
    Q_OBJECT

  public:
    explicit CNetworkDlg(const Addresses& addresses);

    // What the window says for these addresses, in the interface's language.
    static QString TextFor(const Addresses& addresses);

  protected:
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;
};
