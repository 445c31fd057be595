// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "CanvasLogic.h"
#include "CHistoryManager.h"
#include "PictureView.h"
#include "StepCommitter.h"

// Base of the logic objects whose picture is one bitmap and whose steps are snapshots of it. A tool adds what it does
// to the picture, and calls Replace with the result.
class SnapshotLogic : public CanvasLogic, public StepSource {
  public:
    SnapshotLogic(const SnapshotLogic&) = delete;
    SnapshotLogic& operator=(const SnapshotLogic&) = delete;

    void Reset() override;
    void SetViewSize(int width, int height) override { m_view.SetClient(width, height); }
    void SetSource(const Bitmap& picture) final;
    bool TakeViewState() final;
    void SetGeometry(const ViewGeometry& geometry, ViewQuality quality) override {
        m_view.SetGeometry(geometry, quality);
    }
    ViewGeometry Geometry() const override { return m_view.Geometry(); }
    CanvasView View() const override { return m_view.View(); }
    Bitmap Overview(QSize bounds) const override { return m_view.Overview(bounds); }
    Bitmap RenderResult() override { return m_view.Picture(); }
    bool Undo() override;
    bool Redo() override;
    bool Jump(int row) override;
    bool Revert() override;
    void Apply() override;
    bool IsImageChanged() const override;
    bool HasUnrecorded() const override { return m_dirty; }

    // A step with a snapshot of the picture; null when nothing was done since the last.
    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    // Shows a step's picture by SetSource. False, and nothing changes, for null, a step without a pixel record, and one
    // whose snapshot can't be read.
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return false; }
    bool OwnsRecord(int) const override { return false; }
    void OnStepCommitted() override { m_dirty = false; }
    // Records the present picture as a step. False when there is nothing to record or the history refused it; then it
    // stays pending.
    bool CommitStep();

    bool HasPicture() const { return !m_view.Picture().IsNull(); }
    // Size of the picture in pixels; 0 x 0 without one.
    QSize ImageSize() const { return {m_view.Picture().Width(), m_view.Picture().Height()}; }

  protected:
    // `stepName` is the key of the steps' name. The history outlives the object.
    SnapshotLogic(QString stepName, CHistoryManager& history);

    // Something was done to the picture: shows the result at its fit zoom and marks it as not recorded.
    void Replace(const Bitmap& picture);
    // The same in a geometry of the tool's own, which must count in the picture's size; `dirty` says whether the
    // history does not hold this picture. A null picture shows nothing.
    void Replace(const Bitmap& picture, const ViewGeometry& geometry, bool dirty);
    // Shows a smaller version of a result that is still to be made (PictureView::ShowStandIn), which is not recorded.
    // Whoever reads the result, BuildStep first of all, must see it made.
    void ShowStandIn(const Bitmap& standIn, const ViewGeometry& geometry, bool dirty);

    // A picture came in from outside the tool: entering, opening, a move in the history. Nothing here. On a worker too.
    virtual void OnSource() {}

    const Bitmap& Picture() const { return m_view.Picture(); }
    const CHistoryManager& History() const { return m_history; }

  private:
    CHistoryManager& m_history;
    StepCommitter m_committer;
    QString m_stepName;
    PictureView m_view;
    // Done and not yet recorded.
    bool m_dirty = false;
};
