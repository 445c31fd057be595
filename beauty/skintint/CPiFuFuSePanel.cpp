// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPiFuFuSePanel.h"

#include "CPiFuMBShowWnd.h"

namespace {

constexpr QRgb Rgb(int red, int green, int blue) {
    return 0xFF000000u | static_cast<QRgb>(red) << 16 | static_cast<QRgb>(green) << 8 | static_cast<QRgb>(blue);
}

PaletteFacts Palette() {
    return {"BtnPiFu",
            "BtnColor",
            {{Rgb(252, 203, 186), Rgb(255, 211, 222), Rgb(238, 184, 195), Rgb(242, 144, 160), Rgb(197, 99, 112),
              Rgb(203, 72, 90)},
             {Rgb(240, 225, 201), Rgb(222, 193, 161), Rgb(210, 174, 142), Rgb(173, 141, 114), Rgb(164, 129, 96),
              Rgb(156, 104, 73)}},
            "bk_sepan",
            "ConFuSeColors",
            "ConFuSeSePan",
            "TextColorVal"};
}

}  // namespace

CPiFuFuSePanel::CPiFuFuSePanel(ToolHost& host, QWidget* parent)
    : CBrushPanel(host, parent), m_palette(Palette(), [this](const QColor& color) { GiveColor(color); }) {
    SetSliders({PenSlider("SliderFuSePenSize", "TextFuSePenSizeVal"),
                {"SliderFuSeAlpha", "TextFuSeAlphaVal", Unit::Percent, {}, {}, {}}});
    SetErase("BtnFuSeErase", "TextFuSePenSize", "TextFuSeEraseSize");
    Create(QLatin1String(TintTool.skin));
}

CPenWnd* CPiFuFuSePanel::Brush() const {
    return CanvasOf<CPiFuMBShowWnd>();
}

QWidget* CPiFuFuSePanel::CreateControl(const QString& className, QWidget* parent, const QString&) {
    return ColorPalette::MakeControl(className, parent);
}

void CPiFuFuSePanel::GiveColor(const QColor& color) {
    if (auto* canvas = CanvasOf<CPiFuMBShowWnd>()) canvas->SetColor(color.red(), color.green(), color.blue());
}
