// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "CPictureWnd.h"

// Base of the canvases whose left button works with a round pen: the disc under the cursor, and the keys. [ and ]
// change the pen, with Shift the effect.
class CPenWnd : public CPictureWnd {
    Q_OBJECT

  public:
    // For the panel, on the main thread.

    // The disc's width in logical pixels of the screen; at least 1.
    void SetPenSize(int pen);
    virtual int PenSize() const = 0;
    // The panel's erase button is down. What that means is the tool's; nothing here.
    virtual void SetErase(bool erase) { m_erase = erase; }
    bool IsErasing() const { return m_erase; }

  protected:
    CPenWnd(ToolHost& host, const ToolFacts& tool, CanvasLogic& logic, QWidget* parent)
        : CPictureWnd(host, tool, logic, parent) {}

    // What the logic does with them: the pen's size, the physical pixels per logical one, the pen in physical pixels.
    virtual void TakePenSize(int pen) = 0;
    virtual void TakeScreenScale(double scale) = 0;
    virtual int PenPixels() const = 0;

    bool LeftButtonPans() const override { return false; }
    QCursor ToolCursor() const override { return Qt::CrossCursor; }
    void Hover(const StrokePoint& at) override;
    void PaintOverlay(QPainter& painter, const QRect& place) override;
    void LayoutChildren(int cx, int cy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

    // The pixel of the client that a point of the mouse lies in.
    static QPoint PixelOf(const StrokePoint& at);
    // Moves the disc, and paints what it leaves, what it comes to, and what a stroke changed besides.
    void ShowCursorAt(std::optional<QPoint> at, const QRect& changed = {});

  private:
    QRect CursorRect() const;
    QRect CursorClip(const QRect& place) const;

    bool m_erase = false;
    // The cursor's place in physical client pixels, while it is over the canvas.
    std::optional<QPoint> m_cursor;
};
