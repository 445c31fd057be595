// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

#include "CPictureWnd.h"
#include "CRotateLogic.h"

// The canvas of the rotate tool: shows the turned picture, and a grid of thirds over it while the angle is dragged.
class CRotateWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = RotateTool;

    // The history must outlive the canvas.
    CRotateWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance())
        : CPictureWnd(host, Facts, m_logic, parent), m_logic(history) {}

    // For the panel, on the main thread; each paints before it returns.

    // The slider moves.
    void DragAngle(int degrees);
    // The slider is let go, or set by a key or the wheel.
    void SetAngle(int degrees);
    // Turns and mirrors, by an operation of the logic object.
    void Turn(void (CRotateLogic::*turn)());
    // Back to the picture as it came into the tool.
    void RestoreEntry();

    const CRotateLogic& Logic() const { return m_logic; }

  protected:
    void OnPictureTaken() override { m_dragged = false; }
    void PaintOverlay(QPainter& painter, const QRect& place) override;

  private:
    CRotateLogic m_logic;
    // The slider is held. Read by paints, which go on while a worker takes a picture up.
    std::atomic<bool> m_dragged = false;
};
