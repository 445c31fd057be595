// SPDX-License-Identifier: GPL-3.0-or-later
#include "LookLogic.h"

#include <algorithm>
#include <QtCore/QFile>
#include <utility>

#include "AppPaths.h"
#include "CEffect.h"
#include "ImageParams.h"
#include "PC_File.h"

namespace {

// Shares of the progress bar: the look itself, then view and commit.
constexpr int LookEnd = 89;

// Lays `other` over `target` at the weight 0 to 1.
void Mix(Bitmap& target, const Bitmap& other, double weight) {
    // The library takes both as pointers to bytes that it may write; it writes the first only.
    CEffect::Effect_AlphaAdJust(target.MutablePixels(), const_cast<std::uint8_t*>(other.Pixels()), target.Width(),
                                target.Height(), weight);
}

}  // namespace

LookLogic::LookLogic(const ToolFacts& tool, const QString& fileName, CHistoryManager& history)
    : CanvasLogic(tool, StepStyle::OnePerVisit, history), m_lookFile(history.m_tempDir + fileName) {}

LookLogic::~LookLogic() {
    QFile::remove(m_lookFile);
}

// What the file holds outlives a visit.
void LookLogic::ForgetAll() {
    State fresh;
    fresh.fileLook = m_state.fileLook;
    fresh.fileSize = m_state.fileSize;
    fresh.fileBase = m_state.fileBase;
    m_state = fresh;
}

void LookLogic::TakeSource(const Bitmap& picture) {
    ForgetAll();
    m_state.source = m_state.effect = picture;
}

bool LookLogic::HasSourceSize(const Bitmap& result) const {
    return result.Width() == m_state.source.Width() && result.Height() == m_state.source.Height();
}

bool LookLogic::CanFade() const {
    return HasLook() && HasSourceSize(m_state.effect) && Fades(m_state.look);
}

// The source stands below a look that can be faded alone.
std::vector<Bitmap> LookLogic::Layers() const {
    if (HasLook() && !CanFade()) return {m_state.effect};
    return {m_state.source, m_state.effect};
}

bool LookLogic::ApplyLook(int look, CObjProgress* progress) {
    m_failed = false;
    return HasPicture() && Exists(look) && Whole([&] { return RunLook(look, progress); });
}

bool LookLogic::RunLook(int look, CObjProgress* progress) {
    const ProgressSpan span{progress, 0, LookEnd};
    Bitmap effect = m_state.source;
    if (!Compute(effect, look, span) || !span.CanContinue()) {
        m_failed = span.CanContinue();
        return false;
    }
    m_state.effect = effect;
    m_state.result = {};
    m_state.look = look;
    m_state.alpha = 100;
    m_state.recorded = false;
    m_state.fileLook = NoLook;
    ShowLayers();
    CommitStep();
    if (progress) progress->SetValue(100.0f);
    return true;
}

void LookLogic::SetAlpha(int percent) {
    const int alpha = std::clamp(percent, 0, 100);
    if (!HasPicture() || !CanFade() || alpha == m_state.alpha) return;
    Whole([&] {
        m_state.alpha = alpha;
        m_state.recorded = false;
        ShowValues();
        return true;
    });
}

// From the source's side, while the full pass goes from the effect's side: both give source * (1 - a) + effect * a, and
// each starts from the bitmap that it has to copy anyway.
void LookLogic::Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect&, double) const {
    if (!IsFaded()) {
        shown = views.back();
        return;
    }
    if (shown.SharesPixelsWith(views[1])) shown = {};
    CopyPixels(shown, views[0]);
    Mix(shown, views[1], m_state.alpha * 0.01);
}

Bitmap LookLogic::RenderResult() {
    if (!IsFaded()) return m_state.effect;
    if (!m_state.result || m_state.resultAlpha != m_state.alpha) {
        m_state.result = m_state.effect;
        Mix(m_state.result, m_state.source, 1.0 - m_state.alpha * 0.01);
        m_state.resultAlpha = m_state.alpha;
    }
    return m_state.result;
}

std::unique_ptr<CHistoryStep> LookLogic::BuildStep(bool finalImage) {
    if (!HasPicture() || !HasLook()) return nullptr;
    auto step = NewStep(finalImage ? RenderResult() : m_state.source, finalImage);
    if (finalImage) return step;
    SaveLookFile();
    std::unique_ptr<CUndoRedoParams> record = MakeRecord();
    record->order = 1;
    step->AddParams(std::move(record));
    return step;
}

// A file that can't be written is not missed: LoadStep runs the look again.
void LookLogic::SaveLookFile() {
    if (m_state.fileLook == m_state.look) return;
    MakeDirs(History().m_tempDir);
    m_state.fileBase.clear();
    const bool saved = PC_File::ImageSaveTobinary(m_state.effect, m_lookFile.toStdWString());
    m_state.fileLook = saved ? m_state.look : NoLook;
    m_state.fileSize = ImageSize();
}

// A step that was stored knows the snapshot that its look was run on. A snapshot of the result is not the source that
// its path stood for before.
void LookLogic::OnStepCommitted() {
    m_state.recorded = true;
    const std::unique_ptr<CHistoryStep> step = History().CloneCurrent();
    if (step->Params().size() > 1)
        m_state.fileBase = step->GetImagePath();
    else
        m_state.snapshotPath.clear();
}

bool LookLogic::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    const QString path = step->GetImagePath();
    const Bitmap source = path == m_state.snapshotPath && HasPicture() ? m_state.source : step->ReadImage();
    if (!source) return false;
    m_failed = false;
    TakeSource(source);
    m_state.snapshotPath = path;
    for (const auto& record : step->Params()) {
        if (!OwnsRecord(record->GetType())) continue;
        const Recorded recorded = ReadRecord(*record);
        m_state.look = recorded.look;
        m_state.alpha = recorded.alpha;
    }
    if (HasLook()) m_state.effect = ReadLook(*step);
    if (!m_state.effect) {
        // The look can't be had any more: the picture before it is still better than none.
        m_failed = true;
        m_state.effect = source;
        m_state.look = NoLook;
        m_state.alpha = 100;
    }
    m_state.recorded = true;
    ShowLayers();
    return true;
}

// The look's result from its file, or run again where the file is missing, damaged or of another picture or look. Null
// when it can't be run.
Bitmap LookLogic::ReadLook(const CHistoryStep& step) {
    if (m_state.fileLook == m_state.look && m_state.fileBase == step.GetImagePath()) {
        const Bitmap read = PC_File::ImageReadFrombinary(m_lookFile.toStdWString());
        if (read && QSize(read.Width(), read.Height()) == m_state.fileSize) return read;
    }
    m_state.fileLook = NoLook;
    Bitmap effect = m_state.source;
    return Compute(effect, m_state.look, {}) ? effect : Bitmap();
}
