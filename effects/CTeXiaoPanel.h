// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CLookListPanel.h"

// The panel of the effect tool: the effects of the catalogue in their categories, and the user's own looks.
class CTeXiaoPanel : public CLookListPanel {
    Q_OBJECT

  public:
    CTeXiaoPanel(ToolHost& host, QWidget* parent);
};
