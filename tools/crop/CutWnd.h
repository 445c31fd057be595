// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>

#include "CPictureWnd.h"
#include "CutLogic.h"
#include "CutSelection.h"

// The canvas of the crop tool: draws the selection over the picture and takes mouse and keys for it. Arrow keys move it
// by one picture pixel, with Shift they size it; Enter cuts; Esc takes a drag back, else the whole selection.
class CCutWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr int ToolNumber = 2;
    // Codes of NotifyView that this tool sends beside those of every tool. The selection changed; value 1: and the
    // picture's size.
    static constexpr int SelectionCode = 1;
    // The user gives the selection up: the panel goes back to its rest state.
    static constexpr int CancelCode = 2;

    // The history must outlive the canvas.
    CCutWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance());

    void SetShowBitmap(const Bitmap& picture) override;
    bool OnEnter() override;
    bool IsStrokeHeld() const override;

    // For the panel, on the main thread; each paints before it returns. None does anything without a picture.

    // The selection in picture pixels as it would be cut; empty without one.
    QSize SelectionSize() const;
    // The next press draws a new selection.
    void StartDrawing();
    void SetDefaultSelection();
    // In picture pixels; used as they are until the selection is sized by the mouse.
    void SetSelectionSize(int w, int h);
    // Height divided by width that the selection keeps; 0 for none.
    void SetRatio(double heightByWidth);
    // Cuts, records the step and selects the whole of what is left. False when there is nothing to cut off.
    bool CropToSelection();

    // A copy as it stands in the present view.
    CutSelection Selection() const;
    const CCutLogic& Logic() const { return m_logic; }

  protected:
    CanvasLogic& PictureLogic() override { return m_logic; }
    void OnPictureTaken() override;
    void OnHistoryMoved() override;
    void PaintOverlay(QPainter& painter) override;
    bool LeftButtonPans() const override { return false; }
    QCursor ToolCursor() const override;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    template <class Act>
    auto WithSelection(Act act) const;
    void ShowSelection();
    bool TakesInput() const;
    bool PressArrow(const QKeyEvent& event);
    void PressEscape(QKeyEvent* event);
    // A mouse position in canvas pixels from the scaled picture's top left corner.
    QPointF OnPicture(const QMouseEvent& event) const;

    CCutLogic m_logic;
    // Guards the selection, which a paint reads while a worker takes a picture up. It follows the logic's geometry
    // whenever it is asked for.
    mutable std::mutex m_lock;
    mutable CutSelection m_selection;
    // What the mouse is over, or holds.
    CutHit m_hover = CutHit::None;
    bool m_overPicture = false;
};
