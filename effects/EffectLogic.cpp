// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectLogic.h"

#include "EffectCatalogue.h"

CEffectLogic::CEffectLogic(CHistoryManager& history)
    : BlendTool(QStringLiteral("ids_texiao"), QStringLiteral("EffectRes.bin"), history),
      m_resourceDir(EffectResourceDir()) {}

bool CEffectLogic::ApplyEffect(int index, CObjProgress* progress) {
    if (!HasEffect(index)) return false;
    const EffectParams before = m_params;
    m_params.EffectIndex = index;
    if (RunLook(progress)) return true;
    m_params = before;
    return false;
}

bool CEffectLogic::RenderThumbnail(Bitmap* thumbnail, int index) {
    return thumbnail && RunEffect(*thumbnail, index, EffectResourceDir());
}

EffectParams CEffectLogic::Params() const {
    EffectParams params = m_params;
    params.Alpha = Alpha();
    if (HasLook()) params.path = LookFile();
    return params;
}

QString CEffectLogic::LookId() const {
    return m_params.EffectIndex == NoEffect ? QString() : QString::number(m_params.EffectIndex);
}

bool CEffectLogic::ComputeLook(Bitmap& picture, const ProgressSpan& span) const {
    return RunEffect(picture, m_params.EffectIndex, m_resourceDir, span);
}

std::unique_ptr<CUndoRedoParams> CEffectLogic::MakeRecord() const {
    return std::make_unique<EffectParams>(Params());
}

int CEffectLogic::TakeRecord(const CUndoRedoParams& record) {
    if (const auto* params = RecordAs<EffectParams>(record)) m_params = *params;
    return m_params.Alpha;
}
