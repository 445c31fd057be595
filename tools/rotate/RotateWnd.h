// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

#include "CPictureWnd.h"
#include "RotateLogic.h"

// The canvas of the rotate tool: shows the turned picture, and a grid of thirds over it while the angle is dragged.
class CRotateWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr int ToolNumber = 3;
    // Code of NotifyView that this tool sends beside those of every tool: the size of the picture, or what the panel
    // shows, changed.
    static constexpr int SizeCode = 1;

    // The history must outlive the canvas.
    CRotateWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance());

    bool IsStrokeHeld() const override;

    // For the panel, on the main thread; each paints before it returns.

    // The slider moves.
    void DragAngle(int degrees);
    // The slider is let go, or set by a key or the wheel.
    void SetAngle(int degrees);
    void TurnLeft();
    void TurnRight();
    void FlipLeftRight();
    void FlipTopBottom();
    // Back to the picture as it came into the tool.
    void RestoreEntry();

    const CRotateLogic& Logic() const { return m_logic; }

  protected:
    CanvasLogic& PictureLogic() override { return m_logic; }
    void OnPictureTaken() override { m_dragged = false; }
    void OnHistoryMoved() override { NotifyView(SizeCode, 1); }
    void PaintOverlay(QPainter& painter) override;

  private:
    void TakeUpOperation();

    CRotateLogic m_logic;
    // The slider is held. Read by paints, which go on while a worker takes a picture up.
    std::atomic<bool> m_dragged = false;
};
