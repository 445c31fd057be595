// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepCommitter.h"

#include <algorithm>
#include <utility>

#include "ImageParams.h"

StepCommitter::StepCommitter(StepSource& source, StepStyle style, CHistoryManager& history)
    : m_source(source), m_history(history), m_style(style) {}

void StepCommitter::BeginVisit() {
    m_stepOpen = false;
    m_baseIsElsewhere = false;
}

CommitResult StepCommitter::Commit() {
    return Commit(Image::Working);
}

CommitResult StepCommitter::Commit(Image image) {
    if (image == Image::Working && m_stepOpen && m_source.IsRecorded()) return CommitResult::Nothing;
    std::unique_ptr<CHistoryStep> step = m_source.BuildStep(image == Image::Final);
    if (!step) return CommitResult::Nothing;
    if (m_baseIsElsewhere && step->Image()) step->Image()->save = true;
    const bool stored = m_stepOpen ? m_history.PushOverCurrent(step) : m_history.PushStep(step);
    if (!stored) return CommitResult::Failed;
    m_stepOpen = m_style == StepStyle::OnePerVisit;
    m_baseIsElsewhere = m_stepOpen && image == Image::Final;
    m_source.OnStepCommitted();
    return CommitResult::Committed;
}

bool StepCommitter::Undo() {
    if (Commit() == CommitResult::Failed) return false;
    const CHistoryManager::Mark before = m_history.Position();
    return Arrive(m_history.Undo() ? m_history.CloneCurrent() : nullptr, before);
}

bool StepCommitter::Redo() {
    const CHistoryManager::Mark before = m_history.Position();
    return Arrive(m_history.Redo() ? m_history.CloneCurrent() : nullptr, before);
}

bool StepCommitter::Jump(int row) {
    const int oldest = m_history.m_tail;
    if (Commit() == CommitResult::Failed) return false;
    // A commit into a full ring drops the oldest step, and every row moves up by one.
    const int stepNo = m_history.m_tail == oldest ? row + 1 : row;
    const CHistoryManager::Mark before = m_history.Position();
    return Arrive(m_history.JumpTo(stepNo), before);
}

bool StepCommitter::Revert() {
    if (Commit(Image::Final) == CommitResult::Failed) return false;
    if (m_history.IsOriginal()) return true;
    // Loaded before it is pushed, since a push can't be taken back: it would have cost the steps ahead.
    if (!Load(m_history.MakeRevertStep())) return false;
    std::unique_ptr<CHistoryStep> step = m_history.MakeRevertStep();
    return m_history.PushStep(step);
}

bool StepCommitter::Leave() {
    const CommitResult result = Commit(Image::Final);
    return result == CommitResult::Nothing ? FinishHead() : result == CommitResult::Committed;
}

bool StepCommitter::FinishHead() {
    if (m_history.AtNewest()) return true;
    std::unique_ptr<CHistoryStep> head = m_history.CloneHead();
    if (!HoldsOwnRecords(*head)) return true;
    if (!Load(std::move(head))) return false;
    std::unique_ptr<CHistoryStep> finished = m_source.BuildStep(true);
    return m_history.PushOverHead(finished);
}

bool StepCommitter::HoldsOwnRecords(const CHistoryStep& step) const {
    const auto& records = step.Params();
    return !records.empty() && std::any_of(records.begin() + 1, records.end(),
                                           [&](const auto& record) { return m_source.OwnsRecord(record->GetType()); });
}

bool StepCommitter::Load(std::unique_ptr<CHistoryStep> step) {
    const bool loaded = m_source.LoadStep(std::move(step));
    m_history.NoteRead(loaded);
    if (!loaded) return false;
    m_stepOpen = m_style == StepStyle::OnePerVisit && m_source.HasParameters();
    m_baseIsElsewhere = false;
    return true;
}

bool StepCommitter::Arrive(std::unique_ptr<CHistoryStep> step, const CHistoryManager::Mark& before) {
    if (!step) {
        m_source.LoadStep(nullptr);
        return false;
    }
    if (Load(std::move(step))) return true;
    m_history.ReturnTo(before);
    return false;
}
