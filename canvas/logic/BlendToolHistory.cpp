// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>

#include "AppPaths.h"
#include "BlendTool.h"
#include "ImageParams.h"
#include "PC_File.h"
#include "PictureView.h"

// The part of BlendTool that makes and reads history steps.

std::unique_ptr<CHistoryStep> BlendTool::BuildStep(bool finalImage) {
    if (!HasPicture() || !HasLook()) return nullptr;
    auto step = std::make_unique<CHistoryStep>();
    step->SetNameFromKey(m_stepName);
    auto image = std::make_unique<ImageParams>();
    image->image = finalImage ? RenderResult() : m_state.SourceBitmap;
    image->save = finalImage;
    step->AddParams(std::move(image));
    if (finalImage) return step;
    SaveLookFile();
    std::unique_ptr<CUndoRedoParams> record = MakeRecord();
    record->order = 1;
    step->AddParams(std::move(record));
    return step;
}

// A file that can't be written is not missed: LoadStep runs the look again.
void BlendTool::SaveLookFile() {
    if (m_fileLook == LookId()) return;
    MakeDirs(m_history.m_tempDir);
    m_fileBase.clear();
    m_fileLook = PC_File::ImageSaveTobinary(m_state.EffectBitmap, m_lookFile.toStdWString()) ? LookId() : QString();
}

// A step that was stored knows the snapshot that its look was run on.
void BlendTool::OnStepCommitted() {
    m_state.Recorded = true;
    const std::unique_ptr<CHistoryStep> step = m_history.CloneCurrent();
    if (step && step->Params().size() > 1) m_fileBase = step->GetImagePath();
}

bool BlendTool::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    const QString path = step->GetImagePath();
    const bool same = path == m_snapshotPath && HasPicture();
    const Bitmap source = same ? m_state.SourceBitmap : step->ReadImage();
    if (!source) return false;
    m_snapshotPath = path;
    int alpha = 100;
    ForgetLook();
    for (const auto& record : step->Params())
        if (OwnsRecord(record->GetType())) alpha = TakeRecord(*record);
    Bitmap effect = source;
    if (HasLook()) effect = ReadLook(*step, source);
    if (!effect) {
        // The look can't be had any more: the picture before it is still better than none.
        ForgetLook();
        effect = source;
    }
    TakePicture(source, effect, HasLook() ? alpha : 100);
    m_state.Recorded = true;
    return true;
}

// The look's result from its file, or run again where the file is missing, damaged or of another picture or look. Null
// when it can't be run.
Bitmap BlendTool::ReadLook(const CHistoryStep& step, const Bitmap& source) {
    if (m_fileLook == LookId() && m_fileBase == step.GetImagePath()) {
        const Bitmap read = PC_File::ImageReadFrombinary(m_lookFile.toStdWString());
        if (read.Width() == source.Width() && read.Height() == source.Height()) return read;
    }
    m_fileLook.clear();
    Bitmap effect = source;
    return ComputeLook(effect, {}) ? effect : Bitmap();
}

bool BlendTool::Undo() {
    return HasPicture() && m_committer.Undo();
}

bool BlendTool::Redo() {
    return HasPicture() && m_committer.Redo();
}

bool BlendTool::Jump(int row) {
    return HasPicture() && m_committer.Jump(row);
}

bool BlendTool::Revert() {
    if (!HasPicture()) return false;
    // The step that the tool stands on becomes a snapshot of the result, which is not the source that it was read for.
    m_snapshotPath.clear();
    return m_committer.Revert();
}

void BlendTool::Apply() {
    if (!HasPicture()) return;
    m_history.SetCurrentBitmap(RenderResult());
    const ViewGeometry geometry = Geometry();
    m_history.SetViewState(MakeViewState(View().bitmap, geometry));
    if (HasLook()) {
        m_committer.Leave();
        return;
    }
    // To finish the newest step the committer loads it: what is on show must not jump to it.
    const BlendState shown = m_state;
    m_committer.Leave();
    ForgetLook();
    Restore(shown, geometry);
    m_committer.BeginVisit();
}
