// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EntryPicture.h"
#include "SnapshotLogic.h"

class CObjProgress;

// Its click on leaving is the rotate tool's: both are counted as one.
inline constexpr ToolFacts ResizeTool{
    4,          SectionBasic, "btnTab2", "BtnXiuGaiChiCun", "Edit_XiuGaiChiCun", "Edit_XiuGaiChiCun.xml", "ids_chicun",
    "888020204"};

// The resize tool without its window. Every new size is made from the picture as it came into the tool (by entering or
// by a move in the history), so that sizes tried in a row do not wear it down.
class CSizeLogic : public SnapshotLogic {
  public:
    // The sides that a picture may be given, in pixels.
    static constexpr int LeastSide = 1;
    static constexpr int MostSide = 10000;

    // The entry picture lies in the history's folder as Sizetmp.bin.
    explicit CSizeLogic(CHistoryManager& history = CHistoryManager::Instance());

    // Gives the picture this size and its fit zoom. The limits hold for a side that changes. False, and nothing
    // changes, without a picture, for the present size and for one beyond the limits, when the entry picture can't be
    // read, and when the sink stopped the work.
    bool Resize(int w, int h, CObjProgress* progress = nullptr);

    QString TempFilePath() const { return m_entry.Path(); }

  protected:
    void OnSource() override { m_entry.Keep(Picture()); }

  private:
    EntryPicture m_entry;
};
