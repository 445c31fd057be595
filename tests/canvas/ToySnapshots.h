// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "PC_Dsp.h"
#include "SnapshotLogic.h"
#include "TestHome.h"
#include "TestPictures.h"

inline constexpr ToolFacts HalvingTool{9, SectionBasic, "", "", "", "", "ids_caijian", "8880299"};

// The smallest tool with snapshots: it keeps the left half of the picture.
class HalvingLogic : public SnapshotLogic {
  public:
    explicit HalvingLogic(CHistoryManager& history) : SnapshotLogic(HalvingTool, history) {}
    void Halve() {
        Whole([this] {
            const Bitmap whole = RenderResult();
            Replace(PC_Dsp::Clone(whole, 0, 0, whole.Width() / 2, whole.Height()));
            return true;
        });
    }
    // Takes other pixels of the same size without drawing them.
    void Exchange(const Bitmap& picture) { TakeSource(picture); }
    using SnapshotLogic::Replace;
    using SnapshotLogic::ShowPart;
    using SnapshotLogic::ShowStandIn;
    int sources = 0;

  protected:
    void OnSource() override { ++sources; }
};

// A history in a folder of its own, in which pictures are opened as the session does.
struct OpenedHistory {
    OpenedHistory() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {}
    void Open(const Bitmap& picture) {
        ASSERT_TRUE(history.OpenImage(picture));
        history.SetCurrentBitmap(picture);
        history.SetViewState(nullptr);
    }
    CHistoryManager history;
};
