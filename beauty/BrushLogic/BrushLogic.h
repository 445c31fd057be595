// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "BrushMix.h"
#include "CanvasLogic.h"
#include "PenTool.h"
#include "ProgressSpan.h"

// Base of the logic objects of the brush tools: a processed copy of the picture is painted into it with a soft disc. It
// holds the three full-size pictures - the base as the tool took it, the processed copy, and the working picture that
// is shown - and carries strokes out; a flavour adds what a stamp writes besides and what a step holds, a tool its
// effect.
//
// Base, processed and working picture share pixels until they differ. Transparent pictures are flattened on white.
class BrushLogic : public CanvasLogic, public PenTool {
  public:
    const Bitmap& Picture() const final { return m_state.working; }

    // Begins a stroke at a place of the client and stamps there. False, and nothing happens, outside the shown part of
    // the picture and without one.
    bool BeginStroke(QPoint client);
    // The hand is here now: stamps where the stroke has gone far enough. The rectangle of the client that changed.
    QRect MoveStroke(QPoint client);
    // Records what the stroke painted. False when the history refused it; then it stays pending.
    bool EndStroke() { return CommitStep(); }

    // One stamp with its corner at (x, y) of the picture, which must be there; without `force` only a quarter of the
    // stamp's side from the last one. The part of the picture that it covers; empty when it was not laid. May throw
    // std::bad_alloc the first time in a stroke; then nothing happened.
    QRect StampAt(int x, int y, bool force);
    // Gives the disc that radius in picture pixels.
    void RebuildBrush(int radius) { m_tip.Rebuild(radius); }

  protected:
    BrushLogic(const ToolFacts& tool, StepStyle style, BrushTip::Shape shape, int pen, CHistoryManager& history)
        : CanvasLogic(tool, style, history), PenTool(pen, 1), m_tip(shape) {}

    // The tool's effect on a picture of any size.
    virtual void Process(Bitmap& picture, const ProgressSpan& span) const = 0;
    // A stroke begins: what is shown must be the working picture. Nothing here.
    virtual void PrepareStroke() {}
    // How far a stamp's colours go from the base to the processed copy, 0 to 1.
    virtual double StampWeight() const { return 1.0; }
    // What a stamp writes besides the working picture, and notes. Before the working picture is written.
    virtual void OnStamp(const Stamp&) {}

    // Makes the processed copy anew from the base. False when the sink stopped it; the copy is then as it was.
    bool BuildCopies(const ProgressSpan& span = {});
    // Takes `picture`, flattened, as base and working picture, and builds the copy.
    void TakeSource(const Bitmap& picture) override;
    // Lets go of all pictures.
    void ForgetAll() override { m_state = {}; }

    struct State {
        Bitmap base;
        Bitmap processed;
        Bitmap working;
        // Something was stamped since the last step was recorded.
        bool dirty = false;
    };
    State m_state;

  private:
    std::optional<QPoint> PlaceAt(QPoint client) const;
    QRect Show(const QRect& part);

    BrushTip m_tip;
    QPoint m_last;
};
