// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectWnd.h"

#include <QtGui/QGuiApplication>

#include "CObjProgress.h"
#include "EffectCatalogue.h"
#include "ThumbnailCrop.h"

CEffectWnd::CEffectWnd(ToolHost& host, QWidget* parent, CHistoryManager& history)
    : CPictureWnd(host, ToolNumber, {}, parent), m_logic(history) {
    Geometry() = m_logic.Geometry();
}

// While the button is down on the slider, history and tools wait; the mouse is asked too, since a release may get lost.
bool CEffectWnd::IsStrokeHeld() const {
    const bool held = m_strengthMoving && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    return held || CPictureWnd::IsStrokeHeld();
}

bool CEffectWnd::RunEffect(int index) {
    bool applied = false;
    Host().RunTask([&](CObjProgress& progress) {
        progress.SetStepText(L"ids_progress_1");
        applied = m_logic.ApplyEffect(index, &progress);
    });
    if (applied) NotifyView(HistoryCode, 0);
    ShowChange();
    return applied;
}

void CEffectWnd::SetStrength(int percent, bool moving) {
    m_strengthMoving = moving;
    m_logic.SetAlpha(percent);
    if (moving)
        Redraw(Paint::Now);
    else
        ShowChange();
}

const std::vector<int>& CEffectWnd::SelectCategoryList(int category) {
    m_category = category;
    m_categoryList = EffectsOfCategory(category);
    return m_categoryList;
}

const Bitmap& CEffectWnd::BuildThumbnailBase() {
    m_thumbnailBase = MakeThumbnail(GetShowBitmap(), ThumbnailSize, PixelRatio());
    return m_thumbnailBase;
}

Bitmap CEffectWnd::BuildCoverBase(double scale) {
    return MakeThumbnail(GetShowBitmap(), CoverSize, scale);
}
