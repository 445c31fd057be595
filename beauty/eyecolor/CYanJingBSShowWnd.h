// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CMaskBrushWnd.h"
#include "CYanJingBSLogic.h"

// The canvas of the eye colour tool.
class CYanJingBSShowWnd : public CMaskBrushWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = EyeColorTool;

    // The history must outlive the canvas.
    CYanJingBSShowWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CMaskBrushWnd(host, Facts, m_logic, parent), m_logic(history) {}

    void SetColor(int red, int green, int blue) {
        ChangeAsTask([&](CObjProgress* progress) { return m_logic.SetColor(red, green, blue, progress); });
    }
    const CYanJingBSLogic& Logic() const { return m_logic; }

  private:
    CYanJingBSLogic m_logic;
};
