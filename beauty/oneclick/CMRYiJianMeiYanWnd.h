// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CLookWnd.h"
#include "CMRYiJianMeiYanLogic.h"

// The canvas of one-click beauty.
class CMRYiJianMeiYanWnd : public CLookWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = BeautyTool;

    // The history must outlive the canvas.
    CMRYiJianMeiYanWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CLookWnd(host, Facts, m_logic, parent), m_logic(history) {}

    const CMRYiJianMeiYanLogic& Logic() const { return m_logic; }

  protected:
    // Each look has its own.
    QString LeaveClick() const override {
        constexpr int Base = 888040100;
        return m_logic.HasLook() ? QString::number(Base + m_logic.Preset()) : QString();
    }

  private:
    CMRYiJianMeiYanLogic m_logic;
};
