// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CSizePanel.h"

class CSizeWnd;
class QAbstractButton;

// The left panel of the resize tool: width and height, swap, the option to keep the proportions, OK and Cancel.
class CEditXiuGaiChiCun : public CSizePanel {
    Q_OBJECT

  public:
    // The host must outlive the panel. Without its skin the panel is empty.
    CEditXiuGaiChiCun(ToolHost& host, QWidget* parent);

    void OnFrameMessage(const FrameMessage& message) override;

  protected:
    void OnSideTyped(Side side) override;
    void OnOk() override;
    void OnCancel() override;
    void OnControl(const Notify& notify) override;
    void showEvent(QShowEvent* event) override;

  private:
    CSizeWnd* Canvas() const;
    void ShowPicture();
    void OnKeep();
    void OnSwap();

    QAbstractButton* m_keep = nullptr;
    QAbstractButton* m_swap = nullptr;
    bool m_keepRatio = false;
    // Width divided by height of the picture.
    double m_aspect = 1.0;
};
