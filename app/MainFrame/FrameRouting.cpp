// SPDX-License-Identifier: GPL-3.0-or-later
// The one place where messages from canvases, bars and panels find their receiver.
#include "CBaseWnd.h"
#include "CLeftPanel.h"
#include "CMainFrameWnd.h"
#include "CMaskWnd.h"
#include "CMidBottomEditTool.h"
#include "CMidTopEditTool.h"
#include "CSaveWnd.h"
#include "CTopWnd.h"

void CMainFrameWnd::OnFrameMessage(const FrameMessage& message) {
    std::visit([this](const auto& m) { Route(m); }, message);
}

// A row goes to the panel whose list it is for, whatever tool is on show by now.
void CMainFrameWnd::Route(const HandOffMessage& message) {
    m_pLeftPanel->Deliver(message.tool, message);
}

void CMainFrameWnd::Route(const ViewNotifyMessage& message) {
    if (const auto* zoom = std::get_if<ZoomNews>(&message.news)) return m_pTopTool->ShowZoom(zoom->percent);
    if (std::holds_alternative<HistoryNews>(message.news)) {
        UpdateHistoryButtons();
        return m_pMidWnd->TellFailures();
    }
    if (std::holds_alternative<SizeNews>(message.news)) m_pMidWnd->UpdateSizeText();
    m_pLeftPanel->Deliver(message.tool, message);
}

void CMainFrameWnd::Route(const ImageLoadedMessage& message) {
    m_pTopWnd->EnableSave(true);
    m_pTopTool->EnableZoom(true);
    m_pLeftPanel->Deliver(message.tool, message);
    UpdateHistoryButtons();
}

void CMainFrameWnd::Route(const WelcomeChoiceMessage& message) {
    OnWelcomeChoice(message.choice);
}

void CMainFrameWnd::Route(const OpenSaveMessage& message) {
    ShowSaveWindow(message.picture, AfterSave::ShowPage);
}

void CMainFrameWnd::Route(const LeavingToolMessage& message) {
    m_pLeftPanel->Deliver(message.tool, message);
}

void CMainFrameWnd::Route(const RefreshPanelMessage& message) {
    m_pLeftPanel->Deliver(message.tool, message);
    UpdateHistoryButtons();
    m_pMidWnd->TellFailures();
}

void CMainFrameWnd::Route(const ClearSelectionsMessage& message) {
    m_pLeftPanel->Deliver(message.tool, message);
}

void CMainFrameWnd::UpdateHistoryButtons() {
    m_pTopTool->UpdateHistoryButtons();
}

void CMainFrameWnd::ShowImageFacts() {
    if (m_pBottomTool && m_pMidWnd->ImageInfo()) m_pBottomTool->ShowInfo(*m_pMidWnd->ImageInfo());
}
