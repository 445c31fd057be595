// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CWarpWnd.h"
#include "CYanJingFDLogic.h"

// The canvas of the eye enlarging tool.
class CYanJingFDWnd : public CWarpWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = EnlargeTool;

    // The history must outlive the canvas.
    CYanJingFDWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CWarpWnd(host, Facts, m_logic, parent), m_logic(history) {}

    const CYanJingFDLogic& Logic() const { return m_logic; }

  private:
    CYanJingFDLogic m_logic;
};
