// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushPanel.h"

class CMoPiWnd;

// The panel of skin smoothing.
class CPiFuMoPiPanel : public CBrushPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel.
    explicit CPiFuMoPiPanel(ToolHost& host, QWidget* parent = nullptr);

  protected:
    CPenWnd* Brush() const override;

  private:
    CMoPiWnd* Canvas() const;
};
