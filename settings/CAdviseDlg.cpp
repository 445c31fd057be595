// SPDX-License-Identifier: GPL-3.0-or-later
#include "CAdviseDlg.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

#include "AppPaths.h"
#include "DialogKeys.h"
#include "Feedback.h"
#include "IniFile.h"
#include "Language.h"
#include "RunTask.h"
#include "ScreenPixels.h"

namespace {

const QString Section = QStringLiteral("AdviseDlg");

}  // namespace

CAdviseDlg::CAdviseDlg(const QString& host) : m_host(host) {
    setObjectName(QStringLiteral("AdviseDlg"));
    Create(QStringLiteral("AdviseDlg.xml"));
    m_remark = Find<QPlainTextEdit>(QStringLiteral("EditReason"));
    m_contact = Find<QLineEdit>(QStringLiteral("EditAddr"));
    if (auto* notice = Find<QWidget>(QStringLiteral("TextNoAddress"))) notice->setVisible(m_host.isEmpty());
    if (auto* text = Find<QWidget>(QStringLiteral("TextAdvise"))) text->setVisible(!m_host.isEmpty());
    for (const char* name : {"EditReason", "EditAddr", "BtnCommit"})
        if (auto* control = Find<QWidget>(QLatin1String(name))) control->setEnabled(!m_host.isEmpty());
    if (auto* close = Find<QWidget>(QStringLiteral("BtnClose")); close && m_host.isEmpty()) close->setFocus();
    if (m_remark && !m_host.isEmpty()) m_remark->setFocus();
}

QString CAdviseDlg::Remark() const {
    const QString text = m_remark->toPlainText();
    return text == m_remark->placeholderText() && !m_remarkEdited ? QString() : text;
}

QString CAdviseDlg::Contact() const {
    const QString text = m_contact->text();
    return text == m_contact->placeholderText() && !m_contactEdited ? QString() : text;
}

void CAdviseDlg::OnNotify(const Notify& notify) {
    if (notify.Is(u"click", u"BtnClose")) close();
    if (notify.Is(u"click", u"BtnCommit") && m_remark && m_contact) Commit();
    if (notify.Is(u"enchange", u"EditReason") && m_remark)
        m_remarkEdited = m_remarkEdited ||
                         (!m_remark->toPlainText().isEmpty() && m_remark->toPlainText() != m_remark->placeholderText());
    if (notify.Is(u"enchange", u"EditAddr") && m_contact)
        m_contactEdited =
            m_contactEdited || (!m_contact->text().isEmpty() && m_contact->text() != m_contact->placeholderText());
}

void CAdviseDlg::Commit() {
    if (Remark().isEmpty()) return Tell("ids_advise", m_remark);
    const QString section = QStringLiteral("Advise");
    const QString key = QStringLiteral("Email");
    if (Contact().isEmpty() && GetProfileInt(section, key, 0, ConfigIni()) == 0) {
        Tell("ids_addr", m_contact);
        WriteProfileString(section, key, QStringLiteral("1"), ConfigIni());
        return;
    }
    Send();
}

void CAdviseDlg::Send() {
    const FeedbackForm form{CutRemark(Remark()), CutContact(Contact()), ScreenPixels()};
    FeedbackResult result;
    const bool finished = RunTask([&](CObjProgress& sink) {
        // Nobody knows how long a server takes; the first percent says that Esc works.
        sink.SetValue(1);
        result = SendFeedback(m_host, form, [&sink] { return sink.CanContinue() != 0; });
    });
    if (result.sent)
        close();
    else if (finished)
        ShowMessage(this, result.error);
}

void CAdviseDlg::Tell(const char* key, QWidget* field) {
    ShowMessage(this, LanguageText(QLatin1String(key), Section));
    field->setFocus();
}

void CAdviseDlg::keyPressEvent(QKeyEvent* event) {
    if (!IsEnter(*event) || !ClickFocusedButton(*this)) CXMLWnd::keyPressEvent(event);
}
