// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RepairLogic.h"

inline constexpr ToolFacts SpotTool{
    11, SectionBeauty, "BtnPiFu", "BtnQuBan", "PiFuQuBanLayout", "PiFu_QuBan.xml", "ids_qudouquban", "888040203"};

// Spot removal: a click marks a disc, which is filled with what the skin around would show there.
class CQuDouQBLogic : public ClickRepairLogic {
  public:
    explicit CQuDouQBLogic(CHistoryManager& history) : ClickRepairLogic(SpotTool, 40, history) {}

    // Fills the ellipse in a rectangle of the picture; right and bottom lie outside. False as Repair.
    bool MarkAndFill(int left, int top, int right, int bottom, CObjProgress* progress = nullptr);

    bool Repair(const QRect& place, CObjProgress* progress) override;
    bool IsQuick(const QRect& place) const override;

  protected:
    void ForgetAll() override;

  private:
    // Of the picture's size and without a mark between two clicks; null before the first.
    Bitmap m_mask;
};
