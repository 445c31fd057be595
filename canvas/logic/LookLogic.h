// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

#include "CanvasLogic.h"
#include "ProgressSpan.h"

// Base of the logic objects that lay one look over the whole picture and let it be faded: the source, the look's
// result, and their blend. A tool adds which look it is and how it is computed.
//
// A look may make the picture larger or smaller; such a one can't be faded, since there is nothing to fade it into.
//
// Within one visit looks replace each other: each starts from the source. They stack across visits, since leaving the
// tool bakes the result into the picture. The strength is blended in view size while it moves; the full-size blend runs
// only when the result is asked for.
class LookLogic : public CanvasLogic {
  public:
    // The picture without a look.
    static constexpr int NoLook = -1;

    // Deletes the look's file.
    ~LookLogic() override;

    // Runs a look on the source at full strength in place of the present one, shows and commits it. False when nothing
    // came of it: no picture, no such look, or it failed or the sink stopped it; picture, look, strength and history
    // are then as they were.
    bool ApplyLook(int look, CObjProgress* progress);
    // The look in force; NoLook for none.
    int Look() const { return m_state.look; }
    bool HasLook() const { return m_state.look != NoLook; }

    // There is a look, and it can be faded.
    bool CanFade() const;
    // Fades the look; percent, held at 0 to 100. Previews, and leaves the history alone: the next commit records it.
    // Nothing happens without a look that can be faded, and for the present strength.
    void SetAlpha(int percent);
    int Alpha() const { return m_state.alpha; }

    // The picture at tool entry, never changed by a look.
    const Bitmap& Picture() const override { return m_state.source; }
    // That of the look's result.
    QSize ImageSize() const override { return {m_state.effect.Width(), m_state.effect.Height()}; }
    // The effect itself at full strength, else the blend, computed once for each strength. Null without a picture.
    Bitmap RenderResult() override;

    // The step of the look in force: with `finalImage` a snapshot of the result alone, else the source and the look's
    // record, whose result goes to the look's file. Null without a look.
    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    // Shows a step: its picture, look and strength. False, and nothing changes, for null, a step without a pixel
    // record, and one whose snapshot can't be read. A look whose file is missing or of another size is run again.
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    // Whether the look last asked for, by ApplyLook or by a step, failed by itself: it was neither stopped nor short of
    // memory. A step's picture is then shown without it. Asking forgets it.
    bool TakeFailure() { return std::exchange(m_failed, false); }
    bool HasParameters() const override { return HasLook(); }
    bool HasWork() const override { return HasLook(); }
    bool IsRecorded() const override { return m_state.recorded; }
    void OnStepCommitted() override;

    // The file that holds the look's result at full strength while a step names it.
    const QString& LookFile() const { return m_lookFile; }

  protected:
    // `fileName` is that of the look's file in the folder of the history, which outlives the object.
    LookLogic(const ToolFacts& tool, const QString& fileName, CHistoryManager& history);

    // There is a look of that number.
    virtual bool Exists(int look) const = 0;
    // Runs a look on the bitmap's own pixels, or puts a bitmap of another size in its place. False when it failed or
    // was stopped.
    virtual bool Compute(Bitmap& picture, int look, const ProgressSpan& span) const = 0;
    // A look can be faded when its result has the picture's size; one that can't counts as full strength always.
    virtual bool Fades(int) const { return true; }
    // The record of the look in force, with strength and file. `order` is set by the caller.
    virtual std::unique_ptr<CUndoRedoParams> MakeRecord() const = 0;
    // The look and the strength of a record of the tool's own type.
    struct Recorded {
        int look = NoLook;
        int alpha = 100;
    };
    virtual Recorded ReadRecord(const CUndoRedoParams& record) const = 0;

  private:
    bool RunLook(int look, CObjProgress* progress);
    void ForgetAll() final;
    void TakeSource(const Bitmap& picture) final;
    std::vector<Bitmap> Layers() const final;
    bool IsFaded() const { return m_state.alpha != 100 && CanFade(); }
    bool HasSourceSize(const Bitmap& result) const;
    void Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect& part, double scale) const final;
    std::function<void()> RememberTool() final {
        return [this, state = m_state] { m_state = state; };
    }
    void SaveLookFile();
    Bitmap ReadLook(const CHistoryStep& step);

    // A plain value, and a cheap one, since bitmaps share their pixels until they are written.
    struct State {
        Bitmap source;
        // The picture with the look at full strength; the source itself without a look.
        Bitmap effect;
        // The two blended at resultAlpha; null until it is asked for.
        Bitmap result;
        int resultAlpha = -1;
        int look = NoLook;
        // Strength in percent.
        int alpha = 100;
        // The step that the tool stands on holds exactly this.
        bool recorded = false;
        // Path of the history snapshot that the source was read from; empty when it came from another tool.
        QString snapshotPath;
        // Which look the file holds, at which size, and the snapshot of the picture that it was run on; empty when that
        // is not known.
        int fileLook = NoLook;
        QSize fileSize{};
        QString fileBase;
    };

    const QString m_lookFile;
    State m_state;
    bool m_failed = false;
};
