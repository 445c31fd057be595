// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>

#include "AdjustChain.h"
#include "AppPaths.h"
#include "CAdjustLogic.h"
#include "ImageParams.h"
#include "PC_File.h"

// The part of CAdjustLogic that makes and reads history steps.

namespace {

// Adds a copy of `record` as the next in the step.
template <class Record>
void Append(CHistoryStep& step, const Record& record) {
    auto copy = std::make_unique<Record>(record);
    copy->order = static_cast<int>(step.Params().size());
    step.AddParams(std::move(copy));
}

}  // namespace

// The pixel record always holds the base, also when a scene is active: the scene's result lies in the scene file, and
// with the base in the snapshot another scene still starts from the same picture after undo and redo.
std::unique_ptr<CHistoryStep> CAdjustLogic::BuildStep(bool finalImage) {
    if (!HasPicture() || !HasWork()) return nullptr;
    if (finalImage) return NewStep(RenderResult(), true);
    auto step = NewStep(m_state.BaseBitmap, m_state.BakedPending);
    AddRecords(*step);
    return step;
}

void CAdjustLogic::AddRecords(CHistoryStep& step) {
    if (!m_state.Scenario.IsDefault()) {
        SaveSceneFile();
        m_state.Scenario.path = m_sceneFilePath;
        Append(step, m_state.Scenario);
    }
    if (!m_state.Basic.IsDefault()) Append(step, m_state.Basic);
    if (!m_state.Advance.IsDefault()) Append(step, m_state.Advance);
}

// A scene file that can't be written is not missed: LoadStep computes the scene again.
void CAdjustLogic::SaveSceneFile() {
    if (m_state.SceneFileCurrent) return;
    MakeDirs(History().m_tempDir);
    m_state.SceneFileCurrent = PC_File::ImageSaveTobinary(m_state.WorkBitmap, m_sceneFilePath.toStdWString());
}

bool CAdjustLogic::OwnsRecord(int type) const {
    return type == AutoOptimizeParams::Type || type == BasicAdjustParams::Type || type == AdvanceAdjustParams::Type;
}

bool CAdjustLogic::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    const QString path = step->GetImagePath();
    const bool same = path == m_state.SnapshotPath && !m_state.Modified && m_state.BaseBitmap;
    const Bitmap base = same ? m_state.BaseBitmap : step->ReadImage();
    if (!base) return false;
    TakeSource(base);
    m_state.SnapshotPath = path;
    m_state.BakedPending = false;
    TakeRecords(*step);
    if (!m_state.Scenario.IsDefault()) ReadScene();
    m_state.Modified = m_state.HasValues();
    m_state.Recorded = true;
    ShowLayers();
    return true;
}

void CAdjustLogic::TakeRecords(const CHistoryStep& step) {
    m_state.Scenario = {};
    m_state.Basic = {};
    m_state.Advance = {};
    for (const auto& record : step.Params()) {
        if (const auto* scenario = RecordAs<AutoOptimizeParams>(*record)) m_state.Scenario = *scenario;
        if (const auto* basic = RecordAs<BasicAdjustParams>(*record)) m_state.Basic = *basic;
        if (const auto* advance = RecordAs<AdvanceAdjustParams>(*record)) m_state.Advance = *advance;
    }
}

// The scene's result from its file, or computed again where the file is missing, damaged or of another picture.
void CAdjustLogic::ReadScene() {
    const Bitmap& base = m_state.BaseBitmap;
    const Bitmap read = PC_File::ImageReadFrombinary(m_state.Scenario.path.toStdWString());
    m_state.SceneFileCurrent = read.Width() == base.Width() && read.Height() == base.Height();
    if (m_state.SceneFileCurrent)
        m_state.WorkBitmap = read;
    else if (!RunAdjustScene(m_state.WorkBitmap, m_state.Scenario.ScenarioIndex))
        m_state.Scenario = {};
}
