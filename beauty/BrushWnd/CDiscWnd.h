// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "CPenWnd.h"

// Base of the canvases that show their pen as a disc under the cursor.
class CDiscWnd : public CPenWnd {
    Q_OBJECT

  public:
    void SetPenSize(int pen) override;

  protected:
    // `logic` is a member of the derived class, and `pen` a part of it.
    CDiscWnd(ToolHost& host, const ToolFacts& tool, CanvasLogic& logic, PenTool& pen, QWidget* parent)
        : CPenWnd(host, tool, logic, pen, parent) {}

    QCursor ToolCursor() const override { return Qt::CrossCursor; }
    void Hover(const StrokePoint& at) override;
    void PaintOverlay(QPainter& painter, const QRect& place) override;
    void leaveEvent(QEvent* event) override;

    // Moves the disc, and paints what it leaves, what it comes to, and what a stroke changed besides.
    void ShowCursorAt(std::optional<QPoint> at, const QRect& changed = {});

  private:
    QRect CursorRect() const;
    QRect CursorClip(const QRect& place) const;

    // The cursor's place in physical client pixels, while it is over the canvas.
    std::optional<QPoint> m_cursor;
};
