// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <QtCore/QEvent>
#include <QtCore/QPointF>
#include <QtGui/QCursor>

#include "CPenWnd.h"
#include "RepairLogic.h"

// Base of the canvases that repair a place of the picture: the pen for a cursor, the repair at once or as a task, and
// the mouse while a task runs. What the mouse does in that time is kept and done when the repair is over, so that no
// click is lost; a repair that is stopped drops it.
class CRepairWnd : public CPenWnd {
    Q_OBJECT

  public:
    void SetPenSize(int pen) override;
    void KeepInput(const QMouseEvent& event) override;

  protected:
    // `logic` is a member of the derived class.
    CRepairWnd(ToolHost& host, const ToolFacts& tool, RepairLogic& logic, QWidget* parent)
        : CPenWnd(host, tool, logic, logic, parent), m_repairs(logic) {}

    // Runs `repair`, which says whether anything came of it, at once where it is quick, else as a task with the
    // progress window. False when nothing came of it and for want of memory, which the user is told.
    bool RunRepair(bool quick, const std::function<bool(CObjProgress*)>& repair);
    // Puts the repair into the history as a step. What the history refuses stays pending.
    void Record();
    // Does what the mouse did during the repair. The last act of an input's handling.
    void Replay();

    QCursor ToolCursor() const override { return m_cursor; }
    void LayoutChildren(int cx, int cy) override;

  private:
    void RenewCursor();

    struct Kept {
        QEvent::Type type;
        QPointF at, global;
        Qt::MouseButton button;
        Qt::MouseButtons buttons;
        Qt::KeyboardModifiers modifiers;
    };
    RepairLogic& m_repairs;
    QCursor m_cursor;
    std::deque<Kept> m_kept;
    bool m_repairing = false;
    bool m_replaying = false;
};
