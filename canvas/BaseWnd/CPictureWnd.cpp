// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPictureWnd.h"

#include <new>
#include <utility>

#include "ClickCount.h"
#include "CObjProgress.h"
#include "Truncate.h"
#include "WithinMemory.h"

CPictureWnd::CPictureWnd(ToolHost& host, const ToolFacts& tool, CanvasLogic& logic, QWidget* parent)
    : CViewWnd(host, tool.number, parent), m_facts(tool), m_pictureLogic(logic) {}

Bitmap CPictureWnd::GetShowBitmap() {
    return m_pictureLogic.RenderResult();
}

bool CPictureWnd::IsImageChanged() {
    return m_pictureLogic.IsImageChanged();
}

bool CPictureWnd::HasPendingWork() {
    return m_pictureLogic.HasUnrecorded();
}

std::function<void()> CPictureWnd::Remember() {
    return [this, logic = m_pictureLogic.Remember(), geometry = Geometry(), zoom = m_zoom] {
        logic();
        Geometry() = geometry;
        m_zoom = zoom;
    };
}

void CPictureWnd::StartVisit() {
    m_pictureLogic.Reset();
    const QSize client = Geometry().Client();
    m_pictureLogic.SetViewSize(client.width(), client.height());
}

void CPictureWnd::SetShowBitmap(const Bitmap& picture) {
    StartVisit();
    m_pictureLogic.SetSource(picture);
    TakeUpSource();
}

bool CPictureWnd::OnEnter() {
    StartVisit();
    if (!m_pictureLogic.TakeViewState()) return false;
    TakeUpSource();
    return true;
}

// On a worker too: nothing is painted or told at once.
void CPictureWnd::TakeUpSource() {
    HoldSlider(false);
    Geometry() = m_pictureLogic.Geometry();
    m_zoom = Geometry().Zoom();
    m_toldSize = Geometry().Image();
    OnPictureTaken();
    RefreshNavigator();
    Redraw(Paint::Later);
}

QString CPictureWnd::LeaveClick() const {
    return QLatin1String(m_facts.leaveClick);
}

void CPictureWnd::OnApply() {
    const QString click = LeaveClick();
    if (!click.isEmpty() && IsImageChanged()) CountClick(click);
    SetZoom(Geometry().Zoom());
    m_pictureLogic.Apply();
}

void CPictureWnd::OnUndo() {
    Move([this] { m_pictureLogic.Undo(); });
}

void CPictureWnd::OnRedo() {
    Move([this] { m_pictureLogic.Redo(); });
}

void CPictureWnd::OnRevert() {
    Move([this] { m_pictureLogic.Revert(); });
}

void CPictureWnd::OnHistoryJump(int row) {
    Move([=, this] { m_pictureLogic.Jump(row); });
}

// A picture of another size was fitted by the logic.
void CPictureWnd::Move(const std::function<void()>& move) {
    Perform([&] {
        move();
        OnPictureTaken();
        return true;
    });
    NotifyView(PanelNews());
}

void CPictureWnd::Preview(const std::function<void()>& act) {
    HoldSlider(true);
    try {
        act();
    } catch (const std::bad_alloc&) {
        return;  // the release tries again, and tells
    }
    const ViewGeometry before = Geometry();
    Geometry() = m_pictureLogic.Geometry();
    if (Geometry() != before) return TakeUpPicture();
    Redraw(Paint::Now);
}

bool CPictureWnd::Perform(const std::function<bool()>& act) {
    HoldSlider(false);
    bool done = false;
    if (!WithinMemory(Host(), [&] { done = act(); })) done = false;
    TakeUpPicture();
    if (const QSize size = Geometry().Image(); size != m_toldSize) {
        m_toldSize = size;
        NotifyView(SizeNews{});
    }
    if (done) NotifyView(HistoryNews{});
    return done;
}

bool CPictureWnd::PerformTask(const std::function<bool(CObjProgress*)>& act) {
    if (Host().IsBusy()) return false;
    return Perform([&] {
        bool done = false;
        Host().RunTask([&](CObjProgress& progress) {
            progress.SetStepText(L"ids_progress_1");
            done = act(&progress);
        });
        return done;
    });
}

void CPictureWnd::TakeUpPicture() {
    const double zoom = m_zoom;
    Geometry() = m_pictureLogic.Geometry();
    m_zoom = Geometry().Zoom();
    UpdateViewRects();
    RefreshNavigator();
    Redraw(Paint::Now);
    if (m_zoom != zoom) NotifyView(ZoomNews{Geometry().ZoomPercent()});
}

ViewPicture CPictureWnd::TakeViewPicture() {
    CanvasView view = m_pictureLogic.View();
    return {std::move(view.bitmap), view.opaque, view.dest};
}

void CPictureWnd::OnViewChanged(ViewChange change) {
    try {
        m_pictureLogic.SetGeometry(Geometry(),
                                   change == ViewChange::Settled ? ViewQuality::Settled : ViewQuality::Moving);
    } catch (const std::bad_alloc&) {
        // What was drawn before is shown in the new place, until the next change is drawn.
    }
}

Bitmap CPictureWnd::NavigatorPicture() {
    // Twice the thumbnail's side keeps it sharp when it is reduced to a screen of any scale.
    const double scale = 2.0 * PixelRatio();
    return m_pictureLogic.Overview(
        {Truncate(CImageNavigateCtrl::ThumbWidth * scale), Truncate(CImageNavigateCtrl::ThumbHeight * scale)});
}
