// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMouthColorPanel.h"

#include "CChunCaiShowWnd.h"

namespace {

constexpr QRgb Rgb(int red, int green, int blue) {
    return 0xFF000000u | static_cast<QRgb>(red) << 16 | static_cast<QRgb>(green) << 8 | static_cast<QRgb>(blue);
}

PaletteFacts Palette() {
    return {"BtnMouthColor",
            "BtnMouthColorVal",
            {{Rgb(208, 66, 64), Rgb(189, 86, 116), Rgb(193, 67, 79), Rgb(255, 61, 150), Rgb(219, 64, 78),
              Rgb(171, 53, 53), Rgb(202, 69, 116), Rgb(156, 61, 67), Rgb(173, 59, 111), Rgb(169, 39, 87)},
             {Rgb(174, 86, 46), Rgb(236, 118, 80), Rgb(255, 147, 49), Rgb(225, 150, 108), Rgb(235, 164, 108),
              Rgb(221, 114, 94), Rgb(255, 182, 173), Rgb(202, 145, 138), Rgb(178, 129, 132), Rgb(196, 124, 110)},
             {Rgb(230, 61, 94), Rgb(255, 114, 126), Rgb(238, 93, 150), Rgb(255, 118, 160), Rgb(255, 139, 152),
              Rgb(255, 80, 87), Rgb(235, 92, 120), Rgb(255, 144, 150), Rgb(234, 117, 135), Rgb(222, 106, 109)}},
            "bg_mouthcolor",
            "ConMouthColors",
            "ConMouthSePan",
            "TextMouthColorVal"};
}

}  // namespace

CMouthColorPanel::CMouthColorPanel(ToolHost& host, QWidget* parent)
    : CBrushPanel(host, parent), m_palette(Palette(), [this](const QColor& color) { GiveColor(color); }) {
    SetSliders(
        {PenSlider("SliderMouthColorPenSize", "TextMouthColorPenSizeVal"),
         {"SliderMouthColorAlpha", "TextMouthColorAlphaVal", Unit::Percent,
          [this](int value) { Canvas()->DragStrength(value); }, [this](int value) { Canvas()->SetStrength(value); },
          [this] { return Canvas()->Strength(); }},
         {"SliderMouthColorBright", "TextMouthColorBrightVal", Unit::Percent,
          [this](int value) { Canvas()->DragBrightness(value); }, [this](int value) { Canvas()->SetBrightness(value); },
          [this] { return Canvas()->Logic().Brightness(); }}});
    SetErase("BtnMouthColorErase", "TextMouthColorPenSize", "TextMouthColorEraseSize");
    Create(QLatin1String(LipTool.skin));
}

CPenWnd* CMouthColorPanel::Brush() const {
    return CanvasOf<CChunCaiShowWnd>();
}

CChunCaiShowWnd* CMouthColorPanel::Canvas() const {
    return CanvasOf<CChunCaiShowWnd>();
}

QWidget* CMouthColorPanel::CreateControl(const QString& className, QWidget* parent, const QString&) {
    return ColorPalette::MakeControl(className, parent);
}

void CMouthColorPanel::GiveColor(const QColor& color) {
    if (auto* canvas = CanvasOf<CChunCaiShowWnd>()) canvas->SetColor(color.red(), color.green(), color.blue());
}
