// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "BlendTool.h"
#include "LookParams.h"

class CObjProgress;

// The effect tool without its window: one effect of the catalogue over the whole picture, faded by its strength.
class CEffectLogic : public BlendTool {
  public:
    // The steps go to `history`, which outlives the object; the effect's result lies in its folder as EffectRes.bin.
    explicit CEffectLogic(CHistoryManager& history = CHistoryManager::Instance());

    // Runs an effect on the source at full strength in place of the present one, shows and commits it. False when
    // nothing came of it: no picture, an index without effect, or the effect failed or the sink stopped it; picture,
    // effect, strength and history are then as they were.
    bool ApplyEffect(int index, CObjProgress* progress);

    // Runs an effect on a list's thumbnail at full strength; any thread, without the logic's state. False as above;
    // the bitmap is then undefined.
    static bool RenderThumbnail(Bitmap* thumbnail, int index);

    // The effect in force; -1 for none.
    int EffectIndex() const { return m_params.EffectIndex; }
    // The record that a step of the present state holds.
    EffectParams Params() const;

    bool OwnsRecord(int type) const override { return type == EffectParams::Type; }

  protected:
    QString LookId() const override;
    void ForgetLook() override { m_params = {}; }
    bool ComputeLook(Bitmap& picture, const ProgressSpan& span) const override;
    std::unique_ptr<CUndoRedoParams> MakeRecord() const override;
    int TakeRecord(const CUndoRedoParams& record) override;

  private:
    // The program's folder, which every effect is given.
    const std::wstring m_resourceDir;
    // Its strength is the blend's.
    EffectParams m_params;
};
