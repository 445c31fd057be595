// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>

#include "CanvasLogic.h"
#include "CWarpField.h"
#include "PenTool.h"
#include "ProgressSpan.h"
#include "WarpQueue.h"

// Base of the logic objects of the tools that push pixels about; a tool states what a place of the hand does.
//
// The field of the whole picture lasts for the visit, so that all its strokes add up and every pixel is sampled once
// from the picture that came in. While the hand moves only a second field is pushed, over the view as it stood at the
// press; the same places wait for the picture, and are worked on a thread of their own when the stroke ends. Each
// stroke is a step with a snapshot; a move in the history begins a new field.
//
// Transparent pictures are flattened on white. Nothing is erased.
class WarpLogic : public CanvasLogic, public PenTool {
  public:
    // The picture as far as its places were worked.
    const Bitmap& Picture() const final;
    // The same with all of them worked.
    Bitmap RenderResult() override;

    // Percent; places that the hand was at before keep theirs.
    void SetStrength(int percent) { m_strength = percent; }
    int Strength() const { return m_strength; }
    // The radius of what moves, about twice that of the pen, since a push is felt only well inside of it: in pixels of
    // the view, and of the picture.
    int ViewRadius() const;
    int ImageRadius() const;

    // Makes the field of the picture, twice its memory; nothing where it is there. May throw std::bad_alloc, and then
    // the tool can do nothing until a later call succeeds.
    void Prepare();

    // Begins a stroke at a place of the client. False, and nothing happens, outside the shown part of the picture and
    // without one. May throw std::bad_alloc; then nothing happened.
    bool BeginStroke(QPoint client);
    // The hand is here now. The rectangle of the client that changed.
    QRect MoveStroke(QPoint client);
    // Works what waits, shows and records it. When the sink stops it what was not begun is dropped. False when there
    // was nothing to record or the history refused it; then it stays pending.
    bool EndStroke(const ProgressSpan& span);
    // The stroke is not to be: forgets what waits.
    void DropStroke();
    bool IsStroking() const { return m_stroke.has_value(); }

    // Works what waits, on the queue's thread; returns when that is done or the sink stopped it, which is false.
    bool WaitForWorker(const ProgressSpan& span);
    // Places of the stroke that the picture does not have yet.
    bool HasWaiting() const { return m_queue.Size() > 0; }

    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return false; }
    bool OwnsRecord(int) const override { return false; }
    bool HasWork() const override { return m_state.dirty; }
    void OnStepCommitted() override { m_state.dirty = false; }

  protected:
    struct Defaults {
        int pen;
        int strength;
    };
    WarpLogic(const ToolFacts& tool, CWarpField::Mode mode, Defaults defaults, CHistoryManager& history);

    void ForgetAll() override;
    void TakeSource(const Bitmap& picture) override;
    void Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect& part, double scale) const override;
    std::function<void()> RememberTool() override {
        return [this, state = m_state] { m_state = state; };
    }

  private:
    // A place of the hand in pixels of the view and of the picture.
    struct Place {
        QPoint view, image;
    };
    struct Stroke {
        // Where the next push of a moving hand begins.
        std::optional<Place> last;
        // As before the stroke.
        bool dirty = false;
    };

    std::optional<Place> PlaceAt(QPoint client) const;
    QRect OnStroke(const Place& to, const Place& from);
    QRect ShowPush(const Place& to, const Place& from);
    void CloseStroke();
    void Work(const WarpEntry& entry);

    struct State {
        // As it came in.
        Bitmap picture;
        // Its field; null until there is memory for it. Shared with what remembers it, which never pushes.
        std::shared_ptr<CWarpField> full;
        // The field was pushed.
        bool pushed = false;
        // Something was done since the last step was recorded.
        bool dirty = false;
    };

    const CWarpField::Mode m_mode;
    int m_strength;
    State m_state;
    std::optional<Stroke> m_stroke;
    std::optional<CWarpField> m_preview;  // while a stroke lasts
    // Places worked since the stroke began; the queue's thread counts, and is asked when it rests.
    int m_worked = 0;
    WarpQueue m_queue;  // last, since its thread uses the others
};
