// SPDX-License-Identifier: GPL-3.0-or-later
#include "CShowProgress.h"

#include "Language.h"
#include "Messages.h"
#include "Truncate.h"

void CShowProgress::Tell(std::function<void(ProgressWindow&)> call) {
    if (OnMainThread()) {
        call(m_dlg);
        return;
    }
    PostToMain(&m_guard, [&window = m_dlg, call = std::move(call)] { call(window); });
}

void CShowProgress::Reset() {
    m_dlg.ResetFlags();
    Tell([](ProgressWindow& window) { window.Reset(); });
    CObjProgress::Reset();
}

void CShowProgress::SetStepText(const wchar_t* key) {
    const QString text = key ? LanguageText(QString::fromWCharArray(key)) : QString();
    Tell([text](ProgressWindow& window) { window.SetText(text); });
}

void CShowProgress::SetValue(float v) {
    const int percent = Truncate(v);
    if (percent != Truncate(m_fValue)) Tell([percent](ProgressWindow& window) { window.SetPercent(percent); });
    m_fValue = v;
}

int CShowProgress::CanContinue() {
    return m_dlg.CanContinue() ? 1 : 0;
}

void CShowProgress::Finish() {
    m_dlg.StopContinuing();
    Tell([](ProgressWindow& window) { window.Hide(); });
}

void CShowProgress::Cancel() {
    m_dlg.RequestCancel();
    Tell([](ProgressWindow& window) { window.SetText(QStringLiteral("esc")); });
}
