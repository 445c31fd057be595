// SPDX-License-Identifier: GPL-3.0-or-later
// What stands around the picture: settings, feedback, and what the program tells of itself.
#include "Addresses.h"
#include "CAboutDlg.h"
#include "CAdviseDlg.h"
#include "ClickCount.h"
#include "CMainFrameWnd.h"
#include "CNetworkDlg.h"
#include "CSettingWnd.h"
#include "CSizeSettingDlg.h"
#include "Language.h"
#include "ScreenPixels.h"
#include "Shell.h"
#include "StartUp.h"
#include "Statistics.h"

void CMainFrameWnd::ShowSettings(QAbstractButton* option) {
    if (!option || m_pMidWnd->IsBusy()) return;
    CountClick(QStringLiteral("88807"));
    const Addresses addresses = ReadAddresses();
    auto* window = new CSettingWnd(option, addresses, StartProgram);
    connect(window, &CSettingWnd::SizeChosen, this, [this] {
        WhileModal([this] { return CSizeSettingDlg().ShowModal(this, QStringLiteral("CSizeSettingDlg")); });
    });
    connect(window, &CSettingWnd::NetworkChosen, this, [this, addresses] {
        WhileModal([&] { return CNetworkDlg(addresses).ShowModal(this, QStringLiteral("NetworkDlg")); });
    });
    connect(window, &CSettingWnd::AboutChosen, this, [this, addresses] {
        WhileModal([&] { return CAboutDlg(addresses.website, OpenPage).ShowModal(this, QStringLiteral("AboutDlg")); });
    });
    connect(window, &CSettingWnd::UpdaterMissing, this, [this] {
        WhileModal([this] {
            ShowMessage(this, LanguageText(QStringLiteral("ids_noupdater")));
            return 0;
        });
    });
    window->Open();
}

void CMainFrameWnd::ShowFeedback() {
    if (m_pMidWnd->IsBusy()) return;
    CountClick(QStringLiteral("8880702"));
    WhileModal([this] { return CAdviseDlg(ReadAddresses().feedback).ShowModal(this, QStringLiteral("AdviseDlg")); });
}

// A frame that stands alone, as in a tool that drives it, tells nothing.
void CMainFrameWnd::BeginStatistics() {
    CStatistics* statistics = CStatistics::Current();
    if (!statistics) return;
    m_pMidWnd->SetOpenListener([](const OpenedImage& opened) {
        OpenFacts facts;
        facts.width = opened.width;
        facts.height = opened.height;
        facts.format = opened.extension;
        facts.size = opened.sizeKb;
        facts.resize = opened.bucket;
        facts.name = opened.isDefault ? 1 : 0;
        if (CStatistics* current = CStatistics::Current()) current->SendOpen(facts);
    });
    statistics->StartStatistics(ScreenPixels());
}

void CMainFrameWnd::LookForUpdates() {
    const CStatistics* statistics = CStatistics::Current();
    if (statistics) RunUpdateCheck(SystemServices().update, ReadAddresses().update, statistics->IsFirstRun());
}
