// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPiFuQuBanPanel.h"

#include "CQuDouQBShowWnd.h"

CPiFuQuBanPanel::CPiFuQuBanPanel(ToolHost& host, QWidget* parent) : CBrushPanel(host, parent) {
    SetSliders({PenSlider("SliderQuBanPenSize", "TextQuBanPenSizeVal")});
    Create(QLatin1String(SpotTool.skin));
}

CPenWnd* CPiFuQuBanPanel::Brush() const {
    return CanvasOf<CQuDouQBShowWnd>();
}
