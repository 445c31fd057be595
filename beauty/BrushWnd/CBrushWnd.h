// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BrushLogic.h"
#include "CDiscWnd.h"

// Base of the brush canvases: strokes of the left button.
class CBrushWnd : public CDiscWnd {
    Q_OBJECT

  protected:
    // `logic` is a member of the derived class.
    CBrushWnd(ToolHost& host, const ToolFacts& tool, BrushLogic& logic, QWidget* parent)
        : CDiscWnd(host, tool, logic, logic, parent), m_brush(logic) {}

    bool BeginStroke(const StrokePoint& at) override;
    void MoveStroke(const StrokePoint& at) override;
    // One stroke is one act however it ends: what was painted is recorded.
    void EndStroke(StrokeEnd how) override;

  private:
    BrushLogic& m_brush;
};
