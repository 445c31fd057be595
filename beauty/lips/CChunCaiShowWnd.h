// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CChunCaiLogic.h"
#include "CMaskBrushWnd.h"

// The canvas of the lip colour tool.
class CChunCaiShowWnd : public CMaskBrushWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = LipTool;

    // The history must outlive the canvas.
    CChunCaiShowWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CMaskBrushWnd(host, Facts, m_logic, parent), m_logic(history) {}

    void SetColor(int red, int green, int blue) {
        ChangeAsTask([&](CObjProgress* progress) { return m_logic.SetColor(red, green, blue, progress); });
    }
    // -50 to 50. Drag: a slider moves, the view alone follows. Set: the picture, and its step.
    void DragBrightness(int brightness) {
        Preview([&] { m_logic.SetBrightnessView(brightness); });
    }
    void SetBrightness(int brightness) {
        Change([&] { m_logic.SetBrightnessFull(brightness); });
    }
    const CChunCaiLogic& Logic() const { return m_logic; }

  private:
    CChunCaiLogic m_logic;
};
