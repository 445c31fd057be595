// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>
#include <vector>

class CBaseWnd;
class CToolPanel;
class QWidget;
class ToolHost;

// A tool joins the program by one row here; no other code switches on its number.
struct ToolRow {
    int number = 0;
    // Makes the canvas as a child of `parent`, which owns it. A null result leaves the present tool.
    std::function<CBaseWnd*(QWidget* parent, ToolHost& host)> makeCanvas;
    // Makes the tool's panel as a child of `parent`, which owns it; not set for a tool without a panel of its own.
    std::function<CToolPanel*(QWidget* parent, ToolHost& host)> makePanel;
    // Name of the layout in the left column that the panel goes into.
    QString page;
};

class ToolTable {
  public:
    explicit ToolTable(std::vector<ToolRow> rows) : m_rows(std::move(rows)) {}

    // The row of a tool; null for one that this version does not have.
    const ToolRow* Row(int number) const;
    bool Has(int number) const { return Row(number) != nullptr; }
    const std::vector<ToolRow>& Rows() const { return m_rows; }

  private:
    std::vector<ToolRow> m_rows;
};

// The tools of this version.
ToolTable BuiltInTools();
