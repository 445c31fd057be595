// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistoryButtons.h"

#include "CBaseWnd.h"
#include "CHistoryManager.h"

HistoryButtons HistoryButtonsFor(const CHistoryManager& history, CBaseWnd* canvas) {
    if (history.m_count == 0) return {};
    HistoryButtons buttons;
    const bool unrecorded = history.Owes() || (canvas && canvas->HasPendingWork());
    buttons.undo = history.m_currentNo > 1 || unrecorded;
    buttons.redo = history.m_currentNo < history.m_count && !unrecorded;
    buttons.changed = canvas && canvas->IsImageChanged();
    buttons.list = true;
    return buttons;
}
