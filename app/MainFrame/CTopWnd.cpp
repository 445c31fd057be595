// SPDX-License-Identifier: GPL-3.0-or-later
#include "CTopWnd.h"

#include <array>
#include <QtWidgets/QAbstractButton>

#include "ClickCount.h"
#include "CMainFrameWnd.h"
#include "Language.h"
#include "ToolTable.h"

namespace {

struct SectionRow {
    const char* control;
    int section;
    const char* clickCode;
    const char* background;  // the strip of the caption's background picture under the option
};

constexpr std::array<SectionRow, 3> Rows{{{"btnJichubianji", SectionBasic, "88802", "dest='0,7,150,40'"},
                                          {"btnTexiao", SectionEffects, "88803", "dest='150,7,300,40'"},
                                          {"btnMeiRong", SectionBeauty, "88804", "dest='300,7,450,40'"}}};

}  // namespace

CTopWnd::CTopWnd(CMainFrameWnd& frame, QWidget* parent, const ToolTable& tools) : CXMLWnd(parent), m_frame(frame) {
    Create(QStringLiteral("Caption.xml"));
    DisableMissingSections(tools);
    ShowSection(SectionBasic);
}

void CTopWnd::DisableMissingSections(const ToolTable& tools) {
    for (const SectionRow& row : Rows) {
        auto* button = Find<QAbstractButton>(QLatin1String(row.control));
        if (!button || tools.FirstOf(row.section) != 0) continue;
        button->setEnabled(false);
        button->setToolTip(LanguageText(QStringLiteral("ids_notyet")));
    }
}

void CTopWnd::ShowSection(int section) {
    for (const SectionRow& row : Rows) {
        if (row.section != section) continue;
        if (auto* button = Find<QAbstractButton>(QLatin1String(row.control))) button->setChecked(true);
        if (auto* strip = Find<QWidget>(QStringLiteral("HorizontalLayoutUI6")))
            strip->setProperty("bkimage", QString(QLatin1String(row.background)));
    }
}

void CTopWnd::EnableSave(bool enable) {
    if (auto* save = Find<QWidget>(QStringLiteral("btnSave"))) save->setEnabled(enable);
}

void CTopWnd::OnNotify(const Notify& notify) {
    for (const SectionRow& row : Rows) {
        if (notify.type != u"selectchanged" || notify.name != QLatin1String(row.control)) continue;
        CountClick(QLatin1String(row.clickCode));
        ShowSection(row.section);
        m_frame.ChooseSection(row.section);
        return;
    }
    if (notify.type != u"click") return;
    if (notify.name == u"btnOpen") m_frame.OnOpenButton();
    if (notify.name == u"btnSave") m_frame.RunSaveCommand();
    if (notify.name == u"btnStart") m_frame.ShowWelcome();
    if (notify.name == u"btnSetting") m_frame.ShowSettings(qobject_cast<QAbstractButton*>(notify.sender));
    if (notify.name == u"btnAdjust") m_frame.ShowFeedback();
}
