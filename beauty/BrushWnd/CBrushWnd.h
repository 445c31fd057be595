// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BrushLogic.h"
#include "CPenWnd.h"

// Base of the brush canvases: strokes of the left button. Alt erases while it is held.
class CBrushWnd : public CPenWnd {
    Q_OBJECT

  public:
    int PenSize() const override { return m_brush.PenSize(); }
    // Strokes take the effect away.
    void SetErase(bool erase) override;

  protected:
    // `logic` is a member of the derived class.
    CBrushWnd(ToolHost& host, const ToolFacts& tool, BrushLogic& logic, QWidget* parent)
        : CPenWnd(host, tool, logic, parent), m_brush(logic) {}

    void TakePenSize(int pen) override { m_brush.SetPenSize(pen); }
    void TakeScreenScale(double scale) override { m_brush.SetScreenScale(scale); }
    int PenPixels() const override { return m_brush.PenPixels(); }

    bool BeginStroke(const StrokePoint& at) override;
    void MoveStroke(const StrokePoint& at) override;
    // One stroke is one act however it ends: what was painted is recorded.
    void EndStroke(StrokeEnd how) override;

  private:
    void Follow(const StrokePoint& at);

    BrushLogic& m_brush;
};
