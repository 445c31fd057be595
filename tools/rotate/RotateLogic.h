// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "EntryPicture.h"
#include "PcDspTypes.h"
#include "RotateState.h"
#include "SnapshotLogic.h"

// The rotate tool without its window. Quarter turns and mirrors are exact and go into the source; the free angle is
// never baked into it but always applied last, so that no sequence of operations samples the picture twice.
//
// While the angle is dragged only a reduced source is turned. Whatever reads the result then (RenderResult, a step,
// leaving) ends the drag first, as its release would.
//
// Every operation does nothing without a picture. Where a result can't be made, being too large or for want of memory,
// nothing is shown until the next operation.
class CRotateLogic : public SnapshotLogic {
  public:
    // The entry picture lies in the history's folder as Rotatetmp.bin.
    explicit CRotateLogic(CHistoryManager& history = CHistoryManager::Instance());

    // The angle moves under the hand: shows the reduced picture turned by `degrees`, any int, clockwise. Fits where it
    // would not lie inside the client.
    void DragAngle(int degrees);
    // The angle is let go, or set by a key or the wheel: turns the full picture, which keeps its size on the screen.
    void SetAngle(int degrees);

    void TurnLeft();
    void TurnRight();
    // Mirrors keep the view.
    void FlipLeftRight();
    void FlipTopBottom();

    // Goes back to the picture as it came into the tool; the history is not touched. False, and nothing changes, when
    // that picture can't be read.
    bool RestoreEntry();

    const RotateState& State() const { return m_state; }
    bool IsDragging() const { return m_dragging; }
    // Something was done since the picture came in or was restored.
    bool CanRestore() const { return m_touched; }
    QString TempFilePath() const { return m_entry.Path(); }

    void Reset() override;
    Bitmap RenderResult() override;
    void Apply() override;
    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    bool IsRecorded() const override { return m_state.IsLike(m_recorded); }
    void OnStepCommitted() override;

  protected:
    void OnSource() override;

  private:
    void StartAnew(const Bitmap& source);
    bool Reorient(RotateFlipType type);
    void StartDrag();
    void EndDrag();
    void FinishDrag();
    ViewGeometry DragGeometry() const;
    const Bitmap& ScaledSource(double zoom);
    ViewGeometry GeometryOfResult() const;
    void ShowResult(const ViewGeometry& geometry);

    // Full size, turns and mirrors applied, the free angle not.
    Bitmap m_source;
    // The source at the size that it has on the screen, and reduced from that for angles at which the turned picture is
    // shown smaller, so that no angle costs much more than the pixels on show. Made when a drag first needs them.
    static constexpr std::array<double, 4> DragScales{1.0, 0.8, 0.65, 0.5};
    std::array<Bitmap, DragScales.size()> m_scaledSource;
    EntryPicture m_entry;
    RotateState m_state;
    // As the history holds it.
    RotateState m_recorded;
    bool m_dragging = false;
    double m_dragZoom = 1.0;
    bool m_touched = false;
};
