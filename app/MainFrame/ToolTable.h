// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>
#include <vector>

#include "ToolFacts.h"

class CBaseWnd;
class CToolPanel;
class QWidget;
class ToolHost;

// A tool joins the program by one row here; no other code switches on its number.
struct ToolRow {
    ToolFacts facts{};
    // Makes the canvas as a child of `parent`, which owns it. A null result leaves the present tool.
    std::function<CBaseWnd*(QWidget* parent, ToolHost& host)> makeCanvas;
    // Makes the tool's panel as a child of `parent`, which owns it. Tools of one page share the panel of the first.
    std::function<CToolPanel*(QWidget* parent, ToolHost& host)> makePanel;
};

class ToolTable {
  public:
    explicit ToolTable(std::vector<ToolRow> rows) : m_rows(std::move(rows)) {}

    // The row of a tool; null for one that this version does not have.
    const ToolRow* Row(int number) const;
    const std::vector<ToolRow>& Rows() const { return m_rows; }

    // The section that a tool lies in; the basic one for a tool that there is not.
    int SectionOf(int number) const;
    // The tool with which a section begins, the lowest number; 0 for a section without tools.
    int FirstOf(int section) const;
    // The tools behind a tab of a section's panel, or the one behind a button among them; in ascending order.
    std::vector<int> Behind(const QString& button) const;

  private:
    std::vector<ToolRow> m_rows;
};

// The tools of this version.
ToolTable BuiltInTools();
