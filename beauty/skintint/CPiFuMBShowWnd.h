// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushWnd.h"
#include "CPiFuMBLogic.h"

// The canvas of the skin tone tool.
class CPiFuMBShowWnd : public CBrushWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = TintTool;

    // The history must outlive the canvas.
    CPiFuMBShowWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CBrushWnd(host, Facts, m_logic, parent), m_logic(history) {}

    // The tone of the strokes that follow.
    void SetColor(int red, int green, int blue) {
        PerformTask([&](CObjProgress* progress) { return m_logic.SetColor(red, green, blue, progress); });
    }
    const CPiFuMBLogic& Logic() const { return m_logic; }

  private:
    CPiFuMBLogic m_logic;
};
