// SPDX-License-Identifier: GPL-3.0-or-later
#include "AdjustWnd.h"

#include <QtGui/QGuiApplication>

#include "CObjProgress.h"

namespace {

const QString LeaveChangedClick = QStringLiteral("888020101");

}  // namespace

CAdjustWnd::CAdjustWnd(ToolHost& host, QWidget* parent, CHistoryManager& history)
    : CPictureWnd(host, ToolNumber, LeaveChangedClick, parent), m_logic(history) {
    Geometry() = m_logic.Geometry();
}

// While the button is down on a slider, history and tools wait; the mouse is asked too, since a release may get lost.
bool CAdjustWnd::IsStrokeHeld() const {
    const bool sliderHeld = m_previewing && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    return sliderHeld || CPictureWnd::IsStrokeHeld();
}

void CAdjustWnd::PreviewValue(int index, int value) {
    m_previewing = true;
    m_logic.SetValue(index, value);
    Redraw(Paint::Now);
}

void CAdjustWnd::CommitValue(int index, int value) {
    m_previewing = false;
    m_logic.SetValue(index, value);
    Redraw(Paint::Now);
    m_logic.CommitStep();
    RefreshNavigator();
    NotifyView(HistoryCode, 0);
}

bool CAdjustWnd::RunScene(int scenario) {
    bool applied = false;
    Host().RunTask([&](CObjProgress& progress) {
        progress.SetStepText(L"ids_progress_1");
        applied = m_logic.ApplyScenario(scenario, &progress);
    });
    ShowChange();
    if (applied) NotifyView(HistoryCode, 0);
    return applied;
}

void CAdjustWnd::ResetScene() {
    m_logic.ResetScenario();
    ShowChange();
}

void CAdjustWnd::ResetBasic() {
    m_logic.ResetBasic();
    ShowChange();
}

void CAdjustWnd::ResetAdvance() {
    m_logic.ResetAdvance();
    ShowChange();
}
