// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CPictureWnd.h"
#include "SizeLogic.h"

// The canvas of the resize tool: shows the picture, and gives it another size as a task.
class CSizeWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr int ToolNumber = 4;
    // Code of NotifyView that this tool sends beside those of every tool, with value 1: the picture has another size.
    static constexpr int SizeCode = 1;

    // The history must outlive the canvas.
    CSizeWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance());

    // Gives the picture this size and records the step, as a task with the progress window. False when nothing came of
    // it: the size is the present one or not possible, memory ran out, or the user cancelled; everything is then as it
    // was. Main thread.
    bool ApplySize(int w, int h);

    const CSizeLogic& Logic() const { return m_logic; }

  protected:
    CanvasLogic& PictureLogic() override { return m_logic; }
    void OnHistoryMoved() override;

  private:
    CSizeLogic m_logic;
};
