// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMRYiJianMeiYanLogic.h"

#include "BeautyLooks.h"

CMRYiJianMeiYanLogic::CMRYiJianMeiYanLogic(CHistoryManager& history)
    : LookLogic(BeautyTool, QStringLiteral("BeautyRes.bin"), history), m_folder(BeautyLooks::Folder()) {}

AutoBeautifyParams CMRYiJianMeiYanLogic::Params() const {
    AutoBeautifyParams params;
    params.preset = Preset();
    params.Alpha = Alpha();
    if (HasLook()) params.path = LookFile();
    return params;
}

bool CMRYiJianMeiYanLogic::Exists(int look) const {
    return BeautyLooks::Exists(look);
}

bool CMRYiJianMeiYanLogic::Compute(Bitmap& picture, int look, const ProgressSpan& span) const {
    return BeautyLooks::Run(picture, look, m_folder, span);
}

// A record without a look is the picture without one.
LookLogic::Recorded CMRYiJianMeiYanLogic::ReadRecord(const CUndoRedoParams& record) const {
    const auto* params = RecordAs<AutoBeautifyParams>(record);
    if (params->preset == 0) return {};
    return {params->preset, params->Alpha};
}
