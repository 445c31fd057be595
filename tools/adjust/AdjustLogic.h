// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <QtCore/QPoint>
#include <QtCore/QSize>
#include <QtCore/QString>

#include "AdjustState.h"
#include "CanvasLogic.h"
#include "CHistoryManager.h"
#include "ProgressSpan.h"
#include "StepCommitter.h"

class CObjProgress;

// What the canvas tells the panel: scene, then the nine slider values, in the order of the panel.
using AdjustPanelValues = std::array<int, 10>;

// The adjust tool without its window: the pictures, the nine slider values, the scene, and the steps that they make in
// the history.
//
// Live work happens on a bitmap of the view's size; the full picture is computed only when its result is asked for. The
// two slider groups and the scene never act at once on one base: touching one folds the others into the picture.
//
// Threads, units and what happens without a picture: CanvasLogic.
class CAdjustLogic : public CanvasLogic, public StepSource {
  public:
    // The steps go to `history`, which outlives the object; the scene's result lies in its folder as AdEffectRes.bin.
    explicit CAdjustLogic(CHistoryManager& history = CHistoryManager::Instance());
    // Deletes the scene file.
    ~CAdjustLogic() override;
    CAdjustLogic(const CAdjustLogic&) = delete;
    CAdjustLogic& operator=(const CAdjustLogic&) = delete;

    void Reset() override;
    // Takes a picture as work and base. Values stay.
    void SetSource(const Bitmap& picture) override;
    bool TakeViewState() override;

    // The view. Each redraws it from the full picture when the geometry changed.
    void SetViewSize(int width, int height) override;
    void SetZoom(double zoom);
    void FitToWindow();
    void PanBy(int dx, int dy);
    // A drag by the mouse: fast drawing while it moves, the good one at its end.
    void BeginDrag(int x, int y);
    void DragTo(int x, int y);
    void EndDrag();
    bool IsDragging() const { return m_dragging; }
    // Redraws the view in the settled quality.
    void RedrawHighQuality();
    // Any other change of the geometry, for the canvas.
    void SetGeometry(const ViewGeometry& geometry, ViewQuality quality) override;
    ViewGeometry Geometry() const override;
    CanvasView View() const override;
    Bitmap Overview(QSize bounds) const override;

    // Sets a slider's value by its index and previews it; does not touch the history. An unknown index does nothing.
    void SetValue(int index, int value);
    // The value of a slider; 0 for an unknown index.
    int GetValue(int index) const;
    AdjustPanelValues GetPanelValues() const;
    // Runs a scene (1 to 4) on the base, previews and commits it. False when nothing came of it: no picture, the scene
    // already active, or the sink stopped the work, and then everything is as it was before.
    bool ApplyScenario(int scenario, CObjProgress* progress);
    // Take one group back to no change. None commits: the state is recorded at the next commit, undo or leaving.
    void ResetScenario();
    void ResetBasic();
    void ResetAdvance();

    // Computed when something changed, else as it was.
    Bitmap RenderResult() override;
    // Applies the values to the view.
    void RunPreview();

    // The step for the present state: with `finalImage` a snapshot of the result alone, else the base and the records
    // of the values. Null when there is nothing to record.
    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    // Shows a step: its picture and values. False, and nothing changes, for null, a step without a pixel record, and
    // one whose snapshot can't be read. A scene's result whose file is gone is computed again from the snapshot.
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return m_state.HasValues(); }
    bool OwnsRecord(int type) const override;
    bool IsRecorded() const override { return m_state.Recorded; }
    void OnStepCommitted() override {
        m_state.BakedPending = false;
        m_state.Recorded = true;
    }
    // Records the present state: over the step of this visit, or as a new one. False when there is nothing to record or
    // the history refused it; then it stays pending.
    bool CommitStep();

    bool Undo() override;
    bool Redo() override;
    bool Jump(int row) override;
    bool Revert() override;
    // Also turns what only this tool can show into snapshots.
    void Apply() override;

    bool IsImageChanged() const override;
    // Leaving, undo or revert has something to record.
    bool HasPending() const;
    bool HasUnrecorded() const override { return HasPending() && !m_state.Recorded; }
    bool HasPicture() const { return !m_state.WorkBitmap.IsNull(); }
    const AdjustState& State() const { return m_state; }
    QString SceneFilePath() const { return m_sceneFilePath; }

  private:
    void MarkChanged();
    bool Bake(const ProgressSpan& span);
    bool RunScenario(int scenario, CObjProgress* progress);
    void RestoreState(const AdjustState& state, const ViewGeometry& geometry);
    bool RenderInto(Bitmap& result, const ProgressSpan& span) const;

    void RebuildView(ViewQuality quality);
    void DrawFromWork(ViewQuality quality);

    void AddRecords(CHistoryStep& step);
    void SaveSceneFile();
    void DropSceneFile();
    void TakeRecords(const CHistoryStep& step);
    void ReadScene();
    bool ReadStep(const CHistoryStep& step);

    CHistoryManager& m_history;
    StepCommitter m_committer;
    QString m_sceneFilePath;
    AdjustState m_state;

    // Guards the geometry and the two view bitmaps against the paint.
    mutable std::mutex m_viewLock;
    ViewGeometry m_geometry{ViewGeometry::ZoomFloor::FitBelowMinimum};
    ViewQuality m_viewQuality = ViewQuality::Settled;
    bool m_dragging = false;
    QPoint m_dragPoint;
};
