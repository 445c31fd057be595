// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>

#include "BrushLogic.h"

// Base of the brushes that paint the processed copy straight into the picture: no mask is kept, each stroke is a step
// with a snapshot, and a changed value counts for later strokes only.
class DirectBrushLogic : public BrushLogic {
  public:
    Bitmap RenderResult() override { return m_state.working; }

    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    // Base and processed copy stay as they are for a step of the present visit, so that undoing a stroke costs one
    // file; any other step is taken as a new picture.
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return false; }
    bool OwnsRecord(int) const override { return false; }
    bool HasWork() const override { return m_state.dirty; }
    void OnStepCommitted() override;

  protected:
    DirectBrushLogic(const ToolFacts& tool, BrushTip::Shape shape, int pen, CHistoryManager& history)
        : BrushLogic(tool, StepStyle::OnePerCommit, shape, pen, history) {}

    void ForgetAll() override;
    void TakeSource(const Bitmap& picture) override;

    // Runs `change`, which sets the effect's values, and makes the processed copy anew; strokes keep their look. False,
    // and nothing changed, without a picture and when the sink stopped it: `change` is then undone by RememberValues.
    bool ProcessAnew(const std::function<void()>& change, CObjProgress* progress);
    // What puts the effect's values back to this moment.
    virtual std::function<void()> RememberValues() = 0;
    std::function<void()> RememberTool() final;

  private:
    // The snapshots that were made in this visit, and the one that it began with.
    std::set<QString> m_visit;
};
