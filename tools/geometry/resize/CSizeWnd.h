// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CPictureWnd.h"
#include "CSizeLogic.h"

// The canvas of the resize tool: shows the picture, and gives it another size as a task.
class CSizeWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = ResizeTool;

    // The history must outlive the canvas.
    CSizeWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CPictureWnd(host, Facts, m_logic, parent), m_logic(history) {}

    // Gives the picture this size and records the step, as a task with the progress window. False when nothing came of
    // it: the size is the present one or not possible, memory ran out, or the user cancelled; everything is then as it
    // was.
    bool ApplySize(int w, int h);

    const CSizeLogic& Logic() const { return m_logic; }

  private:
    CSizeLogic m_logic;
};
