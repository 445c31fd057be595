// SPDX-License-Identifier: GPL-3.0-or-later
#include "CAdjustWnd.h"

CAdjustWnd::CAdjustWnd(ToolHost& host, QWidget* parent, CHistoryManager& history)
    : CPictureWnd(host, Facts, m_logic, parent), m_logic(history) {
    Geometry() = m_logic.Geometry();  // this tool's rule for zooming out
}

void CAdjustWnd::PreviewValue(int index, int value) {
    Preview([&] { m_logic.SetValue(index, value); });
}

void CAdjustWnd::CommitValue(int index, int value) {
    Perform([&] {
        m_logic.SetValue(index, value);
        m_logic.CommitStep();
        return true;
    });
}

bool CAdjustWnd::RunScene(int scenario) {
    return PerformTask([&](CObjProgress* progress) { return m_logic.ApplyScenario(scenario, progress); });
}

void CAdjustWnd::Reset(void (CAdjustLogic::*reset)()) {
    Perform([&] {
        (m_logic.*reset)();
        return true;
    });
}
