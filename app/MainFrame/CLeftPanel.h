// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "CXMLWnd.h"
#include "FrameMessages.h"

class CSectionPanel;
class CToolPanel;
class ToolHost;
class ToolTable;
struct ToolRow;

// The left column: a page for each section, and in them the tools' panels. A panel is made when its page is first shown
// or its tool first spoken to, so that a start pays for one panel only; pages keep their controls while hidden.
class CLeftPanel : public CXMLWnd {
    Q_OBJECT

  public:
    CLeftPanel(QWidget* parent, const ToolTable& tools, ToolHost& host);

    // Shows a section's page; `reset` takes its tabs back to the first.
    void ShowSection(int section, bool reset);
    // The panel of a tool; null for one without a panel. Owned by its page.
    CToolPanel* Panel(int tool);
    // Hands a message to the panel of the tool; without one it is dropped.
    void Deliver(int tool, const FrameMessage& message);

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    bool eventFilter(QObject* page, QEvent* event) override;

  private:
    QWidget* PageOf(const ToolRow& row) const;
    CToolPanel* PanelOf(const ToolRow& row, QWidget& page);

    const ToolTable& m_tools;
    ToolHost& m_host;
    std::map<int, CSectionPanel*> m_sections;
};
