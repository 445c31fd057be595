// SPDX-License-Identifier: GPL-3.0-or-later
#include "CYanJingBSLogic.h"

#include <tuple>

#include "PC_Dsp.h"
#include "TintParams.h"

CYanJingBSLogic::CYanJingBSLogic(CHistoryManager& history)
    : MaskBrushLogic(EyeColorTool, {"YJBSMask.bin", "YJBStmp.bin"}, PC_Dsp::Circle_Gradient_Alpha2Eye, 60, history) {
    SetDefaults({.strength = 0.8, .red = 177, .green = 95, .blue = 29});
}

bool CYanJingBSLogic::OwnsRecord(int type) const {
    return type == EyeColorParams::Type;
}

bool CYanJingBSLogic::SetColor(int red, int green, int blue, CObjProgress* progress) {
    Values values = CurrentValues();
    if (std::tie(values.red, values.green, values.blue) == std::tie(red, green, blue)) return false;
    std::tie(values.red, values.green, values.blue) = std::tie(red, green, blue);
    return ProcessAnew(values, progress);
}

std::uint32_t CYanJingBSLogic::Color() const {
    const Values& v = CurrentValues();
    return 0xFF000000u | static_cast<std::uint32_t>(v.red << 16 | v.green << 8 | v.blue);
}

void CYanJingBSLogic::Process(Bitmap& picture, const ProgressSpan& span) const {
    const Values& v = CurrentValues();
    PC_Dsp::Color_Channel_Composite(picture, v.red, v.green, v.blue, span.sink, span.start, span.end);
}

std::unique_ptr<CUndoRedoParams> CYanJingBSLogic::MakeRecord(const QString& maskFile) const {
    const Values& v = CurrentValues();
    auto record = std::make_unique<EyeColorParams>();
    record->path = maskFile;
    record->strength = StrengthPercent();
    std::tie(record->red, record->green, record->blue) = std::tie(v.red, v.green, v.blue);
    return record;
}

MaskBrushLogic::Recorded CYanJingBSLogic::ReadRecord(const CUndoRedoParams& record) const {
    const auto& eye = static_cast<const EyeColorParams&>(record);
    Recorded recorded{CurrentValues(), eye.path};
    recorded.values.strength = eye.strength * 0.01;
    std::tie(recorded.values.red, recorded.values.green, recorded.values.blue) = std::tie(eye.red, eye.green, eye.blue);
    return recorded;
}
