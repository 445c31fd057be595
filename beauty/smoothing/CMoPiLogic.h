// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DirectBrushLogic.h"

inline constexpr ToolFacts SmoothTool{
    10, SectionBeauty, "BtnPiFu", "BtnMoPi", "PiFuMoPiLayout", "PiFu_MoPi.xml", "ids_mopi", "888040202"};

// Skin smoothing: paints the smoothed picture over it.
class CMoPiLogic : public DirectBrushLogic {
  public:
    explicit CMoPiLogic(CHistoryManager& history);

    // In tenths of the blur's sigma, 0 to 50, for the strokes that follow. False, and nothing changed, for the present
    // value, without a picture, and when the sink stopped it.
    bool SetStrength(int value, CObjProgress* progress);
    int Strength() const { return m_strength; }

  protected:
    void Process(Bitmap& picture, const ProgressSpan& span) const override;
    std::function<void()> RememberValues() override {
        return [this, strength = m_strength] { m_strength = strength; };
    }

  private:
    int m_strength = 10;
};
