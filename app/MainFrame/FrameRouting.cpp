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
    constexpr int EffectTool = 7, BeautyTool = 8;
    m_pLeftPanel->Deliver(message.kind == HandOffMessage::EffectList ? EffectTool : BeautyTool, message);
}

// Codes 0 and 5 mean the same from every tool; the others are the sending tool's own.
void CMainFrameWnd::Route(const ViewNotifyMessage& message) {
    constexpr int ZoomCode = 0, SizeCode = 1, HistoryCode = 5;
    switch (message.code) {
        case ZoomCode:
            return m_pTopTool->ShowZoom(message.value);
        case HistoryCode:
            UpdateHistoryButtons();
            return m_pMidWnd->TellFailures();
        case SizeCode:
            m_pMidWnd->UpdateSizeText();
            break;
        default:
            break;
    }
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
