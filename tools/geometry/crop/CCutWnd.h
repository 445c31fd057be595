// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>

#include "CCutLogic.h"
#include "CPictureWnd.h"
#include "CropSelection.h"

// What the canvas tells its panel: the selection changed; the user gives it up, so that the panel goes to its rest
// state.
struct CropSelectionNews {};
struct CropGivenUpNews {};

// The canvas of the crop tool: draws the selection over the picture and takes mouse and keys for it. Arrow keys move it
// by one picture pixel, with Shift they size it; Enter cuts; Esc takes a drag back, else the whole selection.
class CCutWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = CropTool;

    // The history must outlive the canvas.
    CCutWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CPictureWnd(host, Facts, m_logic, parent), m_logic(history) {}

    void SetShowBitmap(const Bitmap& picture) override;
    bool OnEnter() override;

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
    CropSelection Selection() const;
    const CCutLogic& Logic() const { return m_logic; }

  protected:
    void OnPictureTaken() override;
    void PaintOverlay(QPainter& painter, const QRect& place) override;
    bool LeftButtonPans() const override { return false; }
    QCursor ToolCursor() const override;

    bool BeginStroke(const StrokePoint& at) override;
    void MoveStroke(const StrokePoint& at) override;
    void EndStroke(StrokeEnd how) override;
    void Hover(const StrokePoint& at) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    template <class Act>
    auto WithSelection(Act act) const;
    void ShowSelection();
    bool TakesInput() const;
    bool PressArrow(const QKeyEvent& event);
    void PressEscape(QKeyEvent* event);
    // In canvas pixels from the scaled picture's top left corner.
    QPointF OnPicture(const StrokePoint& at) const;

    CCutLogic m_logic;
    // Guards the selection, which a paint reads while a worker takes a picture up. It follows the logic's geometry
    // whenever it is asked for.
    mutable std::mutex m_lock;
    mutable CropSelection m_selection;
    // What the mouse is over, or holds.
    CropHit m_hover = CropHit::None;
    bool m_overPicture = false;
};
