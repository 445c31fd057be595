// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

// The question before an unsaved picture is thrown away. ShowModal gives ResultYes for saving first, ResultNo for going
// on without, anything else (close box, Esc) for staying.
class CSaveMessageBox : public CXMLWnd {
    Q_OBJECT

  public:
    // Without a parent: ShowModal gives one, and the keyboard focus would not survive a change.
    CSaveMessageBox();

  protected:
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;
};

// Shows it over `owner` and returns its result.
int AskSaveFirst(QWidget* owner);
