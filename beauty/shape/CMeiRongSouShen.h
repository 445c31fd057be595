// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CWarpPanel.h"

// The panel of slimming. Nothing is erased here; its button swaps two ways to name the brush's size.
class CMeiRongSouShen : public CWarpPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel.
    explicit CMeiRongSouShen(ToolHost& host, QWidget* parent = nullptr);

  protected:
    CWarpWnd* Brush() const override;
};
