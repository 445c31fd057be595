// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <vector>

#include "CDiscWnd.h"
#include "WarpLogic.h"

// Base of the canvases of the tools that push pixels about. A stroke ends as a task with the progress window, where Esc
// keeps what is done by then; Esc while the hand still holds takes the stroke back. Everything that needs the result
// waits for it. A zoom, a fit or another size of the window waits for the end of a stroke that is held, since what the
// hand sees belongs to the view as it stood at the press.
class CWarpWnd : public CDiscWnd {
    Q_OBJECT

  public:
    // Percent, for the panel on the main thread.
    void SetStrength(int percent) { m_warp.SetStrength(percent); }
    int Strength() const { return m_warp.Strength(); }

    Bitmap GetShowBitmap() override;
    void OnApply() override;
    void OnUndo() override;
    void OnRedo() override;
    void OnRevert() override;
    void OnHistoryJump(int row) override;

    void FitToWindow() override;
    void ZoomToPercent(int percent) override;
    void ZoomOut() override;
    void ZoomIn() override;
    void ZoomActualSize() override;
    void ZoomFit() override;
    void LayoutChildren(int cx, int cy) override;

  protected:
    // `logic` is a member of the derived class.
    CWarpWnd(ToolHost& host, const ToolFacts& tool, WarpLogic& logic, QWidget* parent)
        : CDiscWnd(host, tool, logic, logic, parent), m_warp(logic) {}

    void OnPictureTaken() override;
    bool BeginStroke(const StrokePoint& at) override;
    void MoveStroke(const StrokePoint& at) override;
    void EndStroke(StrokeEnd how) override;

  private:
    // Ends a stroke that is held, for an act that needs it to be over.
    void Settle();
    // A stroke is held: `act` is done when it is over.
    bool Waits(const std::function<void()>& act);

    WarpLogic& m_warp;
    std::vector<std::function<void()>> m_waiting;
};
