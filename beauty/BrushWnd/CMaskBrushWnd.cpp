// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMaskBrushWnd.h"

#include <cmath>

void CMaskBrushWnd::DragStrength(int percent) {
    Preview([&] { m_mask.ComposeView(percent / 100.0); });
}

void CMaskBrushWnd::SetStrength(int percent) {
    Change([&] { m_mask.ComposeFull(percent / 100.0); });
}

int CMaskBrushWnd::Strength() const {
    return static_cast<int>(std::lround(m_mask.Strength() * 100.0));
}

void CMaskBrushWnd::Change(const std::function<void()>& change) {
    Perform([&] {
        change();
        m_mask.CommitStep();
        return m_mask.HasPaint();
    });
}

bool CMaskBrushWnd::ChangeAsTask(const std::function<bool(CObjProgress*)>& change) {
    return PerformTask([&](CObjProgress* progress) { return change(progress) && (m_mask.CommitStep(), true); });
}
