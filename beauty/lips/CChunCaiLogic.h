// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MaskBrushLogic.h"

inline constexpr ToolFacts LipTool{
    17, SectionBeauty, "BtnMouth", "BtnMouthColor", "MouthColorLayout", "Mouth_Color.xml", "ids_chuncai", "888040501"};

// Lip colour: hue and saturation of a colour, and a brightness on top.
class CChunCaiLogic : public MaskBrushLogic {
  public:
    explicit CChunCaiLogic(CHistoryManager& history);

    bool OwnsRecord(int type) const override;

    // Recolours everything that is painted. False, and nothing runs, for the present colour, without a picture, and
    // when the sink stopped it.
    bool SetColor(int red, int green, int blue, CObjProgress* progress);
    // -50 to 50. Full: the picture; View: what is shown, while a slider moves.
    void SetBrightnessFull(int brightness);
    void SetBrightnessView(int brightness);
    int Brightness() const { return CurrentValues().brightness; }

  protected:
    void Process(Bitmap& picture, const ProgressSpan& span) const override;
    std::unique_ptr<CUndoRedoParams> MakeRecord(const QString& maskFile) const override;
    Recorded ReadRecord(const CUndoRedoParams& record) const override;
};
