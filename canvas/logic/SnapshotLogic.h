// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "CanvasLogic.h"

// Base of the logic objects whose picture is one bitmap and whose steps are snapshots of it. A tool adds what it does
// to the picture, and calls Replace with the result.
class SnapshotLogic : public CanvasLogic {
  public:
    const Bitmap& Picture() const final { return m_state.picture; }
    Bitmap RenderResult() override { return m_state.picture; }

    // A step with a snapshot of the picture; null when nothing was done since the last.
    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    // Shows a step's picture by SetSource. False, and nothing changes, for null, a step without a pixel record, and one
    // whose snapshot can't be read.
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return false; }
    bool OwnsRecord(int) const override { return false; }
    bool HasWork() const override { return m_state.dirty; }
    void OnStepCommitted() override { m_state.dirty = false; }

  protected:
    SnapshotLogic(const ToolFacts& tool, CHistoryManager& history)
        : CanvasLogic(tool, StepStyle::OnePerCommit, history) {}

    // Something was done to the picture: shows the result at its fit zoom and marks it as not recorded.
    void Replace(const Bitmap& picture);
    // The same in a geometry of the tool's own, which must count in the picture's size; `dirty` says whether the
    // history does not hold this picture.
    void Replace(const Bitmap& picture, const ViewGeometry& geometry, bool dirty);
    // Shows `standIn`, a smaller version of a picture that is still to be made, as that picture in `geometry`, until
    // the next Replace. Picture() stays what it was: whoever reads the result, BuildStep first of all, must see it
    // made.
    void ShowStandIn(const Bitmap& standIn, const ViewGeometry& geometry, bool dirty);

    // Changes the picture within `part` of it, which may reach out: `change` gets the picture, in pixels that nobody
    // shares, and says whether anything came of it. When not, and when it throws, the part is put back; else it is
    // shown, and the picture is marked as not recorded. The rectangle of the client to be painted again; none when
    // nothing changed. After a first change, which may copy the picture, this costs what the part costs.
    std::optional<QRect> Change(const QRect& part, const std::function<bool(Bitmap&)>& change);

    void ForgetAll() override { m_state = {}; }
    void TakeSource(const Bitmap& picture) override { m_state = {picture, {}, false}; }
    std::vector<Bitmap> Layers() const final { return {m_state.standIn ? m_state.standIn : m_state.picture}; }
    std::function<void()> RememberTool() override {
        return [this, state = m_state] { m_state = state; };
    }

  private:
    struct State {
        Bitmap picture;
        Bitmap standIn;
        // Done and not yet recorded.
        bool dirty = false;
    };
    State m_state;
};
