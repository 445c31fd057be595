// SPDX-License-Identifier: GPL-3.0-or-later
#include "MaskBrushLogic.h"

#include <algorithm>
#include <QtCore/QFile>

#include "AppPaths.h"
#include "ImageParams.h"
#include "Truncate.h"

MaskBrushLogic::MaskBrushLogic(const ToolFacts& tool, const Files& files, BrushTip::Shape shape, int pen,
                               CHistoryManager& history)
    : BrushLogic(tool, StepStyle::OnePerVisit, shape, pen, history),
      m_source(history.m_tempDir + QLatin1String(files.source)),
      m_maskFile(history.m_tempDir + QLatin1String(files.mask)) {}

MaskBrushLogic::~MaskBrushLogic() {
    QFile::remove(m_maskFile);
}

void MaskBrushLogic::ForgetAll() {
    BrushLogic::ForgetAll();
    m_painted = {};
}

void MaskBrushLogic::TakeSource(const Bitmap& picture) {
    BrushLogic::TakeSource(picture);
    m_painted.mask = BrushMask({picture.Width(), picture.Height()});
}

std::function<void()> MaskBrushLogic::RememberTool() {
    return [this, state = m_state, painted = m_painted, values = m_values] {
        m_state = state;
        m_painted = painted;
        m_values = values;
    };
}

int MaskBrushLogic::StrengthPercent() const {
    return Truncate(m_values.strength * 100);
}

// --- strokes

void MaskBrushLogic::PrepareStroke() {
    if (m_painted.previewing || m_painted.stale) ProcessAnew(m_values, nullptr);
}

double MaskBrushLogic::StampWeight() const {
    return 255 * (m_values.strength / 255.0);
}

void MaskBrushLogic::OnStamp(const Stamp& stamp) {
    m_painted.mask.MutableBytes();
    m_painted.any = true;
    m_painted.recorded = false;
    if (!stamp.part.isEmpty()) LayStamp(stamp, !IsErasing(), m_painted.mask);
}

// --- compositions

Bitmap MaskBrushLogic::Processed() const {
    if (!m_painted.stale) return m_state.processed;
    Bitmap processed = m_state.base;
    Process(processed, {});
    return processed;
}

Bitmap MaskBrushLogic::Composed() const {
    Bitmap target = m_state.base;
    if (m_painted.any) MixByMask(m_state.base, Processed(), m_painted.mask, m_values.strength, target);
    return target;
}

void MaskBrushLogic::ComposeFull(double strength) {
    if (!HasPicture()) return;
    Whole([&] {
        m_values.strength = std::clamp(strength, 0.0, 1.0);
        if (m_painted.any) ShowComposed();
        return true;
    });
}

void MaskBrushLogic::ComposeView(double strength) {
    if (!HasPicture()) return;
    Whole([&] {
        m_values.strength = std::clamp(strength, 0.0, 1.0);
        if (m_painted.any) ShowPreview();
        return true;
    });
}

bool MaskBrushLogic::ProcessAnew(const Values& values, CObjProgress* progress) {
    return HasPicture() && Whole([&] {
               m_values = values;
               if (!BuildCopies({progress, 0, 90})) return false;
               m_painted.stale = false;
               if (m_painted.any) ShowComposed();
               return true;
           });
}

void MaskBrushLogic::PreviewProcess(const Values& values) {
    if (!HasPicture()) return;
    Whole([&] {
        m_values = values;
        m_painted.stale = true;
        if (m_painted.any) ShowPreview();
        return true;
    });
}

void MaskBrushLogic::ShowComposed() {
    m_state.working = Composed();
    m_painted.previewing = false;
    m_painted.recorded = false;
    ShowLayers();
}

void MaskBrushLogic::ShowPreview() {
    m_painted.recorded = false;
    if (m_painted.previewing) return ShowValues();
    m_painted.previewing = true;
    ShowLayers();
}

// A stale copy is not drawn: its view is made from the base's.
std::vector<Bitmap> MaskBrushLogic::Layers() const {
    if (!m_painted.previewing) return {m_state.working};
    return {m_state.base, m_painted.stale ? m_state.base : m_state.processed, m_painted.mask.Picture()};
}

void MaskBrushLogic::Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect& part, double scale) const {
    if (!m_painted.previewing) return BrushLogic::Compose(shown, views, part, scale);
    Bitmap processed = views[1];
    if (m_painted.stale) Process(processed, {});
    CopyPixels(shown, views[0]);
    MixByMask(views[0], processed, views[2], m_values.strength, shown);
}

// --- history

// A mask that can't be written must not leave an older one behind; the step then asks for a file of its own, which
// tells a full disk from a mask that is merely in the way.
std::unique_ptr<CHistoryStep> MaskBrushLogic::BuildStep(bool finalImage) {
    if (!HasPicture() || !HasWork()) return nullptr;
    if (finalImage) return NewStep(RenderResult(), true);
    MakeDirs(History().m_tempDir);
    const bool saved = m_painted.mask.Save(m_maskFile);
    if (!saved) QFile::remove(m_maskFile);
    auto step = NewStep(m_state.base, !saved);
    std::unique_ptr<CUndoRedoParams> record = MakeRecord(m_maskFile);
    record->order = 1;
    step->AddParams(std::move(record));
    return step;
}

void MaskBrushLogic::OnStepCommitted() {
    const std::unique_ptr<CHistoryStep> step = History().CloneCurrent();
    const bool holdsBase = step->Params().size() > 1;
    m_state.dirty = false;
    m_painted.pending = holdsBase;
    m_painted.recorded = true;
    m_painted.snapshotPath = holdsBase ? step->GetImagePath() : QString();
}

MaskBrushLogic::Recorded MaskBrushLogic::RecordOf(const CHistoryStep& step) const {
    for (const auto& record : step.Params())
        if (OwnsRecord(record->GetType())) return ReadRecord(*record);
    return {m_values, {}};
}

bool MaskBrushLogic::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    const QString path = step->GetImagePath();
    const bool known = HasPicture() && path == m_painted.snapshotPath;
    const Bitmap base = known ? m_state.base : step->ReadImage();
    if (!base) return false;
    const Recorded recorded = RecordOf(*step);
    m_values = recorded.values;
    TakeSource(base);
    m_painted.snapshotPath = path;
    m_painted.recorded = true;
    if (!recorded.maskFile.isEmpty()) TakeMask(recorded.maskFile);
    ShowLayers();
    if (!known) OnSource();
    return true;
}

// Without its mask a step shows its picture, and the user hears that something could not be read.
void MaskBrushLogic::TakeMask(const QString& file) {
    const BrushMask mask = BrushMask::Read(file, ImageSize());
    if (mask.IsNull()) return History().NoteRead(false);
    m_painted.mask = mask;
    m_painted.any = true;
    m_painted.pending = true;
    m_state.working = Composed();
}
