// SPDX-License-Identifier: GPL-3.0-or-later
#include "CYaChiMBLogic.h"

#include "PC_Dsp.h"
#include "TintParams.h"

CYaChiMBLogic::CYaChiMBLogic(CHistoryManager& history)
    : MaskBrushLogic(TeethTool, {"TeethMask.bin", "YaChitmp.bin"}, PC_Dsp::Circle_Gradient_Alpha2Eye, 60, history) {
    SetDefaults({.strength = 0.9});
}

bool CYaChiMBLogic::OwnsRecord(int type) const {
    return type == TeethWhiteParams::Type;
}

void CYaChiMBLogic::Process(Bitmap& picture, const ProgressSpan& span) const {
    PC_Dsp::MeiBaiYaChi(picture.MutablePixels(), picture.Width(), picture.Height(), span.sink, span.start, span.end);
}

std::unique_ptr<CUndoRedoParams> CYaChiMBLogic::MakeRecord(const QString& maskFile) const {
    auto record = std::make_unique<TeethWhiteParams>();
    record->path = maskFile;
    record->strength = StrengthPercent();
    return record;
}

MaskBrushLogic::Recorded CYaChiMBLogic::ReadRecord(const CUndoRedoParams& record) const {
    const auto& teeth = static_cast<const TeethWhiteParams&>(record);
    Recorded recorded{CurrentValues(), teeth.path};
    recorded.values.strength = teeth.strength * 0.01;
    return recorded;
}
