// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMeiRongSouShen.h"

#include "CShouLianSSWnd.h"

CMeiRongSouShen::CMeiRongSouShen(ToolHost& host, QWidget* parent) : CWarpPanel(host, parent) {
    SetSliders({PenSlider("SliderSouShenPenSize", "TextSouShenPenSizeVal"),
                StrengthSlider("SliderSouShenLiDu", "TextSouShenLiDuVal")});
    SetErase("BtnSouShenErase", "TextSouShenPenSize", "TextSouShenEraseSize");
    Create(QLatin1String(SlimTool.skin));
}

CWarpWnd* CMeiRongSouShen::Brush() const {
    return CanvasOf<CShouLianSSWnd>();
}
