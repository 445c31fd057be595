// SPDX-License-Identifier: GPL-3.0-or-later
#include "CLookWnd.h"

#include "ThumbnailCrop.h"

bool CLookWnd::RunLook(int look) {
    return PerformTask([&](CObjProgress* progress) { return m_look.ApplyLook(look, progress); });
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
