// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

class QAbstractButton;

// Base of the skinned drop-downs of the bars. It opens under an option button, which stays checked meanwhile, and hides
// on Esc, when it loses the focus, or at a press beside it. Main thread only.
class CPopupWnd : public CXMLWnd {
    Q_OBJECT

  public:
    // `option` opens it, owns nothing and must outlive it.
    explicit CPopupWnd(QAbstractButton* option);

  protected:
    // Shows the window of that size with its left edge `fromRight` pixels left of the option's right edge (0: at its
    // left edge), held inside the screen.
    void OpenUnder(QSize size, int fromRight);
    // The same with the window's lower edge on the option's upper one.
    void OpenAbove(QSize size, int fromRight);

    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool event(QEvent* event) override;

    QAbstractButton* m_option;

  private:
    // `corner` in the option's pixels.
    void OpenAt(QPoint corner, QSize size);
};
