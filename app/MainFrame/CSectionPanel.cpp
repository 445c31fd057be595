// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSectionPanel.h"

#include <algorithm>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QStackedWidget>

#include "ClickCount.h"
#include "Language.h"
#include "ToolHost.h"
#include "ToolTable.h"

void CSectionPanel::Build(const QString& skin, const QString& stack, std::vector<SectionTab> tabs) {
    m_tabs = std::move(tabs);
    m_stack = stack;
    Create(skin);
    for (SectionTab& tab : m_tabs) {
        tab.tools = m_tools.Behind(tab.button);
        tab.last = tab.tools.empty() ? 0 : tab.tools.front();
        auto* button = Find<QAbstractButton>(tab.button);
        if (!button || !tab.tools.empty()) continue;
        button->setEnabled(false);
        button->setToolTip(LanguageText(QStringLiteral("ids_notyet")));
    }
    ResetTabs();
}

void CSectionPanel::ResetTabs() {
    if (!m_tabs.empty()) ShowPage(m_tabs.front());
    for (CSectionPanel* inner : findChildren<CSectionPanel*>()) inner->ResetTabs();
}

void CSectionPanel::ShowTool(int tool) {
    for (CSectionPanel* inner : findChildren<CSectionPanel*>()) inner->ShowTool(tool);
    NoteTool(tool);
    for (const SectionTab& tab : m_tabs)
        if (tab.last == tool) return ShowPage(tab);
}

void CSectionPanel::NoteTool(int tool) {
    for (SectionTab& tab : m_tabs)
        if (std::find(tab.tools.begin(), tab.tools.end(), tool) != tab.tools.end()) tab.last = tool;
    for (QWidget* widget = parentWidget(); widget; widget = widget->parentWidget())
        if (auto* outer = qobject_cast<CSectionPanel*>(widget)) return outer->NoteTool(tool);
}

void CSectionPanel::ShowPage(const SectionTab& tab) {
    if (auto* button = Find<QAbstractButton>(tab.button)) button->setChecked(true);
    if (auto* stack = Find<QStackedWidget>(m_stack)) stack->setCurrentIndex(tab.page);
}

void CSectionPanel::Enter(const SectionTab& tab) {
    const bool active = std::find(tab.tools.begin(), tab.tools.end(), m_host.Tool()) != tab.tools.end();
    ShowPage(tab);
    if (!active) m_host.SwitchTool(tab.last);
    NoteTool(m_host.Tool());
    for (CSectionPanel* inner : findChildren<CSectionPanel*>()) inner->ShowTool(m_host.Tool());
}

void CSectionPanel::OnNotify(const Notify& notify) {
    if (notify.type != u"click") return;
    for (const SectionTab& tab : m_tabs) {
        if (notify.name != tab.button) continue;
        if (!tab.clickCode.isEmpty()) CountClick(tab.clickCode);
        return Enter(tab);
    }
}
