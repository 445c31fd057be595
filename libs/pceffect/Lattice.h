// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "EffectKernels.h"
#include "Recipe.h"

// A function of colour as samples on a cube of points, which the kernels read with tetrahedral interpolation. Values
// are levels; a fourth number per point travels along (the strength of the grain).
class Lattice {
  public:
    // Points a side. Looks are smooth enough for 49, which stay in the second cache; tables that were made elsewhere
    // keep their own points if they have 33 or 65.
    enum class Size { Coarse = 33, Usual = 49, Fine = 65 };

    struct Sample {
        Triple colour;  // 0 to 1, and a little beyond; held at LatticeReach levels beyond both ends
        double grain;   // levels, 0 to MostGrain
    };
    static constexpr double MostGrain = 31.0;

    // Samples `function` on all cores; it is called on several threads at a time. `margin` is that of LatticeView.
    Lattice(Size size, const std::function<Sample(const Triple&)>& function, int margin = 0);

    // For kernels; holds as long as this object.
    const LatticeView& View() const { return m_view; }

  private:
    std::vector<std::uint16_t> m_points;
    LatticeView m_view;
};
