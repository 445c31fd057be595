// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEyesHeiYanPanel.h"

#include "CXiaoChuHYQShowWnd.h"

CEyesHeiYanPanel::CEyesHeiYanPanel(ToolHost& host, QWidget* parent) : CBrushPanel(host, parent) {
    SetSliders({PenSlider("SliderEyesHeiYanPenSize", "TextEyesHeiYanPenSizeVal"),
                {"SliderEyesHeiYanLiDu",
                 "TextEyesHeiYanLiDuVal",
                 Unit::Percent,
                 {},
                 [this](int value) { CanvasOf<CXiaoChuHYQShowWnd>()->SetStrength(value / 10); },
                 {}}});
    SetErase("BtnHeiYanErase", "TextEyesHeiYanPenSize", "TextEyesHeiYanEraseSize");
    Create(QLatin1String(CircleTool.skin));
}

CPenWnd* CEyesHeiYanPanel::Brush() const {
    return CanvasOf<CXiaoChuHYQShowWnd>();
}
