// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CRepairWnd.h"

// Base of the canvases that repair what a click hits; each click is a step.
class CClickRepairWnd : public CRepairWnd {
    Q_OBJECT

  protected:
    // `logic` is a member of the derived class.
    CClickRepairWnd(ToolHost& host, const ToolFacts& tool, ClickRepairLogic& logic, QWidget* parent)
        : CRepairWnd(host, tool, logic, parent), m_clicks(logic) {}

    // A click at that place of the client has repaired something. What is to be painted besides; nothing here.
    virtual QRect OnRepaired(QPoint) { return {}; }

    // The repair is all there is of the stroke.
    bool BeginStroke(const StrokePoint& at) override;

  private:
    ClickRepairLogic& m_clicks;
};
