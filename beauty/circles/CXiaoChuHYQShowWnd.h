// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <QtGui/QImage>

#include "CRepairWnd.h"
#include "CXiaoChuHYQLogic.h"

// The canvas of the dark circles: strokes that mark or erase. The mark is shown over the picture until it is repaired.
class CXiaoChuHYQShowWnd : public CRepairWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = CircleTool;

    // The history must outlive the canvas.
    CXiaoChuHYQShowWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CRepairWnd(host, Facts, m_logic, parent), m_logic(history) {}

    // 0 to 10, for the strokes that follow.
    void SetStrength(int strength) { m_logic.SetStrength(strength); }
    const CXiaoChuHYQLogic& Logic() const { return m_logic; }

  protected:
    bool BeginStroke(const StrokePoint& at) override;
    void MoveStroke(const StrokePoint& at) override;
    // Repairs the mark, wherever the hand is; Esc drops it.
    void EndStroke(StrokeEnd how) override;
    void OnViewChanged(ViewChange change) override;
    void PaintOverlay(QPainter& painter, const QRect& place) override;

  private:
    QRect ShowMark();
    void HideMark();

    CXiaoChuHYQLogic m_logic;
    // The discs of the mark so far, as they lie in the client; physical pixels. Null while nothing is marked.
    QImage m_mark;
    std::size_t m_drawn = 0;
};
