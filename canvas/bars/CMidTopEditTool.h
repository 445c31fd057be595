// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "CXMLWnd.h"

class CBaseWnd;
class CCompareListWnd;
class CUndoListWnd;
class QAbstractButton;
class ToolHost;

// Top edit bar: zoom, undo, redo, the history list, revert and compare. It holds no state of the picture; it asks the
// host's canvas and the history. Main thread only.
class CMidTopEditTool : public CXMLWnd {
    Q_OBJECT

  public:
    static constexpr int LeastPercent = 20, MostPercent = 400;

    // The host must outlive the bar.
    CMidTopEditTool(ToolHost& host, QWidget* parent);
    ~CMidTopEditTool() override;

    // Shows the zoom that a canvas told: the slider takes it between its ends (below 21 % it stands at 20, above 400 %
    // at 400), the text as it is. Raises no notification, so the zoom stays.
    void ShowZoom(int percent);
    // The zoom buttons start disabled and are enabled with the first picture. Without one the bar shows "fit" as the
    // next step of the zoom toggle.
    void EnableZoom(bool enable);
    // Sets undo, redo, list, original and compare by HistoryButtonsFor.
    void UpdateHistoryButtons();

    // What the button of that name does, as for a shortcut: nothing while it is disabled. Of BtnMaster and BtnMatch
    // also the one that is not on show.
    void Press(const QString& button);
    // Presses (true) or lets go of BtnCompare, as for a shortcut that is held.
    void HoldCompare(bool hold);

    bool eventFilter(QObject* object, QEvent* event) override;

  protected:
    void OnNotify(const Notify& notify) override;

  private:
    void OnClick(const QString& name);
    void LeaveCompare();
    void Zoom(const std::function<void(CBaseWnd&)>& request);
    void ActualSize();
    void Fit();
    // Undo, redo, revert or jump, and what follows each of them.
    void Move(const std::function<void(CBaseWnd&)>& move);
    void BeginCompare();
    void EndCompare();
    void SideBySide();
    void ShowUndoList();
    void ShowCompareList();
    void JumpTo(int row);
    void Enable(const char* name, bool enable);
    QAbstractButton* Button(const QString& name) const;

    ToolHost& m_host;
    std::unique_ptr<CUndoListWnd> m_undoList;
    std::unique_ptr<CCompareListWnd> m_compareList;
    bool m_compareHeld = false;
};
