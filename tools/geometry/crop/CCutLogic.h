// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SnapshotLogic.h"

inline constexpr ToolFacts CropTool{
    2, SectionBasic, "btnTab2", "BtnCaiJian", "Edit_CaiJian", "Edit_CaiJian.xml", "ids_caijian", "888020202"};

// The crop tool without its window: the picture, and the steps that its cuts make in the history. Each cut is at once
// the picture; nothing is deferred.
class CCutLogic : public SnapshotLogic {
  public:
    explicit CCutLogic(CHistoryManager& history = CHistoryManager::Instance());

    // Keeps the part of the picture at (x, y) of size w x h, in picture pixels, at its fit zoom. It starts at a whole
    // pixel and its sides are whole (truncated, at least 1, held within the picture), so that pixels are copied and
    // never resampled. False, and nothing changes, without a picture, for a senseless rectangle and for the whole.
    bool Crop(double x, double y, double w, double h);
};
