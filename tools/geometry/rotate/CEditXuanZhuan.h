// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CToolPanel.h"

class CSliderCtrl;
class QAbstractButton;
class QLabel;

// The left panel of the rotate tool: quarter turns, mirrors, the free angle and the way back.
class CEditXuanZhuan : public CToolPanel {
    Q_OBJECT

  public:
    CEditXuanZhuan(ToolHost& host, QWidget* parent);

  protected:
    void OnNotify(const Notify& notify) override;
    void Refresh() override;

  private:
    void OnButton(const QString& name);
    void OnAngle(const Notify& notify);

    CSliderCtrl* m_slider = nullptr;
    QLabel* m_value = nullptr;
    QAbstractButton* m_restore = nullptr;
};
