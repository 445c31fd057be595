// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushPanel.h"

class CYaChiMBWnd;

// The panel of teeth whitening.
class CMouthBeautyPanel : public CBrushPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel.
    explicit CMouthBeautyPanel(ToolHost& host, QWidget* parent = nullptr);

  protected:
    CPenWnd* Brush() const override;

  private:
    CYaChiMBWnd* Canvas() const;
};
