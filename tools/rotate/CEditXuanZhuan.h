// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CToolPanel.h"

class CRotateWnd;
class CSliderCtrl;
class QAbstractButton;
class QLabel;
class ToolHost;

// The left panel of the rotate tool: quarter turns, mirrors, the free angle and the way back. It holds no truth: after
// each act it shows what the canvas has.
class CEditXuanZhuan : public CToolPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel. Without its skin the panel is empty.
    CEditXuanZhuan(ToolHost& host, QWidget* parent);

    void OnFrameMessage(const FrameMessage& message) override;

  protected:
    void OnNotify(const Notify& notify) override;
    // The page was turned to: a new visit may have begun meanwhile.
    void showEvent(QShowEvent* event) override;

  private:
    CRotateWnd* Canvas() const;
    void OnButton(const QString& name);
    void OnAngle(const Notify& notify);
    // Shows the canvas's state; with another tool's canvas everything is at rest.
    void Refresh();

    ToolHost& m_host;
    CSliderCtrl* m_slider = nullptr;
    QLabel* m_value = nullptr;
    QAbstractButton* m_restore = nullptr;
};
