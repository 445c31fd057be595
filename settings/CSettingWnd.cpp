// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSettingWnd.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLayout>

#include "Addresses.h"
#include "AppPaths.h"
#include "ClickCount.h"
#include "Language.h"
#include "Log.h"

namespace {

// The number that this line of the log carries.
constexpr int LogLine = 71;

}  // namespace

CSettingWnd::CSettingWnd(QAbstractButton* option, const Addresses& addresses, StartProgram startProgram)
    : CPopupWnd(option), m_startProgram(std::move(startProgram)) {
    setObjectName(QStringLiteral("SettingWnd"));
    Create(QStringLiteral("Setting.xml"));
    auto* update = Find<QAbstractButton>(QStringLiteral("ElementUpdate"));
    if (!update || !addresses.update.isEmpty()) return;
    update->setEnabled(false);
    update->setToolTip(LanguageText(QStringLiteral("ids_noupdateaddress")));
}

void CSettingWnd::Open() {
    const QSize size = layout() ? layout()->sizeHint() : sizeHint();
    OpenUnder(size, size.width());
    for (const char* name : {"ElementUpdate", "ElementSetting"}) {
        auto* entry = Find<QWidget>(QLatin1String(name));
        if (entry && entry->isEnabled()) return entry->setFocus();
    }
}

void CSettingWnd::OnNotify(const Notify& notify) {
    if (notify.type != u"click") return;
    hide();
    if (notify.name == u"ElementUpdate") Update();
    if (notify.name == u"ElementSetting") {
        CountClick(QStringLiteral("8880702"));
        emit SizeChosen();
    }
    if (notify.name == u"ElementNetwork") emit NetworkChosen();
    if (notify.name == u"ElementAbout") {
        CountClick(QStringLiteral("8880703"));
        emit AboutChosen();
    }
}

void CSettingWnd::Update() {
    const bool started = m_startProgram(AppPath(QStringLiteral("Update.exe")), {QStringLiteral("hand")});
    Log("============[QUINCE][SettingWnd][Line:%d]OnUpdateClick=================", LogLine);
    CountClick(QStringLiteral("8880701"));
    if (!started) emit UpdaterMissing();
}

void CSettingWnd::keyPressEvent(QKeyEvent* event) {
    const bool chosen = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (auto* entry = qobject_cast<QAbstractButton*>(focusWidget()); chosen && entry) return entry->click();
    CPopupWnd::keyPressEvent(event);
}

void CSettingWnd::hideEvent(QHideEvent* event) {
    CPopupWnd::hideEvent(event);
    deleteLater();
}
