// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <utility>

#include "EntryPicture.h"
#include "PcDspTypes.h"
#include "RotateState.h"
#include "SnapshotLogic.h"

inline constexpr ToolFacts RotateTool{
    3, SectionBasic, "btnTab2", "BtnXuanZhuan", "Edit_XuanZhuan", "Edit_XuanZhuan.xml", "ids_xuanzhuan", "888020204"};

// The rotate tool without its window. Quarter turns and mirrors are exact and go into the source; the free angle is
// never baked into it but always applied last, so that no sequence of operations samples the picture twice.
//
// While the angle is dragged only a reduced source is turned. Whatever reads the result then (RenderResult, a step,
// leaving) ends the drag first, as its release would.
//
// Every operation does nothing without a picture. One whose result can't be made throws PictureTooLarge, or
// std::bad_alloc for want of memory, and everything is as it was.
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

    const RotateState& State() const { return m_work.state; }
    bool IsDragging() const { return m_work.dragging; }
    // Something was done since the picture came in or was restored.
    bool CanRestore() const { return m_work.touched; }
    QString TempFilePath() const { return m_entry.Path(); }

    Bitmap RenderResult() override;
    bool IsRecorded() const override { return m_work.state.IsLike(m_work.recorded); }
    void OnStepCommitted() override;

  protected:
    void ForgetAll() override;
    void TakeSource(const Bitmap& picture) override;
    void OnSource() override { m_entry.Keep(m_work.source); }
    std::function<void()> RememberTool() override;

  private:
    enum class Fit { Keep, Anew };
    void Reorient(RotateFlipType type, void (RotateState::*count)(), Fit fit);
    void StartDrag();
    void EndDrag();
    void FinishDrag();
    void CancelDrag();
    ViewGeometry DragGeometry() const;
    Bitmap ScaledBy(const Bitmap& from, double scale) const;
    const Bitmap& ScaledSource(double zoom);
    ViewGeometry GeometryOfResult() const;
    void ShowResult(const ViewGeometry& geometry);

    // The scales of the reduced sources, as parts of the size that the picture has on the screen: at angles at which
    // the turned picture is shown smaller a smaller one is turned, so that no angle costs much more than the pixels on
    // show.
    static constexpr std::array<double, 4> DragScales{1.0, 0.8, 0.65, 0.5};

    // A plain value, and a cheap one, since bitmaps share their pixels until they are written.
    struct Work {
        // Full size, turns and mirrors applied, the free angle not.
        Bitmap source;
        // The reduced ones, each made when a drag first needs it.
        std::array<Bitmap, DragScales.size()> scaledSource;
        RotateState state;
        // As the history holds it.
        RotateState recorded;
        bool dragging = false;
        double dragZoom = 1.0;
        bool touched = false;
        // State and touched when the drag began.
        std::pair<RotateState, bool> beforeDrag;
    };

    EntryPicture m_entry;
    Work m_work;
};
