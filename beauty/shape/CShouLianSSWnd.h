// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CShouLianSSLogic.h"
#include "CWarpWnd.h"

// The canvas of the slimming tool.
class CShouLianSSWnd : public CWarpWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = SlimTool;

    // The history must outlive the canvas.
    CShouLianSSWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CWarpWnd(host, Facts, m_logic, parent), m_logic(history) {}

    const CShouLianSSLogic& Logic() const { return m_logic; }

  private:
    CShouLianSSLogic m_logic;
};
