// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepCommitter.h"

#include <algorithm>
#include <utility>

#include "ImageParams.h"

StepCommitter::StepCommitter(StepSource& source, StepStyle style, CHistoryManager& history)
    : m_source(source), m_history(history), m_style(style) {}

void StepCommitter::BeginVisit() {
    m_visit = {};
}

CommitResult StepCommitter::Commit() {
    return Commit(Image::Working);
}

CommitResult StepCommitter::Commit(Image image) {
    if (!m_history.PayOwed()) return CommitResult::Failed;
    std::unique_ptr<CHistoryStep> step = Build(image);
    if (!step) return CommitResult::Nothing;
    return Store(step, image) ? CommitResult::Committed : CommitResult::Failed;
}

std::unique_ptr<CHistoryStep> StepCommitter::Build(Image image) {
    if (image == Image::Working && m_visit.stepOpen && m_source.IsRecorded()) return nullptr;
    std::unique_ptr<CHistoryStep> step = m_source.BuildStep(image == Image::Final);
    if (step && m_visit.baseIsElsewhere && step->Image()) step->Image()->save = true;
    return step;
}

bool StepCommitter::Store(std::unique_ptr<CHistoryStep>& step, Image image) {
    if (!(m_visit.stepOpen ? m_history.PushOverCurrent(step) : m_history.PushStep(step))) return false;
    m_visit.stepOpen = m_style == StepStyle::OnePerVisit;
    m_visit.baseIsElsewhere = m_visit.stepOpen && image == Image::Final;
    m_source.OnStepCommitted();
    return true;
}

bool StepCommitter::Undo() {
    if (Commit() == CommitResult::Failed) return false;
    const CHistoryManager::Mark before = m_history.Position();
    return Arrive(m_history.Undo() ? m_history.CloneCurrent() : nullptr, before);
}

bool StepCommitter::Redo() {
    if (m_history.Owes() || (m_source.HasWork() && !m_source.IsRecorded())) return Arrive(nullptr, {});
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

StepCommitter::Left StepCommitter::Leave() {
    using Place = CHistoryManager::Place;
    m_history.PayOwed();
    std::unique_ptr<CHistoryStep> step = Build(Image::Final);
    if (step) {
        if (m_history.Owes() || !Store(step, Image::Final))
            m_history.Owe(std::move(step), m_visit.stepOpen ? Place::OverCurrent : Place::AfterCurrent);
        return Left::AsShown;
    }
    if (!MayFinishHead()) return Left::AsShown;
    FinishHead();
    return Left::OnNewest;
}

bool StepCommitter::MayFinishHead() const {
    return !m_history.AtNewest() && !m_history.Owes() && HoldsOwnRecords(*m_history.CloneHead());
}

void StepCommitter::FinishHead() {
    if (!Load(m_history.CloneHead())) return;
    std::unique_ptr<CHistoryStep> finished = m_source.BuildStep(true);
    m_history.PushOverHead(finished);
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
    m_visit = {m_style == StepStyle::OnePerVisit && m_source.HasParameters(), false};
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
