// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSizeAdjustDlg.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>

#include "AppPaths.h"
#include "DialogKeys.h"
#include "IniFile.h"

CSizeAdjustDlg::CSizeAdjustDlg() {
    setObjectName(QStringLiteral("CSizeAdjustDlg"));
    Create(QStringLiteral("SizeAdjustDlg.xml"));
    if (auto* yes = Find<QAbstractButton>(QStringLiteral("BtnYes"))) yes->setFocus();
}

void CSizeAdjustDlg::OnNotify(const Notify& notify) {
    if (notify.Is(u"click", u"OptCheck")) m_dontAskAgain = !m_dontAskAgain;
    if (notify.Is(u"click", u"BtnYes")) Answer(ResultReduce, QStringLiteral("1"));
    if (notify.Is(u"click", u"BtnNot")) Answer(ResultNot, QStringLiteral("2"));
    if (notify.Is(u"click", u"BtnClose")) close();
}

void CSizeAdjustDlg::Answer(int result, const QString& stored) {
    if (m_dontAskAgain)
        WriteProfileString(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), stored,
                           AppPath(QStringLiteral("Config.ini")));
    EndModal(result);
}

void CSizeAdjustDlg::keyPressEvent(QKeyEvent* event) {
    if (!IsEnter(*event) || !ClickFocusedButton(*this)) CXMLWnd::keyPressEvent(event);
}

bool CSizeAdjustDlg::OnCloseRequest() {
    EndModal(ResultNot);
    return false;
}

SizeAnswer AskSizeAdjust(QWidget* owner) {
    const QPointer<CSizeAdjustDlg> dialog = new CSizeAdjustDlg;
    const int result = dialog->ShowModal(owner, QStringLiteral("CSizeAdjustDlg"));
    // A dialog that went down with its owner was not answered.
    const SizeAnswer answer = dialog && result == CSizeAdjustDlg::ResultReduce ? SizeAnswer::Reduce : SizeAnswer::Keep;
    delete dialog;
    return answer;
}
