// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CPopupWnd.h"

// Drop-down menu of the compare button.
class CCompareListWnd : public CPopupWnd {
    Q_OBJECT

  public:
    explicit CCompareListWnd(QAbstractButton* option);
    void Open();

  signals:
    // The user chose the two pictures side by side. The menu is closed by then.
    void SideBySideChosen();

  protected:
    void OnNotify(const Notify& notify) override;
};
