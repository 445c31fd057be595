// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "GuidedLayer.h"
#include "SkinSmooth.h"

// How much of a smoothing of skin a face bears before it loses its character, region by region. Where skin is rough at
// the scale of its lines and folds, as old or weathered skin is, a part of it has to stay: what is taken away there is
// never more than so many levels, and even skin is smoothed as asked for.
class SkinTexture {
  public:
    // After the smoothing's Work. `share` of skin is on a copy whose cells hold `shareFactor` pixels a side. Uses all
    // cores.
    SkinTexture(const SkinCorrection& smoothing, const Plane& share, int shareFactor);

    // The part of the smoothing's correction that is to be laid on, 0 to 1, on squares of Side() of its cells.
    const Plane& Amount() const { return m_amount; }
    int Side() const { return m_side; }

  private:
    int m_side;
    Plane m_amount;
};
