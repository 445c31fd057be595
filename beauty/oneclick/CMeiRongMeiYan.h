// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CLookListPanel.h"

// The panel of one-click beauty: its looks, each on a piece of the user's picture.
class CMeiRongMeiYan : public CLookListPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel.
    explicit CMeiRongMeiYan(ToolHost& host, QWidget* parent = nullptr);
};
