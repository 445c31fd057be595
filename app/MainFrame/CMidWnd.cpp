// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMidWnd.h"

#include <QtGui/QPainter>
#include <QtGui/QResizeEvent>
#include <utility>

#include "AppPaths.h"
#include "CBaseWnd.h"
#include "CCompareWnd.h"
#include "CHistoryManager.h"
#include "Language.h"
#include "MessageBox.h"
#include "Messages.h"
#include "RunTask.h"
#include "Style.h"
#include "WithinMemory.h"

CMidWnd::CMidWnd(QWidget* parent, const ToolTable& tools, Hooks hooks)
    : QWidget(parent), m_tools(tools), m_hooks(std::move(hooks)), m_file(std::make_unique<PC_File>()) {
    setObjectName(QStringLiteral("MidWnd"));
    setWindowTitle(QStringLiteral("MidWnd"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_pCompareWnd = new CCompareWnd(*this, this);
    m_pCompareWnd->hide();
    SwitchTool(1);
}

CMidWnd::~CMidWnd() {
    CHistoryManager::Instance().Reset();
}

bool CMidWnd::IsBusy() const {
    return IsTaskRunning() || m_modal > 0 || (m_pWnd && m_pWnd->IsStrokeHeld());
}

bool CMidWnd::RunTask(const std::function<void(CObjProgress&)>& work) {
    return ::RunTask(work);
}

void CMidWnd::SendFrame(const FrameMessage& message) {
    SendToMain([&] { m_hooks.frame(message); });
}

void CMidWnd::Tell(const QString& key) {
    ShowMessage(this, LanguageText(key));
}

void CMidWnd::SwitchTool(int tool) {
    SetCompareMode(0);
    if (tool == m_nTool || IsBusy()) return;
    const bool discardable = HasImage() && IsSafeToDiscard();
    if (m_nTool != 0) SendFrame(LeavingToolMessage{m_nTool});
    const ToolRow* row = m_tools.Row(tool);
    if (!row) {
        m_nTool = tool;
        return;
    }
    CBaseWnd* entering = row->makeCanvas(this, *this);
    if (!entering) return;
    if (!ChangeCanvas(entering)) return SendFrame(RefreshPanelMessage{m_nTool});
    const bool first = m_nTool == 0;
    m_nTool = tool;
    // Leaving a tool turns its work into a step of its own without changing the picture: what was saved still is.
    if (discardable && m_saved) NoteSaved();
    UpdateSizeText();
    if (!first) SendFrame(RefreshPanelMessage{m_nTool});
}

// A new canvas takes the picture over from the old one before it is shown; the old one goes when the new one stands.
// Where the new one finds no memory for the picture the old one stays as it was, and the result is false.
bool CMidWnd::ChangeCanvas(CBaseWnd* entering) {
    entering->Place(rect());
    CBaseWnd* leaving = m_pWnd;
    const std::function<void()> putBack = leaving ? leaving->Remember() : std::function<void()>();
    const bool entered = WithinMemory(*this, [&] {
        if (HasImage())
            RunTask([&](CObjProgress&) { EnterTool(entering, leaving); });
        else
            EnterTool(entering, leaving);
    });
    if (!entered) {
        delete entering;
        putBack();
        leaving->Redraw(CBaseWnd::Paint::Now);
        return false;
    }
    m_pWnd = entering;
    entering->show();
    entering->stackUnder(m_pCompareWnd);
    entering->Redraw(CBaseWnd::Paint::Now);
    delete leaving;
    return true;
}

// On the task's worker.
void CMidWnd::EnterTool(CBaseWnd* entering, CBaseWnd* leaving) {
    if (leaving) leaving->OnApply();
    if (!entering->OnEnter()) {
        const Bitmap current = CHistoryManager::Instance().CurrentBitmap();
        if (current) {
            entering->SetShowBitmap(current);
            entering->ZoomFit();
        }
    }
    entering->OnImageReady();
}

void CMidWnd::UpdateSizeText() {
    int width = 0, height = 0;
    if (m_pWnd) m_pWnd->GetImageSize(&width, &height);
    if (!m_imageInfo || width <= 0) return;
    m_imageInfo->Dimensions = std::to_wstring(width) + L" x " + std::to_wstring(height);
    m_hooks.imageFactsChanged();
}

void CMidWnd::SetCompareMode(int mode) {
    if (mode == m_nCompareMode || !m_pCompareWnd || !m_pWnd) return;
    if (mode == 0) {
        m_nCompareMode = 0;
        m_pWnd->show();
        m_pCompareWnd->hide();
        m_pCompareWnd->Clear();
        return;
    }
    Bitmap original;
    if (!WithinMemory(*this, [&] { original = CHistoryManager::Instance().ReadOrigin(); })) return;
    CHistoryManager::Instance().NoteRead(!original.IsNull());
    if (!original) return TellFailures();
    WithinMemory(*this, [&] { ShowCompare(mode, original); });
}

void CMidWnd::ShowCompare(int mode, const Bitmap& original) {
    m_pCompareWnd->Place(rect());
    if (mode == 1)
        ShowOverPicture(original);
    else
        m_pCompareWnd->ShowSideBySide(original, m_pWnd->GetShowBitmap());
    m_pWnd->ShowNavigator(false);
    m_nCompareMode = mode;
    m_pCompareWnd->show();
    m_pCompareWnd->raise();
    m_pWnd->hide();
}

// The original stands exactly where the picture stands, so that the eye sees only the change; a picture of another size
// has no such place.
void CMidWnd::ShowOverPicture(const Bitmap& original) {
    QRectF imageRect;
    QRect screenRect;
    int width = 0, height = 0;
    m_pWnd->GetImageSize(&width, &height);
    if (width == original.Width() && height == original.Height()) m_pWnd->GetViewRects(&imageRect, &screenRect);
    m_pCompareWnd->ShowOriginal(original, imageRect, screenRect);
}

bool CMidWnd::IsSafeToDiscard() const {
    if (!m_pWnd || !m_pWnd->IsImageChanged()) return true;
    if (!m_saved || m_saved->stamp != CHistoryManager::Instance().CurrentStamp()) return false;
    const bool pending = m_pWnd->HasPendingWork();
    if (!pending && !m_saved->pending) return true;
    return pending == m_saved->pending && m_pWnd->GetShowBitmap().SharesPixelsWith(m_saved->picture);
}

void CMidWnd::NoteSaved() {
    SavedState state;
    state.stamp = CHistoryManager::Instance().CurrentStamp();
    state.pending = m_pWnd && m_pWnd->HasPendingWork();
    if (state.pending) state.picture = m_pWnd->GetShowBitmap();
    m_saved = state;
}

void CMidWnd::TellFailures() {
    switch (CHistoryManager::Instance().TakeFailureNotice()) {
        case HistoryFailure::None:
            return;
        case HistoryFailure::Save:
            return Tell(QStringLiteral("ids_historysave"));
        case HistoryFailure::Read:
            return Tell(QStringLiteral("ids_historyread"));
    }
}

void CMidWnd::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (m_pWnd) m_pWnd->Place(rect());
    if (m_pCompareWnd) m_pCompareWnd->Place(rect());
}

void CMidWnd::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Style::Canvas);
}
