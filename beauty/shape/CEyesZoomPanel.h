// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CWarpPanel.h"

// The panel of eye enlarging.
class CEyesZoomPanel : public CWarpPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel.
    explicit CEyesZoomPanel(ToolHost& host, QWidget* parent = nullptr);

  protected:
    CWarpWnd* Brush() const override;
};
