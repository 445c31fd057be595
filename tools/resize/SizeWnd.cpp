// SPDX-License-Identifier: GPL-3.0-or-later
#include "SizeWnd.h"

#include <new>

#include "CObjProgress.h"
#include "Log.h"

namespace {

// The same as the rotate tool's: both are counted as one.
const QString LeaveChangedClick = QStringLiteral("888020204");

}  // namespace

CSizeWnd::CSizeWnd(ToolHost& host, QWidget* parent, CHistoryManager& history)
    : CPictureWnd(host, ToolNumber, LeaveChangedClick, parent), m_logic(history) {
    Geometry() = m_logic.Geometry();
}

void CSizeWnd::OnHistoryMoved() {
    NotifyView(SizeCode, 1);
}

bool CSizeWnd::ApplySize(int w, int h) {
    if (Host().IsBusy() || m_logic.ImageSize() == QSize(w, h)) return false;
    bool applied = false;
    try {
        Host().RunTask([&](CObjProgress& progress) {
            progress.SetStepText(L"ids_progress_1");
            applied = m_logic.Resize(w, h, &progress);
            if (applied) m_logic.CommitStep();
        });
    } catch (const std::bad_alloc&) {
        Log("[QUINCE]resize to %d x %d: out of memory", w, h);
    }
    if (!applied) return false;
    TakeUpPicture();
    NotifyView(SizeCode, 1);
    NotifyView(HistoryCode, 0);
    return true;
}
