// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSizeWnd.h"

bool CSizeWnd::ApplySize(int w, int h) {
    if (m_logic.ImageSize() == QSize(w, h)) return false;
    return PerformTask([&](CObjProgress* progress) {
        if (!m_logic.Resize(w, h, progress)) return false;
        m_logic.CommitStep();
        return true;
    });
}
