// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMouthBeautyPanel.h"

#include "CYaChiMBWnd.h"

CMouthBeautyPanel::CMouthBeautyPanel(ToolHost& host, QWidget* parent) : CBrushPanel(host, parent) {
    SetSliders({PenSlider("SliderMouthBeautyPenSize", "TextMouthBeautyPenSizeVal"),
                {"SliderMouthBeautyAlpha", "TextMouthBeautyAlphaVal", Unit::Percent,
                 [this](int value) { Canvas()->DragStrength(value); },
                 [this](int value) { Canvas()->SetStrength(value); }, [this] { return Canvas()->Strength(); }}});
    SetErase("BtnMouthBeautyErase", "TextMouthBeautyPenSize", "TextMouthBeautyEraseSize");
    Create(QLatin1String(TeethTool.skin));
}

CPenWnd* CMouthBeautyPanel::Brush() const {
    return CanvasOf<CYaChiMBWnd>();
}

CYaChiMBWnd* CMouthBeautyPanel::Canvas() const {
    return CanvasOf<CYaChiMBWnd>();
}
