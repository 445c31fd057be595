// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

// What to do with pictures that have a side above 2000 pixels: always reduce (1), never (2), ask each time (0), as
// [Tip] DlgOpenImageLessen of Config.ini keeps it. Only Save and Enter write it; everything else leaves it as it is.
// ShowModal gives ResultSaved when it was written.
class CSizeSettingDlg : public CXMLWnd {
    Q_OBJECT

  public:
    enum { ResultSaved = 1, ResultCancelled = 2 };

    CSizeSettingDlg();

  protected:
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool OnCloseRequest() override;

  private:
    void Save();
};
