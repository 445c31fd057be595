// SPDX-License-Identifier: GPL-3.0-or-later
#include "CWarpWnd.h"

#include <new>
#include <utility>

#include "CObjProgress.h"
#include "WithinMemory.h"

// Without memory for the field the picture is shown all the same; a press tries again, and tells.
void CWarpWnd::OnPictureTaken() {
    try {
        m_warp.Prepare();
    } catch (const std::bad_alloc&) {
        return;
    }
}

bool CWarpWnd::BeginStroke(const StrokePoint& at) {
    bool begun = false;
    WithinMemory(Host(), [&] { begun = m_warp.BeginStroke(PixelOf(at)); });
    if (begun) Redraw(Paint::Now);
    return begun;
}

void CWarpWnd::MoveStroke(const StrokePoint& at) {
    ShowCursorAt(PixelOf(at), m_warp.MoveStroke(PixelOf(at)));
}

void CWarpWnd::EndStroke(StrokeEnd how) {
    const auto end = [&](CObjProgress* progress) {
        if (how == StrokeEnd::Cancelled)
            m_warp.DropStroke();
        else
            m_warp.EndStroke({progress, 0, 100});
        return true;
    };
    // A stroke that another window took the mouse from ends below that window.
    if (how == StrokeEnd::Cancelled || Host().IsBusy())
        Perform([&] { return end(nullptr); });
    else
        PerformTask(end);
    for (const auto& act : std::exchange(m_waiting, {})) act();
}

void CWarpWnd::Settle() {
    if (!m_warp.IsStroking()) return;
    Perform([this] {
        m_warp.EndStroke({});
        return true;
    });
}

Bitmap CWarpWnd::GetShowBitmap() {
    if (m_warp.HasWaiting())
        Host().RunTask([this](CObjProgress& progress) { m_warp.WaitForWorker({&progress, 0, 100}); });
    return CDiscWnd::GetShowBitmap();
}

// On a worker too.
void CWarpWnd::OnApply() {
    m_warp.EndStroke({});
    CDiscWnd::OnApply();
}

void CWarpWnd::OnUndo() {
    Settle();
    CDiscWnd::OnUndo();
}

void CWarpWnd::OnRedo() {
    Settle();
    CDiscWnd::OnRedo();
}

void CWarpWnd::OnRevert() {
    Settle();
    CDiscWnd::OnRevert();
}

void CWarpWnd::OnHistoryJump(int row) {
    Settle();
    CDiscWnd::OnHistoryJump(row);
}

bool CWarpWnd::Waits(const std::function<void()>& act) {
    if (!IsStroking()) return false;
    m_waiting.push_back(act);
    return true;
}

void CWarpWnd::FitToWindow() {
    if (!Waits([this] { FitToWindow(); })) CDiscWnd::FitToWindow();
}

void CWarpWnd::ZoomToPercent(int percent) {
    if (!Waits([=, this] { ZoomToPercent(percent); })) CDiscWnd::ZoomToPercent(percent);
}

void CWarpWnd::ZoomOut() {
    if (!Waits([this] { ZoomOut(); })) CDiscWnd::ZoomOut();
}

void CWarpWnd::ZoomIn() {
    if (!Waits([this] { ZoomIn(); })) CDiscWnd::ZoomIn();
}

void CWarpWnd::ZoomActualSize() {
    if (!Waits([this] { ZoomActualSize(); })) CDiscWnd::ZoomActualSize();
}

void CWarpWnd::ZoomFit() {
    if (!Waits([this] { ZoomFit(); })) CDiscWnd::ZoomFit();
}

void CWarpWnd::LayoutChildren(int cx, int cy) {
    if (!Waits([=, this] { LayoutChildren(cx, cy); })) CDiscWnd::LayoutChildren(cx, cy);
}
