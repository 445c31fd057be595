// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CLookListPanel.h"

// The panel of the frame tool: a page of simple frames and one of ornate ones.
class CBasePanelFrame : public CLookListPanel {
    Q_OBJECT

  public:
    CBasePanelFrame(ToolHost& host, QWidget* parent);

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    CEffectListView* MakeList(QWidget* parent) override;
};
