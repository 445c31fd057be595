// SPDX-License-Identifier: GPL-3.0-or-later
#include "CLeftPanel.h"

#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>

#include "CToolPanel.h"
#include "SectionPanels.h"
#include "ToolTable.h"

CLeftPanel::CLeftPanel(QWidget* parent, const ToolTable& tools, ToolHost& host)
    : CXMLWnd(parent), m_tools(tools), m_host(host) {
    Create(QStringLiteral("LeftPanel.xml"));
    MakeToolPanels();
}

QWidget* CLeftPanel::CreateControl(const QString&, QWidget* parent, const QString& name) {
    CSectionPanel* panel = nullptr;
    if (name == u"LeftLayout_JiChu") panel = m_sections[SectionBasic] = new CJiChuPanel(parent, m_tools, m_host);
    if (name == u"LeftLayout_MeiRong")
        panel = m_sections[SectionBeauty] = new CLeftPanelMeiRong(parent, m_tools, m_host);
    return panel;
}

void CLeftPanel::MakeToolPanels() {
    for (const ToolRow& row : m_tools.Rows()) {
        auto* page = row.makePanel ? Find<QWidget>(QLatin1String(row.facts.page)) : nullptr;
        if (!page) continue;
        if (auto* shared = page->findChild<CToolPanel*>(QString(), Qt::FindDirectChildrenOnly)) {
            m_panels[row.facts.number] = shared;
            continue;
        }
        CToolPanel* panel = row.makePanel(page, m_host);
        if (!page->layout()) {
            auto* layout = new QVBoxLayout(page);
            layout->setContentsMargins(0, 0, 0, 0);
        }
        page->layout()->addWidget(panel);
        m_panels[row.facts.number] = panel;
    }
}

void CLeftPanel::ShowSection(int section, bool reset) {
    if (auto* stack = Find<QStackedWidget>(QStringLiteral("TabLayoutLeft"))) stack->setCurrentIndex(section - 1);
    const auto panel = m_sections.find(section);
    if (reset && panel != m_sections.end()) panel->second->ResetTabs();
}

CToolPanel* CLeftPanel::Panel(int tool) const {
    const auto panel = m_panels.find(tool);
    return panel == m_panels.end() ? nullptr : panel->second;
}

void CLeftPanel::Deliver(int tool, const FrameMessage& message) {
    if (CToolPanel* panel = Panel(tool)) panel->OnFrameMessage(message);
}
