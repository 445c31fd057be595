// SPDX-License-Identifier: GPL-3.0-or-later
#include "CAdjustLogic.h"

#include <QtCore/QFile>

#include "AdjustChain.h"
#include "AdjustSliders.h"

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
    : CanvasLogic(AdjustTool, StepStyle::OnePerVisit, history, ViewGeometry::ZoomFloor::FitBelowMinimum),
      m_sceneFilePath(history.m_tempDir + QStringLiteral("AdEffectRes.bin")) {}

CAdjustLogic::~CAdjustLogic() {
    QFile::remove(m_sceneFilePath);
}

void CAdjustLogic::TakeSource(const Bitmap& picture) {
    m_state.WorkBitmap = picture;
    m_state.BaseBitmap = picture;
    MarkChanged();
}

void CAdjustLogic::Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect&, double scale) const {
    std::vector<AdjustCall> calls = AdjustChain(m_state.Basic, m_state.Advance, scale);
    const Bitmap start = m_sharpened.Start(views[0], calls);
    RunAdjustChain(start, shown, calls);
}

// Lets go of the former result at once, so that no full-size picture is held for nothing.
void CAdjustLogic::MarkChanged() {
    m_state.Recorded = false;
    m_state.ResultDirty = true;
    m_state.ResultBitmap = {};
}

void CAdjustLogic::SetValue(int index, int value) {
    const AdjustSlider* slider = FindAdjustSlider(index);
    if (!slider || !HasPicture()) return;
    const bool basic = slider->group == AdjustGroup::Basic;
    const bool otherGroupSet = basic ? !m_state.Advance.IsDefault() : !m_state.Basic.IsDefault();
    const auto set = [&] {
        (basic ? m_state.Basic.*slider->basicField : m_state.Advance.*slider->advanceField) = value;
        m_state.Modified = true;
    };
    if (m_state.Scenario.IsDefault() && !otherGroupSet) return ChangeValues(set);
    Whole([&] {
        Bake({});
        ShowLayers();
        ChangeValues(set);
        return true;
    });
}

// Of values alone: the layers are as they were.
void CAdjustLogic::ChangeValues(const std::function<void()>& change) {
    Whole([&] {
        change();
        MarkChanged();
        ShowValues();
        return true;
    });
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
    if (!HasPicture() || !FindAdjustScene(scenario) || m_state.Scenario.ScenarioIndex == scenario) return false;
    return Whole([&] {
        if (!RunScenario(scenario, progress)) return false;
        CommitStep();
        return true;
    });
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
    Report(progress, 94.9999988079071);
    ShowLayers();
    if (!whole.CanContinue()) return false;
    Report(progress, 100.0);
    m_state.Modified = true;
    return true;
}

void CAdjustLogic::ResetScenario() {
    if (m_state.Scenario.IsDefault()) return;
    Whole([this] {
        m_state.Scenario = {};
        m_state.WorkBitmap = m_state.BaseBitmap;
        MarkChanged();
        ShowLayers();
        return true;
    });
}

void CAdjustLogic::ResetBasic() {
    if (!m_state.Basic.IsDefault()) ChangeValues([this] { m_state.Basic = {}; });
}

void CAdjustLogic::ResetAdvance() {
    if (!m_state.Advance.IsDefault()) ChangeValues([this] { m_state.Advance = {}; });
}

Bitmap CAdjustLogic::RenderResult() {
    if (!m_state.WorkBitmap) return {};
    if (m_state.ResultDirty || !m_state.ResultBitmap) {
        Bitmap result;
        RenderInto(result, {});
        m_state.ResultBitmap = result;
        m_state.ResultDirty = false;
    }
    return m_state.ResultBitmap;
}

bool CAdjustLogic::RenderInto(Bitmap& result, const ProgressSpan& span) const {
    return RunAdjustChain(m_state.WorkBitmap, result, AdjustChain(m_state.Basic, m_state.Advance, 1.0), span);
}

bool CAdjustLogic::HasWork() const {
    return m_state.Modified && (StepOpen() || m_state.BakedPending || m_state.HasValues());
}
