// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "FrameFile.h"
#include "FramePieces.h"

// A simple frame of nine pictures: corners, edges that are repeated, and a texture for the ground. The frame shrinks to
// a whole number of tiles of its upper and left edge, so that no tile is cut. The file's layout stands in
// docs/formats.md.
class CNinePartFrame : public CFrameFile {
  public:
    enum Part { TopLeft, Top, TopRight, Left, Centre, Right, BottomLeft, Bottom, BottomRight, PartCount };

    // As those of CStripFrame.
    Bitmap Compose(const Bitmap& picture, float scale, const ProgressSpan& span = {}) const;
    bool Plan(const Bitmap& picture, float scale, FramePlan& plan) const;

  protected:
    FrameFault Sniff(const FrameBytes& head, std::uint64_t total) const override;
    FrameFault Parse(const FrameBytes& bytes) override;
    void Forget() override;

  private:
    int Width(Part part) const { return m_parts[part].Width(); }
    int Height(Part part) const { return m_parts[part].Height(); }

    bool m_loaded = false;
    int m_pictureX = 0, m_pictureY = 0;
    int m_extraWidth = 0, m_extraHeight = 0;
    // Null where the file has none.
    std::array<Bitmap, PartCount> m_parts;
};
