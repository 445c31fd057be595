// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CImageFrameLogic.h"
#include "CLookWnd.h"

// The canvas of the frame tool.
class CImageFrameWnd : public CLookWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = FrameTool;

    // The history must outlive the canvas.
    CImageFrameWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CLookWnd(host, Facts, m_logic, parent), m_logic(history) {}

    const CImageFrameLogic& Logic() const { return m_logic; }

  protected:
    QString ChoiceFailedKey() const override { return QStringLiteral("ids_frameerror"); }
    QString StepFailedKey() const override { return QStringLiteral("ids_framelost"); }

  private:
    CImageFrameLogic m_logic;
};
