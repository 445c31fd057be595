// SPDX-License-Identifier: GPL-3.0-or-later
#include "CLookWnd.h"

#include "ThumbnailCrop.h"

bool CLookWnd::RunLook(int look) {
    const bool done = PerformTask([&](CObjProgress* progress) { return m_look.ApplyLook(look, progress); });
    TellFailure(ChoiceFailedKey());
    return done;
}

void CLookWnd::OnUndo() {
    CPictureWnd::OnUndo();
    TellFailure(StepFailedKey());
}

void CLookWnd::OnRedo() {
    CPictureWnd::OnRedo();
    TellFailure(StepFailedKey());
}

void CLookWnd::OnRevert() {
    CPictureWnd::OnRevert();
    TellFailure(StepFailedKey());
}

void CLookWnd::OnHistoryJump(int row) {
    CPictureWnd::OnHistoryJump(row);
    TellFailure(StepFailedKey());
}

void CLookWnd::TellFailure(const QString& key) {
    if (m_look.TakeFailure() && !key.isEmpty()) Host().Tell(key);
}

void CLookWnd::SetStrength(int percent, bool moving) {
    if (moving) return Preview([&] { m_look.SetAlpha(percent); });
    Perform([&] {
        m_look.SetAlpha(percent);
        return true;
    });
}

Bitmap CLookWnd::ThumbnailBase(QSize shape, double scale) const {
    return MakeThumbnail(m_look.Picture(), shape, scale);
}
