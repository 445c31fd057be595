// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CClickRepairWnd.h"
#include "CXiaoChuHYLogic.h"

// The canvas of the red eye tool.
class CXiaoChuHYWnd : public CClickRepairWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = RedEyeTool;

    // The history must outlive the canvas.
    CXiaoChuHYWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CClickRepairWnd(host, Facts, m_logic, parent), m_logic(history) {}

    const CXiaoChuHYLogic& Logic() const { return m_logic; }

  private:
    CXiaoChuHYLogic m_logic;
};
