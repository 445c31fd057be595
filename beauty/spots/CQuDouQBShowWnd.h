// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QBasicTimer>

#include "CClickRepairWnd.h"
#include "CQuDouQBLogic.h"

// The canvas of spot removal. A ring shows for a moment where a spot was removed.
class CQuDouQBShowWnd : public CClickRepairWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = SpotTool;
    // Milliseconds.
    static constexpr int RingTime = 30;

    // The history must outlive the canvas.
    CQuDouQBShowWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CClickRepairWnd(host, Facts, m_logic, parent), m_logic(history) {}

    const CQuDouQBLogic& Logic() const { return m_logic; }
    bool ShowsRing() const { return m_ring.isActive(); }

  protected:
    QRect OnRepaired(QPoint client) override;
    void PaintOverlay(QPainter& painter, const QRect& place) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    QRect RingRect() const;

    CQuDouQBLogic m_logic;
    QBasicTimer m_ring;
    // The click that the ring is for; physical client pixels.
    QPoint m_clicked;
};
