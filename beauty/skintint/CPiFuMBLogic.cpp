// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPiFuMBLogic.h"

#include "PC_Dsp.h"

CPiFuMBLogic::CPiFuMBLogic(CHistoryManager& history)
    : DirectBrushLogic(TintTool, PC_Dsp::Circle_Gradient_Alpha, 60, history) {}

bool CPiFuMBLogic::SetColor(int red, int green, int blue, CObjProgress* progress) {
    const Tone tone{red, green, blue};
    return tone != m_tone && ProcessAnew([&] { m_tone = tone; }, progress);
}

void CPiFuMBLogic::Process(Bitmap& picture, const ProgressSpan& span) const {
    PC_Dsp::CompositeColor(picture, m_tone.red, m_tone.green, m_tone.blue, span.sink, span.start, span.end);
}
