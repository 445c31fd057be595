// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "CHistoryManager.h"
#include "CHistoryStep.h"

// What a tool states about its steps; its logic object implements this and StepCommitter does the rest.
//
// Calls come on the thread on which the committer is called, and never overlap.
class StepSource {
  public:
    virtual ~StepSource() = default;

    // A step of the tool's pending work, null when there is none. `finalImage` asks for a plain snapshot of the full
    // result; otherwise the step may hold the tool's base and its parameter records. Asking changes nothing in the
    // tool.
    virtual std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) = 0;

    // Shows `step`, takes its parameters over and yields true. A null step, one whose first record is no pixel record
    // and one whose pixels can't be read yield false and leave picture, parameters and controls as they were; for null
    // the tool may paint what it has again.
    virtual bool LoadStep(std::unique_ptr<CHistoryStep> step) = 0;

    // The tool's parameters are other than default, so that its next commit belongs into the step that it stands on.
    // Asked after LoadStep.
    virtual bool HasParameters() const = 0;

    // Records of this GetType() are this tool's. Before the tool is left the newest step must hold none of them.
    virtual bool OwnsRecord(int type) const = 0;

    // Work is in force that leaving, undo or revert records.
    virtual bool HasWork() const = 0;
    // The step that the tool stands on holds exactly the present state: storing it once more would change nothing but
    // the state's stamp. A tool that can't tell says no.
    virtual bool IsRecorded() const { return false; }

    // The step last built is in the history: nothing is pending any more.
    virtual void OnStepCommitted() {}
};

// Whether the commits of one visit go into one step (sliders, masks: the next version overwrites the step that the
// visit already has) or each into a step of its own (crop, stamps).
enum class StepStyle { OnePerVisit, OnePerCommit };

enum class CommitResult {
    // There was no pending work.
    Nothing,
    Committed,
    // The step could not be written; the work is still pending.
    Failed,
};

// The one home of push-or-overwrite, undo, redo, jump, revert and the rule for leaving a tool. A tool's logic object
// owns one and states only what its steps hold (StepSource).
//
// A move never loses work: what is owed and what is pending is committed first, and when that fails, or the snapshot
// moved onto can't be read, history, picture and parameters stay where they were and the window layer finds a notice in
// CHistoryManager::TakeFailureNotice. Only Redo commits nothing, and therefore refuses while work is pending.
//
// On the main thread, except Leave, which runs on the worker of a tool change while the main thread stands in the modal
// progress loop. The source and the manager must outlive the committer.
class StepCommitter {
  public:
    StepCommitter(StepSource& source, StepStyle style, CHistoryManager& history = CHistoryManager::Instance());

    // Puts pending work into the history: overwrites the visit's step when it has one, else pushes.
    CommitResult Commit();

    // Commits, then goes one step back. False when nothing moved: LoadStep(null) was called, or the move was refused.
    bool Undo();
    // Goes one step forward, without a commit. False, and nothing moves, while the tool holds what no step holds: a
    // commit would cost the steps ahead, and going there the work.
    bool Redo();
    // Commits, then goes to the step that stood in this 0-based row of the history list before the commit.
    bool Jump(int row);
    // Commits the final image, then, unless the picture is the original already, adds a step on the opened picture and
    // shows it. False when the commit failed or the opened picture can't be read.
    bool Revert();

    // For leaving the tool, after it handed over its result and view: commits the final image, so that the step can be
    // read without this tool. A step that can't be written is owed by the history from then on. With nothing pending, a
    // newest step that still holds the tool's records (left ahead by undo) is loaded and overwritten by its final
    // image: the tool then holds that step's picture, and has to put back the one on show.
    enum class Left { AsShown, OnNewest };
    Left Leave();

    // The visit owns the current step: the next commit overwrites it.
    bool StepOpen() const { return m_visit.stepOpen; }
    // A new picture came into the tool from outside (entering, opening): the visit owns no step.
    void BeginVisit();

    // What a committer knows of the visit, to be put back by an act that fails half way.
    struct Visit {
        bool stepOpen = false;
        // A final image was committed and the tool stayed on: its base is not in the current step's file.
        bool baseIsElsewhere = false;
    };
    const Visit& State() const { return m_visit; }
    void SetState(const Visit& visit) { m_visit = visit; }

  private:
    enum class Image { Working, Final };
    CommitResult Commit(Image image);
    std::unique_ptr<CHistoryStep> Build(Image image);
    bool Store(std::unique_ptr<CHistoryStep>& step, Image image);
    bool Load(std::unique_ptr<CHistoryStep> step);
    bool Arrive(std::unique_ptr<CHistoryStep> step, const CHistoryManager::Mark& before);
    bool MayFinishHead() const;
    void FinishHead();
    bool HoldsOwnRecords(const CHistoryStep& step) const;

    StepSource& m_source;
    CHistoryManager& m_history;
    const StepStyle m_style;
    Visit m_visit;
};
