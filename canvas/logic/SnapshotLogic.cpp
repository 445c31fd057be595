// SPDX-License-Identifier: GPL-3.0-or-later
#include "SnapshotLogic.h"

#include <utility>

#include "ImageParams.h"

SnapshotLogic::SnapshotLogic(QString stepName, CHistoryManager& history)
    : m_history(history), m_committer(*this, StepStyle::OnePerCommit, history), m_stepName(std::move(stepName)) {}

void SnapshotLogic::Reset() {
    m_view.Clear();
    m_dirty = false;
    m_committer.BeginVisit();
}

void SnapshotLogic::SetSource(const Bitmap& picture) {
    if (!picture) return;
    m_view.SetPicture(picture);
    m_dirty = false;
    OnSource();
}

bool SnapshotLogic::TakeViewState() {
    const Bitmap picture = m_history.CurrentBitmap();
    const CViewState* state = m_history.ViewState();
    if (!picture || !state) return false;
    m_view.TakeViewState(picture, *state);
    m_dirty = false;
    OnSource();
    return true;
}

void SnapshotLogic::Replace(const Bitmap& picture) {
    ViewGeometry geometry = Geometry();
    geometry.SetImage({picture.Width(), picture.Height()});
    geometry.Fit();
    Replace(picture, geometry, true);
}

void SnapshotLogic::Replace(const Bitmap& picture, const ViewGeometry& geometry, bool dirty) {
    if (picture)
        m_view.SetPicture(picture, geometry, ViewQuality::Settled);
    else
        m_view.Clear();
    m_dirty = dirty;
}

void SnapshotLogic::ShowStandIn(const Bitmap& standIn, const ViewGeometry& geometry, bool dirty) {
    m_view.ShowStandIn(standIn, geometry);
    m_dirty = dirty;
}

std::unique_ptr<CHistoryStep> SnapshotLogic::BuildStep(bool) {
    if (!HasPicture() || !m_dirty) return nullptr;
    auto step = std::make_unique<CHistoryStep>();
    step->SetNameFromKey(m_stepName);
    auto image = std::make_unique<ImageParams>();
    image->image = m_view.Picture();
    image->save = true;
    step->AddParams(std::move(image));
    return step;
}

bool SnapshotLogic::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    const Bitmap picture = step->ReadImage();
    if (!picture) return false;
    SetSource(picture);
    return true;
}

bool SnapshotLogic::CommitStep() {
    return m_committer.Commit() == CommitResult::Committed;
}

bool SnapshotLogic::Undo() {
    return HasPicture() && m_committer.Undo();
}

bool SnapshotLogic::Redo() {
    return HasPicture() && m_committer.Redo();
}

bool SnapshotLogic::Jump(int row) {
    return HasPicture() && m_committer.Jump(row);
}

bool SnapshotLogic::Revert() {
    return HasPicture() && m_committer.Revert();
}

void SnapshotLogic::Apply() {
    if (!HasPicture()) return;
    m_history.SetCurrentBitmap(m_view.Picture());
    m_history.SetViewState(m_view.MakeViewState());
    m_committer.Leave();
}

bool SnapshotLogic::IsImageChanged() const {
    return HasPicture() && (m_dirty || !m_history.IsOriginal());
}
