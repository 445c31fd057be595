// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CSizePanel.h"

class QAbstractButton;
class QComboBox;

// The left panel of the crop tool: the selection's size, the list of proportions, the lock of the present one, swap, OK
// and Cancel.
class CEditJianCai : public CSizePanel {
    Q_OBJECT

  public:
    CEditJianCai(ToolHost& host, QWidget* parent);

    void OnFrameMessage(const FrameMessage& message) override;

    // The proportion is kept, whether chosen from the list or locked.
    bool IsLocked() const { return m_lockState; }

  protected:
    void OnSideTyped(Side side) override;
    void OnOk() override;
    void OnCancel() override;
    void OnControl(const Notify& notify) override;
    void Refresh() override { ShowSelection(); }

  private:
    void FindControls();
    QSize PictureSize() const;
    double RatioOf(int item) const;
    void TakeUpPicture();
    void OnItem(int item);
    void OnLock();
    void OnSwap();
    void FitRatioToImage();
    void Unlock();
    void RestState();
    void ShowSelection();
    void ShowState();

    QComboBox* m_ratios = nullptr;
    QAbstractButton* m_lock = nullptr;
    QAbstractButton* m_swap = nullptr;
    // Of the screen in physical pixels.
    QSize m_screen;
    // No proportion is chosen from the list.
    bool m_freeMode = true;
    bool m_lockState = false;
    double m_ratioHW = 1.0;
};
