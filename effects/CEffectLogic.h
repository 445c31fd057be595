// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "EffectParams.h"
#include "LookLogic.h"

class CObjProgress;

inline constexpr ToolFacts EffectTool{7, SectionEffects, "", "", "LeftLayout_TeXiao", "texiao.xml", "ids_texiao", ""};

// The effect tool without its window: one effect of the catalogue over the whole picture, faded by its strength.
class CEffectLogic : public LookLogic {
  public:
    // The steps go to `history`, which outlives the object; the effect's result lies in its folder as EffectRes.bin.
    explicit CEffectLogic(CHistoryManager& history = CHistoryManager::Instance());

    // ApplyLook of an effect.
    bool ApplyEffect(int index, CObjProgress* progress) { return ApplyLook(index, progress); }
    // The effect in force; -1 for none.
    int EffectIndex() const { return Look(); }

    // Runs an effect on a list's thumbnail at full strength; any thread, without the logic's state. False for null, an
    // index without effect, and when it failed; the bitmap is then undefined.
    static bool RenderThumbnail(Bitmap* thumbnail, int index);

    // The record that a step of the present state holds.
    EffectParams Params() const;

    bool OwnsRecord(int type) const override { return type == EffectParams::Type; }

  protected:
    bool Exists(int look) const override;
    bool Compute(Bitmap& picture, int look, const ProgressSpan& span) const override;
    std::unique_ptr<CUndoRedoParams> MakeRecord() const override { return std::make_unique<EffectParams>(Params()); }
    Recorded ReadRecord(const CUndoRedoParams& record) const override;

  private:
    // The program's folder, which every effect is given.
    const std::wstring m_resourceDir;
};
