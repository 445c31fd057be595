// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMidTopEditTool.h"

#include <algorithm>
#include <functional>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "CBaseWnd.h"
#include "CCompareListWnd.h"
#include "CHistoryManager.h"
#include "ClickCount.h"
#include "CSliderCtrl.h"
#include "CUndoListWnd.h"
#include "HistoryButtons.h"
#include "ToolHost.h"

CMidTopEditTool::CMidTopEditTool(ToolHost& host, QWidget* parent) : CXMLWnd(parent), m_host(host) {
    Create(QStringLiteral("MidTopEditTool.xml"));
    if (QAbstractButton* compare = Button(QStringLiteral("BtnCompare"))) compare->installEventFilter(this);
    EnableZoom(false);
    UpdateHistoryButtons();
}

CMidTopEditTool::~CMidTopEditTool() = default;

QAbstractButton* CMidTopEditTool::Button(const QString& name) const {
    return Find<QAbstractButton>(name);
}

void CMidTopEditTool::Enable(const char* name, bool enable) {
    if (auto* control = Find<QWidget>(QLatin1String(name))) control->setEnabled(enable);
}

void CMidTopEditTool::ShowZoom(int percent) {
    if (auto* slider = Find<CSliderCtrl>(QStringLiteral("SliderProportion")))
        slider->SetQuietly(percent <= LeastPercent ? LeastPercent : std::min(percent, MostPercent));
    if (auto* text = Find<QLabel>(QStringLiteral("TextProportion"))) text->setText(QString::number(percent) + u'%');
}

void CMidTopEditTool::EnableZoom(bool enable) {
    for (const char* name : {"BtnZoomOut", "BtnZoomIn", "BtnMaster", "BtnMatch"}) Enable(name, enable);
}

void CMidTopEditTool::UpdateHistoryButtons() {
    const HistoryButtons may = HistoryButtonsFor(CHistoryManager::Instance(), m_host.Canvas());
    Enable("BtnUndo", may.undo);
    Enable("BtnRedo", may.redo);
    Enable("BtnMenuUndo", may.list);
    for (const char* name : {"BtnOriginal", "BtnCompare", "BtnMenuCompare", "ComboCompare"}) Enable(name, may.changed);
}

void CMidTopEditTool::Press(const QString& name) {
    QAbstractButton* button = Button(name);
    if (!button || !button->isEnabled() || m_host.IsBusy()) return;
    if (button->isHidden())
        OnClick(name);
    else
        button->click();
}

void CMidTopEditTool::OnNotify(const Notify& notify) {
    if (notify.name == u"SliderProportion") {
        if (!m_host.Canvas()) return;
        LeaveCompare();
        m_host.Canvas()->ZoomToPercent(notify.value);
    } else if (notify.Is(u"downclick", u"BtnCompare")) {
        BeginCompare();
    } else if (notify.Is(u"itemselect", u"ComboCompare")) {
        CountClick(QStringLiteral("8880507"));
        SideBySide();
    } else if (notify.type == u"click") {
        OnClick(notify.name);
    }
}

void CMidTopEditTool::OnClick(const QString& name) {
    if (!m_host.Canvas() || m_host.IsBusy()) return;
    if (name == u"BtnZoomOut") Zoom([](CBaseWnd& canvas) { canvas.ZoomOut(); });
    if (name == u"BtnZoomIn") Zoom([](CBaseWnd& canvas) { canvas.ZoomIn(); });
    if (name == u"BtnMaster") ActualSize();
    if (name == u"BtnMatch") Fit();
    if (name == u"BtnUndo") {
        CountClick(QStringLiteral("8880504"));
        Move([](CBaseWnd& canvas) { canvas.OnUndo(); });
    }
    if (name == u"BtnRedo") {
        CountClick(QStringLiteral("8880505"));
        Move([](CBaseWnd& canvas) { canvas.OnRedo(); });
    }
    if (name == u"BtnOriginal") {
        CountClick(QStringLiteral("8880506"));
        Move([](CBaseWnd& canvas) { canvas.OnRevert(); });
    }
    if (name == u"BtnMenuUndo") ShowUndoList();
    if (name == u"BtnMenuCompare") ShowCompareList();
}

void CMidTopEditTool::LeaveCompare() {
    if (m_host.CompareMode() != 0) m_host.SetCompareMode(0);
}

void CMidTopEditTool::Zoom(const std::function<void(CBaseWnd&)>& request) {
    LeaveCompare();
    request(*m_host.Canvas());
}

void CMidTopEditTool::ActualSize() {
    CountClick(QStringLiteral("888050301"));
    Zoom([](CBaseWnd& canvas) { canvas.ZoomActualSize(); });
    if (auto* master = Button(QStringLiteral("BtnMaster"))) master->hide();
    if (auto* match = Button(QStringLiteral("BtnMatch"))) match->show();
}

void CMidTopEditTool::Fit() {
    CountClick(QStringLiteral("888050302"));
    Zoom([](CBaseWnd& canvas) { canvas.ZoomFit(); });
    if (auto* match = Button(QStringLiteral("BtnMatch"))) match->hide();
    if (auto* master = Button(QStringLiteral("BtnMaster"))) master->show();
}

void CMidTopEditTool::Move(const std::function<void(CBaseWnd&)>& move) {
    LeaveCompare();
    move(*m_host.Canvas());
    m_host.SendFrame(ClearSelectionsMessage{m_host.Tool()});
    m_host.UpdateSizeText();
    UpdateHistoryButtons();
    m_host.SendFrame(RefreshPanelMessage{m_host.Tool()});
}

void CMidTopEditTool::BeginCompare() {
    if (m_compareHeld || !m_host.Canvas() || m_host.IsBusy()) return;
    CountClick(QStringLiteral("8880507"));
    m_compareHeld = true;
    m_host.SetCompareMode(1);
}

void CMidTopEditTool::EndCompare() {
    if (!m_compareHeld) return;
    m_compareHeld = false;
    if (m_host.CompareMode() == 1) m_host.SetCompareMode(0);
}

void CMidTopEditTool::HoldCompare(bool hold) {
    const QAbstractButton* compare = Button(QStringLiteral("BtnCompare"));
    if (!hold)
        EndCompare();
    else if (compare && compare->isEnabled())
        BeginCompare();
}

bool CMidTopEditTool::eventFilter(QObject* object, QEvent* event) {
    // The button's own signals end a press as soon as the mouse leaves it; the look lasts until the mouse goes up,
    // wherever that is, or until no release can be expected any more.
    switch (event->type()) {
        case QEvent::MouseButtonRelease:
            if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) EndCompare();
            break;
        case QEvent::KeyRelease:
            if (!static_cast<QKeyEvent*>(event)->isAutoRepeat()) EndCompare();
            break;
        case QEvent::FocusOut:
        case QEvent::Hide:
        case QEvent::WindowDeactivate:
            EndCompare();
            break;
        default:
            break;
    }
    return CXMLWnd::eventFilter(object, event);
}

void CMidTopEditTool::SideBySide() {
    if (m_host.Canvas() && !m_host.IsBusy() && m_host.CompareMode() != 2) m_host.SetCompareMode(2);
}

void CMidTopEditTool::ShowUndoList() {
    QAbstractButton* option = Button(QStringLiteral("BtnMenuUndo"));
    if (!m_undoList) {
        m_undoList = std::make_unique<CUndoListWnd>(option);
        connect(m_undoList.get(), &CUndoListWnd::RowClicked, this, &CMidTopEditTool::JumpTo);
    }
    CHistoryManager& history = CHistoryManager::Instance();
    m_undoList->Open(history.GetStepNames(), history.m_currentNo - 1);
}

void CMidTopEditTool::JumpTo(int row) {
    if (m_host.Canvas() && !m_host.IsBusy()) Move([row](CBaseWnd& canvas) { canvas.OnHistoryJump(row); });
}

void CMidTopEditTool::ShowCompareList() {
    if (!m_compareList) {
        m_compareList = std::make_unique<CCompareListWnd>(Button(QStringLiteral("BtnMenuCompare")));
        connect(m_compareList.get(), &CCompareListWnd::SideBySideChosen, this, [this] { SideBySide(); });
    }
    m_compareList->Open();
}
