// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CPictureWnd.h"
#include "PenTool.h"

// Base of the canvases that are worked with a pen: its width, erasing, and the keys. [ and ] change the pen, with Shift
// the effect; Alt erases while it is held.
class CPenWnd : public CPictureWnd {
    Q_OBJECT

  public:
    // For the panel, on the main thread.

    // The pen's width in logical pixels of the screen.
    virtual void SetPenSize(int pen) { m_pen.SetPenSize(pen); }
    int PenSize() const { return m_pen.PenSize(); }
    // Strokes take the effect away.
    void SetErase(bool erase);
    bool IsErasing() const { return m_erase; }

  protected:
    // `logic` is a member of the derived class, and `pen` a part of it.
    CPenWnd(ToolHost& host, const ToolFacts& tool, CanvasLogic& logic, PenTool& pen, QWidget* parent)
        : CPictureWnd(host, tool, logic, parent), m_pen(pen) {}

    bool LeftButtonPans() const override { return false; }
    void LayoutChildren(int cx, int cy) override;
    void keyPressEvent(QKeyEvent* event) override;

    // The pixel of the client that a point of the mouse lies in.
    static QPoint PixelOf(const StrokePoint& at);
    // The stroke paints or erases, as button and key say.
    void Follow(const StrokePoint& at);
    // The pen in physical pixels.
    int PenPixels() const { return m_pen.PenPixels(); }

  private:
    PenTool& m_pen;
    bool m_erase = false;
};
