// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class CBaseWnd;
class CHistoryManager;

// Which of the bar's history buttons may be used.
struct HistoryButtons {
    bool undo = false;
    bool redo = false;
    bool changed = false;  // original and both compares
    bool list = false;

    bool operator==(const HistoryButtons&) const = default;
};

// The one rule, followed after a committed step, undo, redo, jump, revert and open: undo when there is a step before
// the current one or work is pending, which undo records first; redo when there is a step after it; original and
// compare when the picture is not the opened one. `canvas` may be null. Main thread.
HistoryButtons HistoryButtonsFor(const CHistoryManager& history, CBaseWnd* canvas);
