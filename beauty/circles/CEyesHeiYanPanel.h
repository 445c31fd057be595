// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushPanel.h"

// The panel of the dark circles.
class CEyesHeiYanPanel : public CBrushPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel.
    explicit CEyesHeiYanPanel(ToolHost& host, QWidget* parent = nullptr);

  protected:
    CPenWnd* Brush() const override;
};
