// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "WarpLogic.h"

inline constexpr ToolFacts SlimTool{
    16, SectionBeauty, "BtnSouShen", "", "SouShenLayout", "MeiRong_SouShen.xml", "ids_shoulianshoushen", ""};

// Slimming of face and body: a drag pushes what is under the brush along.
class CShouLianSSLogic : public WarpLogic {
  public:
    explicit CShouLianSSLogic(CHistoryManager& history) : WarpLogic(SlimTool, CWarpField::Move, {100, 20}, history) {}
};
