// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEffectLogic.h"

#include "EffectCatalogue.h"

CEffectLogic::CEffectLogic(CHistoryManager& history)
    : LookLogic(EffectTool, QStringLiteral("EffectRes.bin"), history), m_resourceDir(EffectResourceDir()) {}

bool CEffectLogic::RenderThumbnail(Bitmap* thumbnail, int index) {
    return thumbnail && RunEffect(*thumbnail, index, EffectResourceDir());
}

EffectParams CEffectLogic::Params() const {
    EffectParams params;
    params.EffectIndex = EffectIndex();
    params.Alpha = Alpha();
    if (HasLook()) params.path = LookFile();
    return params;
}

bool CEffectLogic::Exists(int look) const {
    return HasEffect(look);
}

bool CEffectLogic::Compute(Bitmap& picture, int look, const ProgressSpan& span) const {
    return RunEffect(picture, look, m_resourceDir, span);
}

LookLogic::Recorded CEffectLogic::ReadRecord(const CUndoRedoParams& record) const {
    const auto* params = RecordAs<EffectParams>(record);
    return {params->EffectIndex, params->Alpha};
}
