// SPDX-License-Identifier: GPL-3.0-or-later
#include "CRepairWnd.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>

#include "PenCursor.h"
#include "WithinMemory.h"

void CRepairWnd::SetPenSize(int pen) {
    CPenWnd::SetPenSize(pen);
    RenewCursor();
}

void CRepairWnd::LayoutChildren(int cx, int cy) {
    CPenWnd::LayoutChildren(cx, cy);
    RenewCursor();
}

void CRepairWnd::RenewCursor() {
    m_cursor = PenCursor(PenSize(), PixelRatio());
    if (underMouse()) UpdateCursor(mapFromGlobal(QCursor::pos()));
}

// A canvas that is being hidden, or that another window blocks, can't wait for a task.
bool CRepairWnd::RunRepair(bool quick, const std::function<bool(CObjProgress*)>& repair) {
    bool done = false;
    WithinMemory(Host(), [&] {
        if (quick || !isVisible() || Host().IsBusy()) {
            done = repair(nullptr);
            return;
        }
        m_repairing = true;
        Host().RunTask([&](CObjProgress& progress) { done = repair(&progress); });
    });
    m_repairing = false;
    if (!done) m_kept.clear();
    return done;
}

void CRepairWnd::Record() {
    Perform([this] {
        m_repairs.CommitStep();
        return true;
    });
}

void CRepairWnd::KeepInput(const QMouseEvent& event) {
    if (!m_repairing) return;
    m_kept.push_back({event.type(), mapFromGlobal(event.globalPosition()), event.globalPosition(), event.button(),
                      event.buttons(), event.modifiers()});
}

void CRepairWnd::Replay() {
    if (m_replaying) return;
    m_replaying = true;
    while (!m_kept.empty()) {
        const Kept kept = m_kept.front();
        m_kept.pop_front();
        QMouseEvent event(kept.type, kept.at, kept.global, kept.button, kept.buttons, kept.modifiers);
        QCoreApplication::sendEvent(this, &event);
    }
    m_replaying = false;
}
