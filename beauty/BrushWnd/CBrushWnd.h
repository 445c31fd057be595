// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "BrushLogic.h"
#include "CPenWnd.h"

// Base of the brush canvases: strokes of the left button, and the disc under the cursor.
class CBrushWnd : public CPenWnd {
    Q_OBJECT

  public:
    void SetPenSize(int pen) override;

  protected:
    // `logic` is a member of the derived class.
    CBrushWnd(ToolHost& host, const ToolFacts& tool, BrushLogic& logic, QWidget* parent)
        : CPenWnd(host, tool, logic, logic, parent), m_brush(logic) {}

    QCursor ToolCursor() const override { return Qt::CrossCursor; }
    bool BeginStroke(const StrokePoint& at) override;
    void MoveStroke(const StrokePoint& at) override;
    // One stroke is one act however it ends: what was painted is recorded.
    void EndStroke(StrokeEnd how) override;
    void Hover(const StrokePoint& at) override;
    void PaintOverlay(QPainter& painter, const QRect& place) override;
    void leaveEvent(QEvent* event) override;

  private:
    QRect CursorRect() const;
    QRect CursorClip(const QRect& place) const;
    void ShowCursorAt(std::optional<QPoint> at, const QRect& changed = {});

    BrushLogic& m_brush;
    // The cursor's place in physical client pixels, while it is over the canvas.
    std::optional<QPoint> m_cursor;
};
