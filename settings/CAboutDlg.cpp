// SPDX-License-Identifier: GPL-3.0-or-later
#include "CAboutDlg.h"

#include <QtGui/QIcon>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "ClickCount.h"
#include "DialogKeys.h"
#include "Language.h"
#include "Version.h"

CAboutDlg::CAboutDlg(const QString& website, OpenPage openPage) : m_website(website), m_openPage(std::move(openPage)) {
    setObjectName(QStringLiteral("AboutDlg"));
    Create(QStringLiteral("AboutDlg.xml"));
    if (auto* version = Find<QLabel>(QStringLiteral("TextVersion")))
        version->setText(version->text().arg(GetVersionText()));
    if (auto* mark = Find<QLabel>(QStringLiteral("AboutMark")))
        mark->setPixmap(QIcon(ResourcePath(QStringLiteral("Images/Icons/quince.svg"))).pixmap(mark->minimumSize()));
    auto* site = Find<QAbstractButton>(QStringLiteral("BtnWebSite"));
    if (auto* close = Find<QWidget>(QStringLiteral("BtnClose"))) close->setFocus();
    if (!site || !m_website.isEmpty()) return;
    site->setEnabled(false);
    site->setToolTip(LanguageText(QStringLiteral("ids_nowebsite")));
}

void CAboutDlg::OnNotify(const Notify& notify) {
    if (notify.Is(u"click", u"BtnClose")) close();
    if (!notify.Is(u"click", u"BtnWebSite")) return;
    m_openPage(m_website);
    CountClick(QStringLiteral("888070301"));
}

void CAboutDlg::keyPressEvent(QKeyEvent* event) {
    if (!IsEnter(*event) || !ClickFocusedButton(*this)) CXMLWnd::keyPressEvent(event);
}
