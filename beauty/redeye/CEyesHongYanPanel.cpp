// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEyesHongYanPanel.h"

#include "CXiaoChuHYWnd.h"

CEyesHongYanPanel::CEyesHongYanPanel(ToolHost& host, QWidget* parent) : CBrushPanel(host, parent) {
    SetSliders({PenSlider("SliderEyesHongYanPenSize", "TextEyesHongYanPenSizeVal")});
    Create(QLatin1String(RedEyeTool.skin));
}

CPenWnd* CEyesHongYanPanel::Brush() const {
    return CanvasOf<CXiaoChuHYWnd>();
}
