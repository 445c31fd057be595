// SPDX-License-Identifier: GPL-3.0-or-later
#include "CBrushWnd.h"

#include "WithinMemory.h"

bool CBrushWnd::BeginStroke(const StrokePoint& at) {
    Follow(at);
    bool begun = false;
    WithinMemory(Host(), [&] { begun = m_brush.BeginStroke(PixelOf(at)); });
    if (begun) Redraw(Paint::Now);
    return begun;
}

void CBrushWnd::MoveStroke(const StrokePoint& at) {
    Follow(at);
    const QRect changed = m_brush.MoveStroke(PixelOf(at));
    ShowCursorAt(PixelOf(at), changed);
}

void CBrushWnd::EndStroke(StrokeEnd) {
    Perform([this] {
        m_brush.EndStroke();
        return true;
    });
}
