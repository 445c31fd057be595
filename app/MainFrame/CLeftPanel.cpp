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
    for (const ToolRow& row : m_tools.Rows())
        if (QWidget* page = PageOf(row)) page->installEventFilter(this);
}

QWidget* CLeftPanel::CreateControl(const QString&, QWidget* parent, const QString& name) {
    CSectionPanel* panel = nullptr;
    if (name == u"LeftLayout_JiChu") panel = m_sections[SectionBasic] = new CJiChuPanel(parent, m_tools, m_host);
    if (name == u"LeftLayout_MeiRong")
        panel = m_sections[SectionBeauty] = new CLeftPanelMeiRong(parent, m_tools, m_host);
    return panel;
}

QWidget* CLeftPanel::PageOf(const ToolRow& row) const {
    return row.makePanel ? Find<QWidget>(QLatin1String(row.facts.page)) : nullptr;
}

bool CLeftPanel::eventFilter(QObject* page, QEvent* event) {
    if (event->type() == QEvent::Show)
        for (const ToolRow& row : m_tools.Rows())
            if (page->objectName() == QLatin1String(row.facts.page)) PanelOf(row, *static_cast<QWidget*>(page));
    return CXMLWnd::eventFilter(page, event);
}

// Tools of one page share its panel.
CToolPanel* CLeftPanel::PanelOf(const ToolRow& row, QWidget& page) {
    if (auto* panel = page.findChild<CToolPanel*>(QString(), Qt::FindDirectChildrenOnly)) return panel;
    CToolPanel* panel = row.makePanel(&page, m_host);
    if (!page.layout()) {
        auto* layout = new QVBoxLayout(&page);
        layout->setContentsMargins(0, 0, 0, 0);
    }
    page.layout()->addWidget(panel);
    panel->show();  // a page on show does not do it by itself
    return panel;
}

void CLeftPanel::ShowSection(int section, bool reset) {
    if (auto* stack = Find<QStackedWidget>(QStringLiteral("TabLayoutLeft"))) stack->setCurrentIndex(section - 1);
    const auto panel = m_sections.find(section);
    if (reset && panel != m_sections.end()) panel->second->ResetTabs();
}

CToolPanel* CLeftPanel::Panel(int tool) {
    const ToolRow* row = m_tools.Row(tool);
    QWidget* page = row ? PageOf(*row) : nullptr;
    return page ? PanelOf(*row, *page) : nullptr;
}

void CLeftPanel::Deliver(int tool, const FrameMessage& message) {
    if (CToolPanel* panel = Panel(tool)) panel->OnFrameMessage(message);
}
