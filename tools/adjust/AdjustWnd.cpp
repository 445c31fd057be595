// SPDX-License-Identifier: GPL-3.0-or-later
#include "AdjustWnd.h"

#include <QtGui/QGuiApplication>

#include "ClickCount.h"
#include "CObjProgress.h"
#include "Truncate.h"

namespace {

const QString LeaveChangedClick = QStringLiteral("888020101");
constexpr int ZoomCode = 0;

}  // namespace

CAdjustWnd::CAdjustWnd(ToolHost& host, QWidget* parent, CHistoryManager& history)
    : CViewWnd(host, ToolNumber, parent), m_logic(history) {
    Geometry() = m_logic.Geometry();
}

void CAdjustWnd::SetShowBitmap(const Bitmap& picture) {
    m_logic.Reset();
    const QSize client = Geometry().Client();
    m_logic.SetViewSize(client.width(), client.height());
    m_logic.SetSource(picture);
    TakeUpSource();
}

bool CAdjustWnd::OnEnter() {
    m_logic.Reset();
    const QSize client = Geometry().Client();
    m_logic.SetViewSize(client.width(), client.height());
    if (!m_logic.TakeViewState()) return false;
    TakeUpSource();
    return true;
}

void CAdjustWnd::TakeUpSource() {
    m_previewing = false;
    Geometry() = m_logic.Geometry();
    m_zoom = Geometry().Zoom();
    RefreshNavigator();
    Redraw(Paint::Later);
}

void CAdjustWnd::OnApply() {
    if (IsImageChanged()) CountClick(LeaveChangedClick);
    SetZoom(Geometry().Zoom());
    m_logic.Apply();
}

void CAdjustWnd::OnUndo() {
    m_logic.Undo();
    TakeUpStep();
}

void CAdjustWnd::OnRedo() {
    m_logic.Redo();
    TakeUpStep();
}

void CAdjustWnd::OnRevert() {
    m_logic.Revert();
    TakeUpStep();
}

void CAdjustWnd::OnHistoryJump(int row) {
    m_logic.Jump(row);
    TakeUpStep();
}

// Shows what a move in the history came to. A picture of another size was fitted by the logic.
void CAdjustWnd::TakeUpStep() {
    m_previewing = false;
    const double zoom = Geometry().Zoom();
    Geometry() = m_logic.Geometry();
    m_zoom = Geometry().Zoom();
    UpdateViewRects();
    ShowChange();
    if (m_zoom != zoom) NotifyView(ZoomCode, Geometry().ZoomPercent());
    NotifyView(ValuesCode, 0);
}

void CAdjustWnd::ShowChange() {
    RefreshNavigator();
    Redraw(Paint::Now);
}

// While the button is down on a slider, history and tools wait; the mouse is asked too, since a release may get lost.
bool CAdjustWnd::IsStrokeHeld() const {
    const bool sliderHeld = m_previewing && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    return sliderHeld || CViewWnd::IsStrokeHeld();
}

void CAdjustWnd::PreviewValue(int index, int value) {
    m_previewing = true;
    m_logic.SetValue(index, value);
    Redraw(Paint::Now);
}

void CAdjustWnd::CommitValue(int index, int value) {
    m_previewing = false;
    m_logic.SetValue(index, value);
    Redraw(Paint::Now);
    m_logic.CommitStep();
    RefreshNavigator();
    NotifyView(HistoryCode, 0);
}

bool CAdjustWnd::RunScene(int scenario) {
    bool applied = false;
    Host().RunTask([&](CObjProgress& progress) {
        progress.SetStepText(L"ids_progress_1");
        applied = m_logic.ApplyScenario(scenario, &progress);
    });
    ShowChange();
    if (applied) NotifyView(HistoryCode, 0);
    return applied;
}

void CAdjustWnd::ResetScene() {
    m_logic.ResetScenario();
    ShowChange();
}

void CAdjustWnd::ResetBasic() {
    m_logic.ResetBasic();
    ShowChange();
}

void CAdjustWnd::ResetAdvance() {
    m_logic.ResetAdvance();
    ShowChange();
}

ViewPicture CAdjustWnd::TakeViewPicture() {
    AdjustView view = m_logic.View();
    return {std::move(view.bitmap), view.opaque, view.dest};
}

void CAdjustWnd::OnViewChanged(ViewChange change) {
    m_logic.SetGeometry(Geometry(), change == ViewChange::Settled ? CAdjustLogic::ViewQuality::Settled
                                                                  : CAdjustLogic::ViewQuality::Moving);
}

Bitmap CAdjustWnd::NavigatorPicture() {
    // Twice the thumbnail's side keeps it sharp when it is reduced to a screen of any scale.
    const double scale = 2.0 * PixelRatio();
    return m_logic.Overview(
        {Truncate(CImageNavigateCtrl::ThumbWidth * scale), Truncate(CImageNavigateCtrl::ThumbHeight * scale)});
}
