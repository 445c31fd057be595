// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "BrushTip.h"
#include "RepairLogic.h"

inline constexpr ToolFacts CircleTool{13,
                                      SectionBeauty,
                                      "BtnEyes",
                                      "BtnEyesHeiYan",
                                      "EyesHeiYanLayout",
                                      "Eyes_QuHeiYanQuan.xml",
                                      "ids_xiaochuhyq",
                                      "888040302"};

// Dark circles: a stroke marks them, and when it ends what is marked is lightened. Erasing paints back the picture that
// was there at entry or at the last move in the history.
class CXiaoChuHYQLogic : public RepairLogic {
  public:
    explicit CXiaoChuHYQLogic(CHistoryManager& history);

    // How much lighter the marked skin gets, 0 (not at all) to 10.
    void SetStrength(int strength) { m_strength = strength; }
    int Strength() const { return m_strength; }

    // Begins a stroke at a place of the client, and marks or erases there. False, and nothing happens, outside the
    // shown part of the picture and without one.
    bool BeginStroke(QPoint client);
    // The hand is here now: marks, or erases where the stroke has gone far enough. What erasing changed of the client.
    QRect MoveStroke(QPoint client);
    // Repairs what the stroke marked and clears the mark; CommitStep records it, and what was erased. The part of the
    // client that changed; none when nothing was marked, and when the sink stopped it: then only the mark is gone.
    std::optional<QRect> EndStroke(CObjProgress* progress);
    // The stroke ends without a repair.
    void DropMark();
    // What EndStroke has to do takes no longer than a blink.
    bool IsQuick() const;

    // The discs of the mark under way, in picture pixels.
    const std::vector<QRect>& Mark() const { return m_mark; }
    // The marking colour on transparent, of the picture's size; null before the first mark.
    const Bitmap& Overlay() const { return m_overlay; }
    // The marking colour, 0xAARRGGBB.
    static constexpr std::uint32_t MarkColour = 0x66FF6363;

  protected:
    void ForgetAll() override;
    void TakeSource(const Bitmap& picture) override;
    std::function<void()> RememberTool() override;

  private:
    // Where a disc goes.
    std::optional<QPoint> PlaceAt(QPoint client) const;
    void MarkAt(QPoint place);
    QRect EraseAt(QPoint place);
    QRect MarkedPart() const;

    int m_strength = 3;
    BrushTip m_tip;
    Bitmap m_base;
    Bitmap m_overlay;
    std::vector<QRect> m_mark;
    QPoint m_last;
};
