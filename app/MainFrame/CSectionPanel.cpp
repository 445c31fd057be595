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
    for (const SectionTab& tab : m_tabs) {
        auto* button = Find<QAbstractButton>(tab.button);
        if (!button || FirstBuilt(tab) != 0) continue;
        button->setEnabled(false);
        button->setToolTip(LanguageText(QStringLiteral("ids_notyet")));
    }
    ResetTabs();
}

int CSectionPanel::FirstBuilt(const SectionTab& tab) const {
    const auto built = std::find_if(tab.tools.begin(), tab.tools.end(), [&](int tool) { return m_tools.Has(tool); });
    return built == tab.tools.end() ? 0 : *built;
}

void CSectionPanel::ResetTabs() {
    if (!m_tabs.empty()) ShowPage(m_tabs.front());
    for (CSectionPanel* inner : findChildren<CSectionPanel*>()) inner->ResetTabs();
}

void CSectionPanel::ShowTool(int tool) {
    for (CSectionPanel* inner : findChildren<CSectionPanel*>()) inner->ShowTool(tool);
    for (const SectionTab& tab : m_tabs)
        if (std::find(tab.tools.begin(), tab.tools.end(), tool) != tab.tools.end()) return ShowPage(tab);
}

void CSectionPanel::ShowPage(const SectionTab& tab) {
    if (auto* button = Find<QAbstractButton>(tab.button)) button->setChecked(true);
    if (auto* stack = Find<QStackedWidget>(m_stack)) stack->setCurrentIndex(tab.page);
}

void CSectionPanel::Enter(const SectionTab& tab) {
    const bool active = std::find(tab.tools.begin(), tab.tools.end(), m_host.Tool()) != tab.tools.end();
    ShowPage(tab);
    if (!active) m_host.SwitchTool(FirstBuilt(tab));
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
