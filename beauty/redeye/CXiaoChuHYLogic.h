// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RepairLogic.h"

inline constexpr ToolFacts RedEyeTool{
    15,         SectionBeauty, "BtnEyes", "BtnEyesHongYan", "EyesHongYanLayout", "Eyes_HongYan.xml", "ids_xiaochuhy",
    "888040304"};

// Red eye: a click darkens the red pupil under the pen.
class CXiaoChuHYLogic : public ClickRepairLogic {
  public:
    explicit CXiaoChuHYLogic(CHistoryManager& history) : ClickRepairLogic(RedEyeTool, 60, history) {}

    // A place without a red pupil is repaired too: nothing changes in it.
    bool Repair(const QRect& place, CObjProgress* progress) override;
    bool IsQuick(const QRect& place) const override;
};
