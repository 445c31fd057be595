// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMoPiLogic.h"

#include "PC_Dsp.h"

CMoPiLogic::CMoPiLogic(CHistoryManager& history)
    : DirectBrushLogic(SmoothTool, PC_Dsp::Circle_Gradient_Alpha, 60, history) {}

bool CMoPiLogic::SetStrength(int value, CObjProgress* progress) {
    return value != m_strength && ProcessAnew([&] { m_strength = value; }, progress);
}

void CMoPiLogic::Process(Bitmap& picture, const ProgressSpan& span) const {
    const float sigma = static_cast<float>(m_strength * 0.1);
    PC_Dsp::CannyDericheBlur(picture, sigma, sigma, nullptr, span.sink, span.start, span.end);
}
