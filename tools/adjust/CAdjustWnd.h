// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CAdjustLogic.h"
#include "CPictureWnd.h"

// The canvas of the adjust tool: it maps the contract of canvases and the panel's wishes to the logic object, and
// paints the logic's view bitmap.
class CAdjustWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = AdjustTool;

    // The history must outlive the canvas.
    CAdjustWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance());

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
    // Takes a group back to no change, by an operation of the logic object.
    void Reset(void (CAdjustLogic::*reset)());

    const CAdjustLogic& Logic() const { return m_logic; }

  private:
    CAdjustLogic m_logic;
};
