// SPDX-License-Identifier: GPL-3.0-or-later
#include "CChunCaiLogic.h"

#include <tuple>

#include "PC_Dsp.h"
#include "TintParams.h"

CChunCaiLogic::CChunCaiLogic(CHistoryManager& history)
    : MaskBrushLogic(LipTool, {"ChunCaiMask.bin", "ChunCaitmp.bin"}, PC_Dsp::Circle_Gradient_Alpha, 40, history) {
    SetDefaults({.strength = 0.5, .red = 255});
}

bool CChunCaiLogic::OwnsRecord(int type) const {
    return type == LipTintParams::Type;
}

bool CChunCaiLogic::SetColor(int red, int green, int blue, CObjProgress* progress) {
    Values values = CurrentValues();
    if (std::tie(values.red, values.green, values.blue) == std::tie(red, green, blue)) return false;
    std::tie(values.red, values.green, values.blue) = std::tie(red, green, blue);
    return ProcessAnew(values, progress);
}

void CChunCaiLogic::SetBrightnessFull(int brightness) {
    if (brightness == Brightness() && !IsStale()) return;
    Values values = CurrentValues();
    values.brightness = brightness;
    ProcessAnew(values, nullptr);
}

void CChunCaiLogic::SetBrightnessView(int brightness) {
    Values values = CurrentValues();
    values.brightness = brightness;
    PreviewProcess(values);
}

void CChunCaiLogic::Process(Bitmap& picture, const ProgressSpan& span) const {
    const Values& v = CurrentValues();
    PC_Dsp::Color_Channel_Composite(picture, v.red, v.green, v.blue, span.sink, span.start, span.end);
    if (!span.CanContinue()) return;
    PC_Dsp::LightNew(picture.MutablePixels(), picture.Width(), picture.Height(), v.brightness, 3, nullptr, 0, 100);
}

std::unique_ptr<CUndoRedoParams> CChunCaiLogic::MakeRecord(const QString& maskFile) const {
    auto record = std::make_unique<LipTintParams>();
    record->path = maskFile;
    record->strength = StrengthPercent();
    record->brightness = Brightness();
    return record;
}

MaskBrushLogic::Recorded CChunCaiLogic::ReadRecord(const CUndoRedoParams& record) const {
    const auto& lips = static_cast<const LipTintParams&>(record);
    Recorded recorded{CurrentValues(), lips.path};
    recorded.values.strength = lips.strength * 0.01;
    recorded.values.brightness = lips.brightness;
    return recorded;
}
