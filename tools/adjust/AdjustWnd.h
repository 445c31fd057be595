// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AdjustLogic.h"
#include "CPictureWnd.h"

// The canvas of the adjust tool: it maps the contract of canvases and the panel's wishes to the logic object, and
// paints the logic's view bitmap.
class CAdjustWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr int ToolNumber = 1;
    // Code of NotifyView that this tool sends beside those of every tool: the panel's values changed (the panel fetches
    // them by PanelValues).
    static constexpr int ValuesCode = 4;

    // The history must outlive the canvas.
    CAdjustWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance());

    bool IsStrokeHeld() const override;

    // For the panel, on the main thread; each paints before it returns.

    AdjustPanelValues PanelValues() const { return m_logic.GetPanelValues(); }
    int Value(int index) const { return m_logic.GetValue(index); }
    // A slider moves: shows the value, leaves the history alone.
    void PreviewValue(int index, int value);
    // A slider settles: shows the value, records the step and tells the frame.
    void CommitValue(int index, int value);
    // Runs a scene as a task with the progress window. False when nothing came of it: the picture, the values and the
    // history are then as they were.
    bool RunScene(int scenario);
    void ResetScene();
    void ResetBasic();
    void ResetAdvance();

    const CAdjustLogic& Logic() const { return m_logic; }

  protected:
    CanvasLogic& PictureLogic() override { return m_logic; }
    void OnPictureTaken() override { m_previewing = false; }
    void OnHistoryMoved() override { NotifyView(ValuesCode, 0); }

  private:
    CAdjustLogic m_logic;
    // A slider's value is on show and not yet recorded.
    bool m_previewing = false;
};
