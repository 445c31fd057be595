// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MaskBrushLogic.h"

inline constexpr ToolFacts TeethTool{
    18,         SectionBeauty, "BtnMouth", "BtnMouthBeauty", "MouthBeautyLayout", "Mouth_Beauty.xml", "ids_yachimeibai",
    "888040502"};

// Teeth whitening. It has no colour.
class CYaChiMBLogic : public MaskBrushLogic {
  public:
    explicit CYaChiMBLogic(CHistoryManager& history);

    bool OwnsRecord(int type) const override;

  protected:
    void Process(Bitmap& picture, const ProgressSpan& span) const override;
    std::unique_ptr<CUndoRedoParams> MakeRecord(const QString& maskFile) const override;
    Recorded ReadRecord(const CUndoRedoParams& record) const override;
};
