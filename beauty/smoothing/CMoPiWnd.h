// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushWnd.h"
#include "CMoPiLogic.h"

// The canvas of the skin smoothing tool.
class CMoPiWnd : public CBrushWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = SmoothTool;

    // The history must outlive the canvas.
    CMoPiWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CBrushWnd(host, Facts, m_logic, parent), m_logic(history) {}

    // 0 to 50, for the strokes that follow.
    void SetStrength(int value) {
        if (value != m_logic.Strength())
            PerformTask([&](CObjProgress* progress) { return m_logic.SetStrength(value, progress); });
    }
    const CMoPiLogic& Logic() const { return m_logic; }

  private:
    CMoPiLogic m_logic;
};
