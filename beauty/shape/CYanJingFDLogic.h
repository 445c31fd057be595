// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "WarpLogic.h"

inline constexpr ToolFacts EnlargeTool{
    12, SectionBeauty, "BtnEyes", "BtnEyesZoom", "EyesZoomLayout", "Eyes_Zoom.xml", "ids_yanjingfangda", "888040301"};

// Enlarging of eyes: a click swells what is under the brush.
class CYanJingFDLogic : public WarpLogic {
  public:
    explicit CYanJingFDLogic(CHistoryManager& history) : WarpLogic(EnlargeTool, CWarpField::Grow, {60, 30}, history) {}
};
