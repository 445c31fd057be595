// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "BrushLogic.h"
#include "CPictureWnd.h"

// Base of the brush canvases: strokes of the left button, the disc under the cursor, and the keys. [ and ] change the
// pen, with Shift the effect; Alt erases while it is held.
class CBrushWnd : public CPictureWnd {
    Q_OBJECT

  public:
    // For the panel, on the main thread.

    // The disc's width in logical pixels of the screen; at least 1.
    void SetPenSize(int pen);
    int PenSize() const { return m_brush.PenSize(); }
    // Strokes take the effect away.
    void SetErase(bool erase);
    bool IsErasing() const { return m_erase; }

  protected:
    // `logic` is a member of the derived class.
    CBrushWnd(ToolHost& host, const ToolFacts& tool, BrushLogic& logic, QWidget* parent)
        : CPictureWnd(host, tool, logic, parent), m_brush(logic) {}

    bool LeftButtonPans() const override { return false; }
    QCursor ToolCursor() const override { return Qt::CrossCursor; }
    bool BeginStroke(const StrokePoint& at) override;
    void MoveStroke(const StrokePoint& at) override;
    // One stroke is one act however it ends: what was painted is recorded.
    void EndStroke(StrokeEnd how) override;
    void Hover(const StrokePoint& at) override;
    void PaintOverlay(QPainter& painter, const QRect& place) override;
    void LayoutChildren(int cx, int cy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    void Follow(const StrokePoint& at);
    QRect CursorRect() const;
    QRect CursorClip(const QRect& place) const;
    void ShowCursorAt(std::optional<QPoint> at, const QRect& changed = {});

    BrushLogic& m_brush;
    bool m_erase = false;
    // The cursor's place in physical client pixels, while it is over the canvas.
    std::optional<QPoint> m_cursor;
};
