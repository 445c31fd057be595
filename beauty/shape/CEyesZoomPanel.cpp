// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEyesZoomPanel.h"

#include "CYanJingFDWnd.h"

CEyesZoomPanel::CEyesZoomPanel(ToolHost& host, QWidget* parent) : CWarpPanel(host, parent) {
    SetSliders({PenSlider("SliderEyesZoomPenSize", "TextEyesZoomPenSizeVal"),
                StrengthSlider("SliderEyesZoomLiDu", "TextEyesZoomLiDuVal")});
    Create(QLatin1String(EnlargeTool.skin));
}

CWarpWnd* CEyesZoomPanel::Brush() const {
    return CanvasOf<CYanJingFDWnd>();
}
