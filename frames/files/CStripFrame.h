// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "FrameFile.h"
#include "FramePieces.h"

// A simple frame cut out of one picture, the strip: four corners at its corners, and beside them a tile of each edge,
// which is repeated along the edge. The file's layout stands in docs/formats.md.
class CStripFrame : public CFrameFile {
  public:
    enum Piece { TopLeft, Top, TopRight, Left, Right, BottomLeft, Bottom, BottomRight, PieceCount };

    // The picture inside the frame: a new bitmap, larger than the picture by what the file says. `scale` is the size of
    // one of the frame's pixels in the picture's. Null without a frame, for a null picture, a scale that is not above
    // 0, when a side would be below 1 or beyond a bitmap's, and when `span` stopped it.
    Bitmap Compose(const Bitmap& picture, float scale, const ProgressSpan& span = {}) const;
    // What Compose draws; false where it would fail for another reason than being stopped. Takes no memory of a
    // picture's size.
    bool Plan(const Bitmap& picture, float scale, FramePlan& plan) const;

  protected:
    FrameFault Sniff(const FrameBytes& head, std::uint64_t total) const override;
    FrameFault Parse(const FrameBytes& bytes) override;
    void Forget() override { m_strip = {}; }

  private:
    struct Size {
        int width = 0, height = 0;
    };
    bool PiecesLieInStrip() const;
    void AddPieces(FramePlan& plan) const;

    Bitmap m_strip;
    bool m_pictureOnTop = false;
    int m_pictureX = 0, m_pictureY = 0;
    int m_extraWidth = 0, m_extraHeight = 0;
    std::array<Size, PieceCount> m_sizes{};
};
