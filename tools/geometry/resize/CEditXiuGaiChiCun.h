// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CSizePanel.h"

class QAbstractButton;

// The left panel of the resize tool: width and height, swap, the option to keep the proportions, OK and Cancel.
class CEditXiuGaiChiCun : public CSizePanel {
    Q_OBJECT

  public:
    CEditXiuGaiChiCun(ToolHost& host, QWidget* parent);

  protected:
    void OnSideTyped(Side side) override;
    void OnOk() override;
    void OnCancel() override { Refresh(); }
    void OnControl(const Notify& notify) override;
    void Refresh() override;

  private:
    void Keep(bool keep);
    void OnSwap();

    QAbstractButton* m_keep = nullptr;
    QAbstractButton* m_swap = nullptr;
    bool m_keepRatio = false;
    // Height divided by width of the picture.
    double m_ratio = 1.0;
};
