// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPictureWnd.h"

#include <utility>

#include "ClickCount.h"
#include "Truncate.h"

namespace {

constexpr int ZoomCode = 0;

}  // namespace

CPictureWnd::CPictureWnd(ToolHost& host, int tool, QString leaveClick, QWidget* parent)
    : CViewWnd(host, tool, parent), m_leaveClick(std::move(leaveClick)) {}

Bitmap CPictureWnd::GetShowBitmap() {
    return PictureLogic().RenderResult();
}

bool CPictureWnd::IsImageChanged() {
    return PictureLogic().IsImageChanged();
}

bool CPictureWnd::HasPendingWork() {
    return PictureLogic().HasUnrecorded();
}

void CPictureWnd::StartVisit() {
    PictureLogic().Reset();
    const QSize client = Geometry().Client();
    PictureLogic().SetViewSize(client.width(), client.height());
}

void CPictureWnd::SetShowBitmap(const Bitmap& picture) {
    StartVisit();
    PictureLogic().SetSource(picture);
    TakeUpSource();
}

bool CPictureWnd::OnEnter() {
    StartVisit();
    if (!PictureLogic().TakeViewState()) return false;
    TakeUpSource();
    return true;
}

// On a worker too: nothing is painted or told at once.
void CPictureWnd::TakeUpSource() {
    Geometry() = PictureLogic().Geometry();
    m_zoom = Geometry().Zoom();
    OnPictureTaken();
    RefreshNavigator();
    Redraw(Paint::Later);
}

void CPictureWnd::OnApply() {
    if (!m_leaveClick.isEmpty() && IsImageChanged()) CountClick(m_leaveClick);
    SetZoom(Geometry().Zoom());
    PictureLogic().Apply();
}

void CPictureWnd::OnUndo() {
    PictureLogic().Undo();
    TakeUpStep();
}

void CPictureWnd::OnRedo() {
    PictureLogic().Redo();
    TakeUpStep();
}

void CPictureWnd::OnRevert() {
    PictureLogic().Revert();
    TakeUpStep();
}

void CPictureWnd::OnHistoryJump(int row) {
    PictureLogic().Jump(row);
    TakeUpStep();
}

// A picture of another size was fitted by the logic.
void CPictureWnd::TakeUpStep() {
    OnPictureTaken();
    TakeUpPicture();
    OnHistoryMoved();
}

void CPictureWnd::TakeUpPicture() {
    const double zoom = Geometry().Zoom();
    Geometry() = PictureLogic().Geometry();
    m_zoom = Geometry().Zoom();
    UpdateViewRects();
    ShowChange();
    if (m_zoom != zoom) NotifyView(ZoomCode, Geometry().ZoomPercent());
}

void CPictureWnd::ShowChange() {
    RefreshNavigator();
    Redraw(Paint::Now);
}

ViewPicture CPictureWnd::TakeViewPicture() {
    CanvasView view = PictureLogic().View();
    return {std::move(view.bitmap), view.opaque, view.dest};
}

void CPictureWnd::OnViewChanged(ViewChange change) {
    PictureLogic().SetGeometry(Geometry(), change == ViewChange::Settled ? ViewQuality::Settled : ViewQuality::Moving);
}

Bitmap CPictureWnd::NavigatorPicture() {
    // Twice the thumbnail's side keeps it sharp when it is reduced to a screen of any scale.
    const double scale = 2.0 * PixelRatio();
    return PictureLogic().Overview(
        {Truncate(CImageNavigateCtrl::ThumbWidth * scale), Truncate(CImageNavigateCtrl::ThumbHeight * scale)});
}
