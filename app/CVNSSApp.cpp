// SPDX-License-Identifier: GPL-3.0-or-later
#include "CVNSSApp.h"

#include <QtWidgets/QApplication>

#include "CMainFrameWnd.h"
#include "CrashReport.h"
#include "Language.h"
#include "MessageBox.h"
#include "QtTexts.h"
#include "SingleInstance.h"
#include "StartUp.h"
#include "Statistics.h"
#include "Style.h"

int CVNSSApp::InitInstance(const QStringList& arguments) {
    SingleInstance instance;
    switch (instance.Enter()) {
        case InstanceEntry::Failed:
            ShowMessage(nullptr, QStringLiteral("Create Semaphore error!"));
            return 1;
        case InstanceEntry::Raised:
        case InstanceEntry::Unreachable:
            return 0;
        case InstanceEntry::First:
        case InstanceEntry::Replaced:
            break;
    }
    StartUpServices services = SystemServices();
    services.installCrashReporter = [](const std::string& version, const std::string& folder) {
        Install(version.c_str(), folder.c_str());
    };
    const StartUpResult start = RunStartUp(arguments, services);
    {
        const CStatistics statistics;
        if (!start.updating) RunFrame(start.picture, instance);
    }
    ExitInstance();
    return 0;
}

void CVNSSApp::RunFrame(const QString& picture, SingleInstance& instance) {
    const QtTexts texts;
    Style::Apply(m_application);
    m_application.setApplicationDisplayName(AppTitle());
    CMainFrameWnd frame(picture, BuiltInTools());
    instance.Serve([&frame] {
        if (frame.isMinimized()) frame.showNormal();
        frame.raise();
        frame.activateWindow();
    });
    frame.ShowModal();
    TrySwitch(0);
    instance.Retire();
}

void CVNSSApp::ExitInstance() {
    RunShutDown();
}
