// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CMaskBrushWnd.h"
#include "CYaChiMBLogic.h"

// The canvas of the teeth tool.
class CYaChiMBWnd : public CMaskBrushWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = TeethTool;

    // The history must outlive the canvas.
    CYaChiMBWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CMaskBrushWnd(host, Facts, m_logic, parent), m_logic(history) {}

    const CYaChiMBLogic& Logic() const { return m_logic; }

  private:
    CYaChiMBLogic m_logic;
};
