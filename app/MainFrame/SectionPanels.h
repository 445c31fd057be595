// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CSectionPanel.h"

// Basic editing: adjust, edit (crop, rotate, resize), text, frames.
class CJiChuPanel : public CSectionPanel {
    Q_OBJECT
  public:
    CJiChuPanel(QWidget* parent, const ToolTable& tools, ToolHost& host);

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
};

// The edit tab's own three: crop, rotate, resize.
class CBasePanelEdit : public CSectionPanel {
    Q_OBJECT
  public:
    CBasePanelEdit(QWidget* parent, const ToolTable& tools, ToolHost& host);
};

// Beauty: looks, skin, eyes, slimming, mouth.
class CLeftPanelMeiRong : public CSectionPanel {
    Q_OBJECT
  public:
    CLeftPanelMeiRong(QWidget* parent, const ToolTable& tools, ToolHost& host);
};
