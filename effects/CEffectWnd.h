// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CEffectLogic.h"
#include "CLookWnd.h"

// The canvas of the effect tool.
class CEffectWnd : public CLookWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = EffectTool;

    // The history must outlive the canvas.
    CEffectWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CLookWnd(host, Facts, m_logic, parent), m_logic(history) {}

    const CEffectLogic& Logic() const { return m_logic; }

  private:
    CEffectLogic m_logic;
};
