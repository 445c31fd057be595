// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "PatchSearch.h"
#include "SpotPlace.h"

// What the patches together say of a hole.
//
// Their weighed mean has what all of them agree on: lines that run on, and the run of light. What they don't agree on
// is chance, and a mean of it is a smear: so the finest band is taken from the best patch alone, and of the coarser
// unevenness a part, since a blotch in the wrong place shows more than one that is missing.
class PatchMix {
  public:
    // `patches` best first, at least one.
    PatchMix(const SpotPlace& place, const std::vector<Patch>& patches);

    // Lays the mix over `out`, whose size is that of `box`, a part of the place. Stopped, `out` holds no mix.
    void Fill(const PixelRect& box, Planes& out, const Pace& pace) const;
    // The mean alone at a pixel of the place, into three numbers; false where most patches leave the place or lie in
    // holes.
    bool MeanAt(int x, int y, float* mean) const;

  private:
    void AddPatch(const Patch& patch, float share, const PixelRect& box, Planes& out) const;

    const SpotPlace& m_place;
    const std::vector<Patch>& m_patches;
    std::vector<float> m_shares;  // sum 1
};
