// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSizeSettingDlg.h"

#include <array>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QRadioButton>

#include "AppPaths.h"
#include "DialogKeys.h"
#include "IniFile.h"

namespace {

struct Choice {
    const char* option;
    const char* value;
};

constexpr std::array<Choice, 3> Choices{{{"Opt1", "1"}, {"Opt2", "2"}, {"Opt3", "0"}}};

const QString Section = QStringLiteral("Tip");
const QString Key = QStringLiteral("DlgOpenImageLessen");

}  // namespace

CSizeSettingDlg::CSizeSettingDlg() {
    setObjectName(QStringLiteral("CSizeSettingDlg"));
    Create(QStringLiteral("SizeSettingDlg.xml"));
    const QString stored = QString::number(GetProfileInt(Section, Key, 0, ConfigIni()));
    for (const Choice& choice : Choices) {
        auto* option = Find<QAbstractButton>(QLatin1String(choice.option));
        if (!option || stored != QLatin1String(choice.value)) continue;
        option->setChecked(true);
        option->setFocus();
    }
}

void CSizeSettingDlg::OnNotify(const Notify& notify) {
    if (notify.Is(u"click", u"BtnSave")) Save();
    if (notify.Is(u"click", u"BtnCancel") || notify.Is(u"click", u"BtnClose")) EndModal(ResultCancelled);
}

void CSizeSettingDlg::Save() {
    for (const Choice& choice : Choices) {
        const auto* option = Find<QAbstractButton>(QLatin1String(choice.option));
        if (option && option->isChecked()) WriteProfileString(Section, Key, QLatin1String(choice.value), ConfigIni());
    }
    EndModal(ResultSaved);
}

// On an option Enter saves; on a button it presses that one.
void CSizeSettingDlg::keyPressEvent(QKeyEvent* event) {
    if (!IsEnter(*event)) return CXMLWnd::keyPressEvent(event);
    const bool onOption = qobject_cast<QRadioButton*>(focusWidget()) != nullptr;
    if (onOption || !ClickFocusedButton(*this)) Save();
}

bool CSizeSettingDlg::OnCloseRequest() {
    EndModal(ResultCancelled);
    return false;
}
