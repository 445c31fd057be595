// SPDX-License-Identifier: GPL-3.0-or-later
#include "CNetworkDlg.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>

#include "Addresses.h"
#include "DialogKeys.h"
#include "Language.h"
#include "SentReports.h"

namespace {

// As people write it: a secure host's usual port goes without saying.
QString Shown(const QString& address) {
    return address.endsWith(QLatin1String(":443")) ? address.chopped(4) : address;
}

QString Word(const char* key) {
    return LanguageText(QLatin1String(key), QStringLiteral("NetworkDlg"));
}

}  // namespace

CNetworkDlg::CNetworkDlg(const Addresses& addresses) {
    setObjectName(QStringLiteral("NetworkDlg"));
    Create(QStringLiteral("NetworkDlg.xml"));
    if (auto* text = Find<QLabel>(QStringLiteral("TextSent"))) text->setText(TextFor(addresses));
    if (auto* report = Find<QPlainTextEdit>(QStringLiteral("EditLastReport"))) {
        const QString last = LastSent();
        report->setPlainText(last.isEmpty() ? Word("ids_net_nothing") : last);
    }
    if (auto* send = Find<QCheckBox>(QStringLiteral("OptSend"))) {
        send->setChecked(addresses.HasStatistics() && StatisticsAllowed());
        send->setEnabled(addresses.HasStatistics());
        if (!addresses.HasStatistics()) send->setToolTip(Word("ids_net_none"));
    }
    if (auto* save = Find<QWidget>(QStringLiteral("BtnSave"))) save->setFocus();
}

QString CNetworkDlg::TextFor(const Addresses& addresses) {
    QStringList lines;
    if (!addresses.analytics.isEmpty()) lines += Word("ids_net_analytics").arg(Shown(addresses.analytics));
    if (!addresses.data.isEmpty()) lines += Word("ids_net_data").arg(Shown(addresses.data));
    if (!addresses.feedback.isEmpty()) lines += Word("ids_net_feedback").arg(Shown(addresses.feedback));
    return lines.isEmpty() ? Word("ids_net_none") : lines.join(QStringLiteral("\n\n"));
}

void CNetworkDlg::OnNotify(const Notify& notify) {
    if (notify.Is(u"click", u"BtnCancel") || notify.Is(u"click", u"BtnClose")) close();
    if (!notify.Is(u"click", u"BtnSave")) return;
    const auto* send = Find<QCheckBox>(QStringLiteral("OptSend"));
    if (send && send->isEnabled() && send->isChecked() != StatisticsAllowed()) AllowStatistics(send->isChecked());
    close();
}

void CNetworkDlg::keyPressEvent(QKeyEvent* event) {
    if (!IsEnter(*event) || !ClickFocusedButton(*this)) CXMLWnd::keyPressEvent(event);
}
