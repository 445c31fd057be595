// SPDX-License-Identifier: GPL-3.0-or-later
#include "AdjustLogic.h"

#include <QtCore/QFile>

#include "AdjustChain.h"
#include "AdjustSliders.h"
#include "PictureView.h"

namespace {

// Shares of the progress bar: baking first, the scene between 34 and 85, then the view.
constexpr int BakeEnd = 34;
constexpr int SceneStart = 34;
constexpr int SceneEnd = 85;

void Report(CObjProgress* progress, double percent) {
    if (progress) progress->SetValue(static_cast<float>(percent));
}

}  // namespace

CAdjustLogic::CAdjustLogic(CHistoryManager& history)
    : m_history(history),
      m_committer(*this, StepStyle::OnePerVisit, history),
      m_sceneFilePath(history.m_tempDir + QStringLiteral("AdEffectRes.bin")) {}

CAdjustLogic::~CAdjustLogic() {
    QFile::remove(m_sceneFilePath);
}

void CAdjustLogic::Reset() {
    const std::lock_guard lock(m_viewLock);
    m_state = {};
    m_committer.BeginVisit();
    const QSize client = m_geometry.Client();
    m_geometry = ViewGeometry(ViewGeometry::ZoomFloor::FitBelowMinimum);
    m_geometry.SetClient(client);
    m_dragging = false;
}

void CAdjustLogic::SetSource(const Bitmap& picture) {
    if (!picture) return;
    m_state.WorkBitmap = picture;
    m_state.BaseBitmap = picture;
    MarkChanged();
    {
        const std::lock_guard lock(m_viewLock);
        const QSize size(picture.Width(), picture.Height());
        if (size != m_geometry.Image()) {
            m_geometry.SetImage(size);
            m_geometry.Fit();
        }
    }
    RebuildView(ViewQuality::Settled);
}

bool CAdjustLogic::TakeViewState() {
    const Bitmap picture = m_history.CurrentBitmap();
    const CViewState* view = m_history.ViewState();
    if (!picture || !view) return false;
    m_state.WorkBitmap = picture;
    m_state.BaseBitmap = picture;
    MarkChanged();
    {
        const std::lock_guard lock(m_viewLock);
        m_geometry.SetImage({picture.Width(), picture.Height()});
        m_geometry.Restore(view->zoom, {view->x, view->y});
        if (IsViewOf(*view, m_geometry)) {
            m_state.ViewBitmap = view->bitmap;
            m_state.ViewSourceBitmap = view->bitmap;
            m_state.ViewRebuilt = false;
            m_state.ViewOpaque = view->bitmap.IsOpaque();
            return true;
        }
    }
    RebuildView(ViewQuality::Settled);
    return true;
}

// Lets go of the former result at once, so that no full-size picture is held for nothing.
void CAdjustLogic::MarkChanged() {
    m_state.Recorded = false;
    m_state.ResultDirty = true;
    m_state.ResultBitmap = {};
}

void CAdjustLogic::SetValue(int index, int value) {
    const AdjustSlider* slider = FindAdjustSlider(index);
    if (!slider || !m_state.WorkBitmap) return;
    const bool basic = slider->group == AdjustGroup::Basic;
    const bool otherGroupSet = basic ? !m_state.Advance.IsDefault() : !m_state.Basic.IsDefault();
    if (!m_state.Scenario.IsDefault() || otherGroupSet) {
        Bake({});
        DrawFromWork(ViewQuality::Settled);
    }
    (basic ? m_state.Basic.*slider->basicField : m_state.Advance.*slider->advanceField) = value;
    MarkChanged();
    m_state.Modified = true;
    RunPreview();
}

int CAdjustLogic::GetValue(int index) const {
    const AdjustSlider* slider = FindAdjustSlider(index);
    if (!slider) return 0;
    return slider->group == AdjustGroup::Basic ? m_state.Basic.*slider->basicField
                                               : m_state.Advance.*slider->advanceField;
}

AdjustPanelValues CAdjustLogic::GetPanelValues() const {
    AdjustPanelValues values{};
    values[0] = m_state.Scenario.ScenarioIndex;
    for (const AdjustSlider& slider : AdjustSliders)
        values[static_cast<std::size_t>(slider.panelPlace)] = GetValue(slider.index);
    return values;
}

// Folds scene and values into the base, and leaves all of them at no change. False, and the base is as it was, when the
// sink stopped it.
bool CAdjustLogic::Bake(const ProgressSpan& span) {
    Bitmap result;
    if (!m_state.ResultDirty && m_state.ResultBitmap)
        result = m_state.ResultBitmap;
    else if (!RenderInto(result, span))
        return false;
    m_state.BaseBitmap = result;
    m_state.WorkBitmap = result;
    m_state.Scenario = {};
    m_state.Basic = {};
    m_state.Advance = {};
    MarkChanged();
    m_state.Modified = true;
    m_state.BakedPending = true;
    return true;
}

bool CAdjustLogic::ApplyScenario(int scenario, CObjProgress* progress) {
    if (!m_state.WorkBitmap || !FindAdjustScene(scenario) || m_state.Scenario.ScenarioIndex == scenario) return false;
    const AdjustState before = m_state;
    const ViewGeometry geometry = Geometry();
    bool done = false;
    try {
        done = RunScenario(scenario, progress);
    } catch (...) {  // out of memory: the caller hears of it, the picture stays
        RestoreState(before, geometry);
        throw;
    }
    if (done)
        CommitStep();
    else
        RestoreState(before, geometry);
    return done;
}

bool CAdjustLogic::RunScenario(int scenario, CObjProgress* progress) {
    const ProgressSpan whole{progress, 0, 100};
    if (!m_state.Advance.IsDefault() || !m_state.Basic.IsDefault()) {
        if (!Bake({progress, 0, BakeEnd})) return false;
        Report(progress, 34.99999940395355);
    }
    m_state.Scenario.ScenarioIndex = scenario;
    m_state.WorkBitmap = m_state.BaseBitmap;
    m_state.SceneFileCurrent = false;
    MarkChanged();
    if (!RunAdjustScene(m_state.WorkBitmap, scenario, {progress, SceneStart, SceneEnd})) return false;
    DrawFromWork(ViewQuality::Settled);
    Report(progress, 94.9999988079071);
    RunPreview();
    if (!whole.CanContinue()) return false;
    Report(progress, 100.0);
    m_state.Modified = true;
    return true;
}

void CAdjustLogic::RestoreState(const AdjustState& state, const ViewGeometry& geometry) {
    const std::lock_guard lock(m_viewLock);
    m_state = state;
    m_geometry = geometry;
}

void CAdjustLogic::ResetScenario() {
    if (m_state.Scenario.IsDefault()) return;
    m_state.Scenario = {};
    m_state.WorkBitmap = m_state.BaseBitmap;
    MarkChanged();
    RebuildView(ViewQuality::Settled);
}

void CAdjustLogic::ResetBasic() {
    if (m_state.Basic.IsDefault()) return;
    m_state.Basic = {};
    MarkChanged();
    RunPreview();
}

void CAdjustLogic::ResetAdvance() {
    if (m_state.Advance.IsDefault()) return;
    m_state.Advance = {};
    MarkChanged();
    RunPreview();
}

Bitmap CAdjustLogic::RenderResult() {
    if (!m_state.WorkBitmap) return {};
    if (m_state.ResultDirty || !m_state.ResultBitmap) {
        RenderInto(m_state.ResultBitmap, {});
        m_state.ResultDirty = false;
    }
    return m_state.ResultBitmap;
}

bool CAdjustLogic::RenderInto(Bitmap& result, const ProgressSpan& span) const {
    result = m_state.WorkBitmap;
    return RunAdjustChain(result, AdjustChain(m_state.Basic, m_state.Advance, 1.0), span);
}

bool CAdjustLogic::HasPending() const {
    return m_state.Modified && (m_committer.StepOpen() || m_state.BakedPending || m_state.HasValues());
}

bool CAdjustLogic::IsImageChanged() const {
    return !m_history.IsOriginal() || m_state.BakedPending || HasPending();
}
