// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEyesBianSePanel.h"

#include "CYanJingBSShowWnd.h"

namespace {

constexpr QRgb Rgb(int red, int green, int blue) {
    return 0xFF000000u | static_cast<QRgb>(red) << 16 | static_cast<QRgb>(green) << 8 | static_cast<QRgb>(blue);
}

PaletteFacts Palette() {
    return {"",
            "BtnEyesColor",
            {{Rgb(178, 98, 34), Rgb(200, 130, 93), Rgb(255, 196, 70), Rgb(89, 205, 54), Rgb(44, 138, 255),
              Rgb(196, 117, 233), Rgb(255, 79, 187), Rgb(243, 72, 88), Rgb(158, 161, 184), Rgb(248, 129, 99)}},
            "",
            "ConEyesColors",
            "ConEyesSePan",
            "TextEyesColorVal"};
}

}  // namespace

CEyesBianSePanel::CEyesBianSePanel(ToolHost& host, QWidget* parent)
    : CBrushPanel(host, parent), m_palette(Palette(), [this](const QColor& color) { GiveColor(color); }) {
    SetSliders({PenSlider("SliderEyesColorPenSize", "TextEyesColorPenSizeVal"),
                {"SliderEyesColorLiDu", "TextEyesColorLiDuVal", Unit::Percent,
                 [this](int value) { Canvas()->DragStrength(value); },
                 [this](int value) { Canvas()->SetStrength(value); }, [this] { return Canvas()->Strength(); }}});
    SetErase("BtnEyesColorErase", "TextEyesColorPenSize", "TextEyesColorEraseSize");
    Create(QLatin1String(EyeColorTool.skin));
}

CPenWnd* CEyesBianSePanel::Brush() const {
    return CanvasOf<CYanJingBSShowWnd>();
}

CYanJingBSShowWnd* CEyesBianSePanel::Canvas() const {
    return CanvasOf<CYanJingBSShowWnd>();
}

// A move in the history may have brought another colour.
void CEyesBianSePanel::ShowChoices() {
    if (const QColor color = QColor::fromRgb(Canvas()->Logic().Color()); color != m_palette.Color())
        m_palette.Show(color);
}

QWidget* CEyesBianSePanel::CreateControl(const QString& className, QWidget* parent, const QString&) {
    return ColorPalette::MakeControl(className, parent);
}

void CEyesBianSePanel::GiveColor(const QColor& color) {
    if (auto* canvas = CanvasOf<CYanJingBSShowWnd>()) canvas->SetColor(color.red(), color.green(), color.blue());
}
