// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

enum class SizeAnswer { Keep, Reduce };

// The question whether a picture with a side above 2000 pixels is to be made smaller. With OptCheck a yes or no is
// stored as the answer for all later pictures ([Tip] DlgOpenImageLessen of Config.ini: 1 reduces, 2 keeps). Close box
// and Esc keep the size and store nothing.
class CSizeAdjustDlg : public CXMLWnd {
    Q_OBJECT

  public:
    // The results of ShowModal. A plain close has the same number as yes, so it is turned into ResultNot.
    enum { ResultReduce = 1, ResultNot = 7 };

    // Without a parent: ShowModal gives one, and the keyboard focus would not survive a change.
    CSizeAdjustDlg();

  protected:
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool OnCloseRequest() override;

  private:
    void Answer(int result, const QString& stored);

    bool m_dontAskAgain = false;
};

// Shows it over `owner`.
SizeAnswer AskSizeAdjust(QWidget* owner);
