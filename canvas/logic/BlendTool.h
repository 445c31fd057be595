// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <QtCore/QString>

#include "CanvasLogic.h"
#include "CHistoryManager.h"
#include "ProgressSpan.h"
#include "StepCommitter.h"

// What a blend works on: a plain value, and a cheap one, since bitmaps share their pixels until they are written. It is
// all that a cancelled look has to put back.
struct BlendState {
    // Full size: the picture at tool entry, never changed by a look.
    Bitmap SourceBitmap;
    // Full size: the picture with the look at full strength; the source itself without a look.
    Bitmap EffectBitmap;
    // Full size: the two blended at ResultAlpha; null until it is asked for.
    Bitmap ResultBitmap;
    int ResultAlpha = -1;
    // View size: the visible parts of source and effect, and their blend, which is null at full strength.
    Bitmap ViewSourceBitmap;
    Bitmap ViewEffectBitmap;
    Bitmap ViewBlendBitmap;
    // No pixel of the view lets through what is behind it.
    bool ViewOpaque = true;
    // Strength in percent.
    int Alpha = 100;
    // The step that the tool stands on holds exactly this.
    bool Recorded = false;
};

// Base of the logic objects that lay one look over the whole picture and let it be faded: the source, the look's
// result, their blend in full and in view size, and the steps that they make in the history. A tool adds which look it
// is and how it is computed.
//
// Within one visit looks replace each other: each starts from the source. They stack across visits, since leaving the
// tool bakes the result into the picture. The strength is blended in view size while it moves; the full-size blend runs
// only when the result is asked for.
class BlendTool : public CanvasLogic, public StepSource {
  public:
    // Deletes the look's file.
    ~BlendTool() override;
    BlendTool(const BlendTool&) = delete;
    BlendTool& operator=(const BlendTool&) = delete;

    void Reset() override;
    void SetSource(const Bitmap& picture) override;
    bool TakeViewState() override;

    // The view. Each draws it anew when the geometry changed.
    void SetViewSize(int width, int height) override;
    void SetZoom(double zoom);
    void FitToWindow();
    void PanBy(int dx, int dy);
    // A drag by the mouse: fast drawing while it moves, the good one at its end.
    void BeginDrag(int x, int y);
    void DragTo(int x, int y);
    void EndDrag();
    void SetGeometry(const ViewGeometry& geometry, ViewQuality quality) override;
    ViewGeometry Geometry() const override;
    CanvasView View() const override;
    Bitmap Overview(QSize bounds) const override;

    // Fades the look; percent, held at 0 to 100. Previews, and leaves the history alone: the next commit records it.
    // Nothing happens without a look, and for the present strength.
    void SetAlpha(int percent);
    int Alpha() const { return m_state.Alpha; }
    // Blends the view's two bitmaps. Nothing at full strength, where the effect itself is shown.
    void RunBlendPreview();

    // The full picture: the effect itself at full strength, else the blend, computed once for each strength. Null
    // without a picture.
    Bitmap RenderResult() override;

    // The step of the look in force: with `finalImage` a snapshot of the result alone, else the source and the look's
    // record, whose result goes to the look's file. Null without a look.
    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    // Shows a step: its picture, look and strength. False, and nothing changes, for null, a step without a pixel
    // record, and one whose snapshot can't be read. A look whose file is missing or of another size is run again.
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return HasLook(); }
    bool IsRecorded() const override { return m_state.Recorded; }
    void OnStepCommitted() override;

    bool Undo() override;
    bool Redo() override;
    bool Jump(int row) override;
    bool Revert() override;
    void Apply() override;

    bool IsImageChanged() const override { return HasPicture() && (HasLook() || !m_history.IsOriginal()); }
    bool HasUnrecorded() const override { return HasPicture() && HasLook() && !m_state.Recorded; }
    bool HasPicture() const { return !m_state.SourceBitmap.IsNull(); }
    bool HasLook() const { return !LookId().isEmpty(); }
    const BlendState& State() const { return m_state; }
    // The file that holds the look's result at full strength while a step names it.
    const QString& LookFile() const { return m_lookFile; }

  protected:
    // `stepName` is the key of the steps' name, `fileName` that of the look's file in the folder of the history, which
    // outlives the object.
    BlendTool(QString stepName, const QString& fileName, CHistoryManager& history);

    // Computes the look that the tool has just taken up, from the source, at full strength, and commits it. When the
    // work fails or the sink stops it, everything here is as it was before and the result is false; the tool then puts
    // back which look it was.
    bool RunLook(CObjProgress* progress);

    // Tells the look in force from all others, whatever its strength; empty for none.
    virtual QString LookId() const = 0;
    virtual void ForgetLook() = 0;
    // Runs the look in force on the bitmap's own pixels. False when it failed or was stopped.
    virtual bool ComputeLook(Bitmap& picture, const ProgressSpan& span) const = 0;
    // The record of the look in force, with strength and file. `order` is set by the caller.
    virtual std::unique_ptr<CUndoRedoParams> MakeRecord() const = 0;
    // Takes up the look of a record of the tool's own type and yields its strength.
    virtual int TakeRecord(const CUndoRedoParams& record) = 0;

  private:
    void TakePicture(const Bitmap& source, const Bitmap& effect, int alpha);
    void Restore(const BlendState& state, const ViewGeometry& geometry);
    void RebuildView(ViewQuality quality);
    void DrawView(ViewQuality quality);
    void Blend();
    bool RunLookOnSource(CObjProgress* progress);
    void SaveLookFile();
    Bitmap ReadLook(const CHistoryStep& step, const Bitmap& source);

    CHistoryManager& m_history;
    StepCommitter m_committer;
    const QString m_stepName;
    const QString m_lookFile;
    // Which look the file holds, and the snapshot of the picture that it was run on; empty when that is not known.
    QString m_fileLook;
    QString m_fileBase;
    // Path of the history snapshot that the source was read from; empty when it came from another tool.
    QString m_snapshotPath;
    BlendState m_state;

    // Guards the geometry and the view bitmaps against the paint.
    mutable std::mutex m_viewLock;
    ViewGeometry m_geometry;
    ViewQuality m_viewQuality = ViewQuality::Settled;
    bool m_dragging = false;
    QPoint m_dragPoint;
};
