// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "CXMLWnd.h"

class ToolHost;
class ToolTable;

// A tab of a section's panel: its button, its page, and the click code that it counts. The tools behind it say so in
// their rows.
struct SectionTab {
    QString button;
    int page = 0;
    QString clickCode;
    // In ascending order; filled from the table.
    std::vector<int> tools{};
    // The one that the tab enters: that on show when the tab was last left, at first the lowest. 0 for none.
    int last = 0;
};

// Base of the left column's section panels: a row of tabs over a stack of pages. A tab leaves the present tool, shows
// its page and enters its tool; a tab whose tools this version does not have is disabled and says so. A page may hold
// a section panel of its own, whose tabs follow.
class CSectionPanel : public CXMLWnd {
    Q_OBJECT

  public:
    // Back to the first tab, without entering a tool.
    void ResetTabs();
    // Shows the tab that holds `tool`; nothing when none does.
    void ShowTool(int tool);

  protected:
    CSectionPanel(QWidget* parent, const ToolTable& tools, ToolHost& host)
        : CXMLWnd(parent), m_tools(tools), m_host(host) {}

    // Loads the skin; `stack` is the name of its QStackedWidget.
    void Build(const QString& skin, const QString& stack, std::vector<SectionTab> tabs);
    void OnNotify(const Notify& notify) override;

    const ToolTable& m_tools;
    ToolHost& m_host;

  private:
    void Enter(const SectionTab& tab);
    void ShowPage(const SectionTab& tab);
    // A tool was entered: the tabs that it lies behind, here and in the panel around this one, remember it.
    void NoteTool(int tool);

    std::vector<SectionTab> m_tabs;
    QString m_stack;
};
