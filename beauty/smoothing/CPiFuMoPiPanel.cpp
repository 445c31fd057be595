// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPiFuMoPiPanel.h"

#include "CMoPiWnd.h"

CPiFuMoPiPanel::CPiFuMoPiPanel(ToolHost& host, QWidget* parent) : CBrushPanel(host, parent) {
    SetSliders({PenSlider("SliderMoPiPenSize", "TextMoPiPenSizeVal"),
                {"SliderMoPiLiDu",
                 "TextMoPiLiDuVal",
                 Unit::Percent,
                 {},
                 [this](int value) { Canvas()->SetStrength(value); },
                 [this] { return Canvas()->Logic().Strength(); }}});
    SetErase("BtnMoPiErase", "TextMoPiPenSize", "TextMoPiEraseSize");
    Create(QLatin1String(SmoothTool.skin));
}

CPenWnd* CPiFuMoPiPanel::Brush() const {
    return CanvasOf<CMoPiWnd>();
}

CMoPiWnd* CPiFuMoPiPanel::Canvas() const {
    return CanvasOf<CMoPiWnd>();
}
