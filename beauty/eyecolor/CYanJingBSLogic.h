// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MaskBrushLogic.h"

inline constexpr ToolFacts EyeColorTool{
    14,         SectionBeauty, "BtnEyes", "BtnEyesBianSe", "EyesBianSeLayout", "Eyes_BianSe.xml", "ids_yanjingbianse",
    "888040303"};

// Eye colour: hue and saturation of a colour.
class CYanJingBSLogic : public MaskBrushLogic {
  public:
    explicit CYanJingBSLogic(CHistoryManager& history);

    bool OwnsRecord(int type) const override;

    // Recolours everything that is painted. False, and nothing runs, for the present colour, without a picture, and
    // when the sink stopped it.
    bool SetColor(int red, int green, int blue, CObjProgress* progress);
    // 0xFFRRGGBB.
    std::uint32_t Color() const;

  protected:
    void Process(Bitmap& picture, const ProgressSpan& span) const override;
    std::unique_ptr<CUndoRedoParams> MakeRecord(const QString& maskFile) const override;
    Recorded ReadRecord(const CUndoRedoParams& record) const override;
};
