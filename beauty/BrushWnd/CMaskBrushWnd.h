// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushWnd.h"
#include "MaskBrushLogic.h"

// Base of the canvases whose brush paints through a mask: the strength of what is painted can be changed.
class CMaskBrushWnd : public CBrushWnd {
    Q_OBJECT

  public:
    // Percent, 0 to 100. Drag: a slider moves, the view alone follows. Set: the picture, and its step.
    void DragStrength(int percent);
    void SetStrength(int percent);
    // Percent, rounded.
    int Strength() const;

  protected:
    CMaskBrushWnd(ToolHost& host, const ToolFacts& tool, MaskBrushLogic& logic, QWidget* parent)
        : CBrushWnd(host, tool, logic, parent), m_mask(logic) {}

    // Runs what changes the picture's values, and records it; as a task where it may take a while.
    void Change(const std::function<void()>& change);
    bool ChangeAsTask(const std::function<bool(CObjProgress*)>& change);

  private:
    MaskBrushLogic& m_mask;
};
