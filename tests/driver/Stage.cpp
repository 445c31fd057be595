// SPDX-License-Identifier: GPL-3.0-or-later
#include "Stage.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include "AppFolders.h"
#include "AppPaths.h"
#include "CMainFrameWnd.h"
#include "Driver.h"
#include "IniFile.h"
#include "Language.h"
#include "StartUp.h"
#include "Style.h"

Stage::Stage(const QString& language) {
    PrepareFolders();
    const QString config = AppPath(QStringLiteral("Config.ini"));
    WriteProfileString(QStringLiteral("Language"), QStringLiteral("ID"), language, config);
    WriteProfileString(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), QStringLiteral("2"), config);
    SettleLanguage();
    SettleTitle();
    Style::Apply(*qApp);
}

Stage::~Stage() {
    m_frame.reset();
    WipeTemp();
}

CMainFrameWnd& Stage::Open(const QString& picture, QSize size) {
    m_frame.reset();  // one at a time: main windows share the history
    m_frame = std::make_unique<CMainFrameWnd>(picture, BuiltInTools());
    m_frame->resize(size);
    m_frame->move(0, 0);
    m_frame->show();
    if (!QTest::qWaitForWindowExposed(m_frame.get())) qFatal("the main window does not appear");
    Driver::WaitFor(QStringLiteral("picture or welcome window"),
                    [&] { return m_frame->Mid().HasImage() || Driver::IsThere(QStringLiteral("BtnWelEdit")); });
    return *m_frame;
}
