// SPDX-License-Identifier: GPL-3.0-or-later
#include "CWordLogic.h"

#include "Graphics.h"

// The part of CWordLogic that makes and reads history steps.

// With every text gone the step holds the picture alone, which has its file already.
std::unique_ptr<CHistoryStep> CWordLogic::BuildStep(bool finalImage) {
    if (!HasPicture() || !HasWork()) return nullptr;
    if (finalImage && Count() > 0) return NewStep(RenderResult(), true);
    auto step = NewStep(m_state.base, false);
    for (const StringParams& text : m_state.texts) step->AddParams(text.Clone());
    return step;
}

// A step with texts names the file of the picture below them.
void CWordLogic::OnStepCommitted() {
    m_state.recorded = true;
    const std::unique_ptr<CHistoryStep> step = History().CloneCurrent();
    const bool namesBase = step && static_cast<int>(step->Params().size()) == Count() + 1;
    m_state.basePath = namesBase ? step->GetImagePath() : QString();
}

bool CWordLogic::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    const QString path = step->GetImagePath();
    const bool same = !path.isEmpty() && path == m_state.basePath;
    const Bitmap base = same ? m_state.base : step->ReadImage();
    if (!base) return false;
    TakeSource(base);
    {
        const std::lock_guard lock(m_textLock);
        for (const auto& record : step->Params())
            if (const auto* text = RecordAs<StringParams>(*record)) m_state.texts.push_back(*text);
        m_state.basePath = path;
        m_state.recorded = true;
    }
    ShowLayers();
    return true;
}

Bitmap CWordLogic::RenderResult() {
    if (Count() == 0) return m_state.base;
    const std::lock_guard lock(m_textLock);
    if (!m_state.composed) {
        Bitmap composed = m_state.base;
        const QRect all(QPoint(0, 0), ImageSize());
        for (StringParams text : m_state.texts) {
            const QRect ink = text.Ink().toAlignedRect().intersected(all);
            if (ink.isEmpty()) continue;
            Graphics graphics(composed, ink);
            text.SetOffset(0, 0);
            text.Draw(graphics, 1.0);
        }
        m_state.composed = composed;
    }
    return m_state.composed;
}

// The next tool goes on with the burnt picture, and so does its view.
std::unique_ptr<CViewState> CWordLogic::MakeViewState() {
    auto state = CanvasLogic::MakeViewState();
    const ViewGeometry geometry = Geometry();
    if (Count() == 0 || !geometry.HasPicture()) return state;
    Bitmap view;
    DrawVisiblePart(RenderResult(), geometry, ViewQuality::Settled, view);
    state->bitmap = view;
    return state;
}
