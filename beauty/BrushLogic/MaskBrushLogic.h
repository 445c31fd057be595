// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BrushLogic.h"
#include "BrushMask.h"
#include "EntryPicture.h"

// Base of the brushes that paint through a mask: strokes stamp into the mask and the working picture at once, and
// because of the mask strength, colour and brightness can still be changed afterwards. All strokes of one visit share
// one step of the history.
//
// While a slider moves only the view is composed, out of the visible parts of base, processed copy and mask; its
// release composes the full picture.
class MaskBrushLogic : public BrushLogic {
  public:
    // Deletes mask and source file.
    ~MaskBrushLogic() override;

    // 0 to 1; what lies outside is held there.
    double Strength() const { return m_values.strength; }
    // Something is painted; before that nothing can be composed, and a new strength is only kept.
    bool HasPaint() const { return m_painted.any; }
    const BrushMask& Mask() const { return m_painted.mask; }

    // Composes the full picture anew with this strength and shows it.
    void ComposeFull(double strength);
    // The same for the view alone, while a slider moves. ComposeFull ends it.
    void ComposeView(double strength);

    Bitmap RenderResult() override { return m_painted.previewing ? Composed() : m_state.working; }

    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return m_painted.pending; }
    bool HasWork() const override { return m_state.dirty || m_painted.pending; }
    bool IsRecorded() const override { return m_painted.recorded; }
    void OnStepCommitted() override;

    // The files of the picture as the tool took it, and of the mask.
    const QString& SourceFile() const { return m_source.Path(); }
    const QString& MaskFile() const { return m_maskFile; }

  protected:
    // File names within the folder of the history, which outlives the object.
    struct Files {
        const char* source;
        const char* mask;
    };
    MaskBrushLogic(const ToolFacts& tool, const Files& files, BrushTip::Shape shape, int pen, CHistoryManager& history);

    // What sliders and colours say: every such tool has a strength, the others count where its effect knows them.
    struct Values {
        double strength = 0.0;
        int brightness = 0;
        int red = 0, green = 0, blue = 0;
    };
    const Values& CurrentValues() const { return m_values; }
    // Values were previewed that the processed copy does not have yet.
    bool IsStale() const { return m_painted.stale; }
    // Before the first picture.
    void SetDefaults(const Values& values) { m_values = values; }
    // Takes `values` and makes the processed copy and the picture anew. False, and nothing changed, when the sink
    // stopped it.
    bool ProcessAnew(const Values& values, CObjProgress* progress);
    // The same for the view alone, while a slider moves. ProcessAnew ends it.
    void PreviewProcess(const Values& values);

    // The record of the present values, with this mask file; `order` is set by the caller.
    virtual std::unique_ptr<CUndoRedoParams> MakeRecord(const QString& maskFile) const = 0;
    // What a record of the tool's own type says; values that it does not hold stay as they are.
    struct Recorded {
        Values values;
        QString maskFile;  // empty without a record
    };
    virtual Recorded ReadRecord(const CUndoRedoParams& record) const = 0;
    // The strength as records hold it: percent, cut off behind the point.
    int StrengthPercent() const;

    void ForgetAll() override;
    void TakeSource(const Bitmap& picture) override;
    void OnSource() override { m_source.Keep(m_state.base); }
    std::vector<Bitmap> Layers() const final;
    void Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect& part, double scale) const final;
    std::function<void()> RememberTool() final;
    void PrepareStroke() override;
    double StampWeight() const override;
    void OnStamp(const Stamp& stamp) override;

  private:
    // What belongs to the base; the pixels are shared until they are written, so a copy costs nothing.
    struct Painted {
        BrushMask mask;
        // Something was stamped.
        bool any = false;
        // A step of this tool stands in the history, and the next one takes its place.
        bool pending = false;
        // That step holds exactly this.
        bool recorded = false;
        // The view is composed of the layers while a slider moves.
        bool previewing = false;
        // The processed copy is not that of the present values.
        bool stale = false;
        // Path of the history's snapshot that holds the base; empty when that is not known.
        QString snapshotPath;
    };

    Bitmap Composed() const;
    Bitmap Processed() const;
    void ShowPreview();
    void ShowComposed();
    Recorded RecordOf(const CHistoryStep& step) const;
    void TakeMask(const QString& file);

    EntryPicture m_source;
    const QString m_maskFile;
    Values m_values;
    Painted m_painted;
};
