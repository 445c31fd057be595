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

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
};

// The beauty tabs that hold more than one tool: a button for each over the list of their panels.

// Skin: tone, smoothing, spots.
class CMeiRongPiFu : public CSectionPanel {
    Q_OBJECT
  public:
    CMeiRongPiFu(QWidget* parent, const ToolTable& tools, ToolHost& host);
};

// Eyes: enlarging, dark circles, colour, red eye.
class CMeiRongEyes : public CSectionPanel {
    Q_OBJECT
  public:
    CMeiRongEyes(QWidget* parent, const ToolTable& tools, ToolHost& host);
};

// Mouth: lip colour, teeth.
class CMeiRongMouth : public CSectionPanel {
    Q_OBJECT
  public:
    CMeiRongMouth(QWidget* parent, const ToolTable& tools, ToolHost& host);
};
