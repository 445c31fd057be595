// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "Picture.h"
#include "Vec.h"

// Many thin soft lines in canvas units, drawn in the order they were added.
class StrandSet {
  public:
    // A line that changes evenly from its root to its tip in width, colour and (towards the tip) cover.
    void Add(const std::vector<Vec2>& points, double rootWidth, double tipWidth, Colour root, Colour tip, double cover);
    // One piece with everything of its own; for hair, whose colour changes along the way.
    struct Piece {
        Vec2 from, to;
        double fromWidth, toWidth;
        Colour fromColour, toColour;
        double fromCover, toCover;
    };
    void Add(const Piece& piece) { m_pieces.push_back(piece); }
    // Same pixels for any number of threads.
    void Draw(Picture& picture) const;

  private:
    std::vector<Piece> m_pieces;
};
