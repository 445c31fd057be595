// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "AutoBeautifyParams.h"
#include "LookLogic.h"

inline constexpr ToolFacts BeautyTool{
    8, SectionBeauty, "BtnMeiYan", "", "MeiYanLayout", "MeiRong_MeiYan.xml", "ids_meirong", ""};

// One-click beauty without its window: one of the eight looks over the whole picture, faded by its strength.
class CMRYiJianMeiYanLogic : public LookLogic {
  public:
    // The steps go to `history`, which outlives the object. The look's result lies in its folder in a file of the
    // tool's own, so that no step reads what another tool wrote.
    explicit CMRYiJianMeiYanLogic(CHistoryManager& history = CHistoryManager::Instance());

    // The look in force, 1 to 8; 0 for none.
    int Preset() const { return HasLook() ? Look() : 0; }

    // The record that a step of the present state holds.
    AutoBeautifyParams Params() const;

    bool OwnsRecord(int type) const override { return type == AutoBeautifyParams::Type; }

  protected:
    bool Exists(int look) const override;
    bool Compute(Bitmap& picture, int look, const ProgressSpan& span) const override;
    std::unique_ptr<CUndoRedoParams> MakeRecord() const override {
        return std::make_unique<AutoBeautifyParams>(Params());
    }
    Recorded ReadRecord(const CUndoRedoParams& record) const override;

  private:
    const std::wstring m_folder;
};
