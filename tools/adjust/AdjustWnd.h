// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AdjustLogic.h"
#include "CViewWnd.h"

// The canvas of the adjust tool: it maps the contract of canvases and the panel's wishes to the logic object, and
// paints the logic's view bitmap.
class CAdjustWnd : public CViewWnd {
    Q_OBJECT

  public:
    static constexpr int ToolNumber = 1;
    // Codes of NotifyView that this tool sends beside the zoom's: the panel's values changed (the panel fetches them by
    // PanelValues), and the history moved.
    static constexpr int ValuesCode = 4;
    static constexpr int HistoryCode = 5;

    // The history must outlive the canvas.
    CAdjustWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance());

    // Contract of canvases (CBaseWnd).
    Bitmap GetShowBitmap() override { return m_logic.RenderResult(); }
    void SetShowBitmap(const Bitmap& picture) override;
    bool OnEnter() override;
    void OnApply() override;
    bool IsImageChanged() override { return m_logic.IsImageChanged(); }
    bool HasPendingWork() override { return m_logic.HasUnrecorded(); }
    void OnUndo() override;
    void OnRedo() override;
    void OnRevert() override;
    void OnHistoryJump(int row) override;
    bool IsStrokeHeld() const override;

    // For the panel, on the main thread; each paints before it returns.

    AdjustPanelValues PanelValues() const { return m_logic.GetPanelValues(); }
    int Value(int index) const { return m_logic.GetValue(index); }
    // A slider moves: shows the value, leaves the history alone.
    void PreviewValue(int index, int value);
    // A slider settles: shows the value, records the step and tells the frame.
    void CommitValue(int index, int value);
    // Runs a scene as a task with the progress window. False when nothing came of it: the picture, the values and the
    // history are then as they were.
    bool RunScene(int scenario);
    void ResetScene();
    void ResetBasic();
    void ResetAdvance();

    const CAdjustLogic& Logic() const { return m_logic; }

  protected:
    ViewPicture TakeViewPicture() override;
    void OnViewChanged(ViewChange change) override;
    Bitmap NavigatorPicture() override;

  private:
    void TakeUpSource();
    void TakeUpStep();
    void ShowChange();

    CAdjustLogic m_logic;
    // A slider's value is on show and not yet recorded.
    bool m_previewing = false;
};
