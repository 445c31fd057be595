// SPDX-License-Identifier: GPL-3.0-or-later
#include "DirectBrushLogic.h"

#include "Flatten.h"
#include "ImageParams.h"

void DirectBrushLogic::ForgetAll() {
    BrushLogic::ForgetAll();
    m_visit.clear();
}

// A visit begins on the picture of the step that the history stands on, unless that step is still owed.
void DirectBrushLogic::TakeSource(const Bitmap& picture) {
    BrushLogic::TakeSource(picture);
    const std::unique_ptr<CHistoryStep> step = History().Owes() ? nullptr : History().CloneCurrent();
    if (step) m_visit.insert(step->GetImagePath());
}

std::function<void()> DirectBrushLogic::RememberTool() {
    return [this, state = m_state, visit = m_visit, values = RememberValues()] {
        m_state = state;
        m_visit = visit;
        values();
    };
}

bool DirectBrushLogic::ProcessAnew(const std::function<void()>& change, CObjProgress* progress) {
    return HasPicture() && Whole([&] {
               change();
               return BuildCopies({progress, 0, 100});
           });
}

std::unique_ptr<CHistoryStep> DirectBrushLogic::BuildStep(bool) {
    return HasPicture() && HasWork() ? NewStep(m_state.working, true) : nullptr;
}

void DirectBrushLogic::OnStepCommitted() {
    m_state.dirty = false;
    m_visit.insert(History().CloneCurrent()->GetImagePath());
}

bool DirectBrushLogic::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    Bitmap picture = step->ReadImage();
    if (!picture) return false;
    const bool ofVisit = m_visit.contains(step->GetImagePath());
    if (ofVisit && QSize(picture.Width(), picture.Height()) == ImageSize()) {
        FlattenOnWhite(picture);
        m_state.working = picture;
        m_state.dirty = false;
        ShowLayers();
        return true;
    }
    SetSource(picture);
    m_visit = {step->GetImagePath()};
    return true;
}
