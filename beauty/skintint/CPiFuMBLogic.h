// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DirectBrushLogic.h"

inline constexpr ToolFacts TintTool{
    9, SectionBeauty, "BtnPiFu", "BtnFuSe", "PiFuFuSeLayout", "PiFu_FuSe.xml", "ids_pifumeibai", "888040201"};

// Skin tone: paints the picture tinted towards a colour over it.
class CPiFuMBLogic : public DirectBrushLogic {
  public:
    explicit CPiFuMBLogic(CHistoryManager& history);

    // The tone of the strokes that follow. False, and nothing changed, for the present one, without a picture, and when
    // the sink stopped it.
    bool SetColor(int red, int green, int blue, CObjProgress* progress);

  protected:
    void Process(Bitmap& picture, const ProgressSpan& span) const override;
    std::function<void()> RememberValues() override {
        return [this, tone = m_tone] { m_tone = tone; };
    }

  private:
    struct Tone {
        int red = 252, green = 203, blue = 186;
        bool operator==(const Tone&) const = default;
    };
    Tone m_tone;
};
