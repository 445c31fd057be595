// SPDX-License-Identifier: GPL-3.0-or-later
#include "Lattice.h"

#include <algorithm>
#include <cmath>

#include "Parallel.h"

namespace {

std::uint16_t Stored(double level) {
    const double held = std::clamp(level, -double(LatticeReach), 255.0 + LatticeReach);
    return static_cast<std::uint16_t>(std::lround((held + LatticeReach) * LatticeScale));
}

}  // namespace

Lattice::Lattice(Size size, const std::function<Sample(const Triple&)>& function, int margin) {
    const int n = static_cast<int>(size);
    // One plane, row and point more than are sampled: the kernels read the next one even where its weight is 0.
    const std::size_t points = (std::size_t(n) * n + n + 1) + std::size_t(n) * n * n;
    m_points.assign(points * 4, 0);
    ForEachBand(n, 1, [&](int first, int last) {
        for (int r = first; r < last; ++r)
            for (int g = 0; g < n; ++g)
                for (int b = 0; b < n; ++b) {
                    const double top = n - 1;
                    const Sample sample = function({r / top, g / top, b / top});
                    std::uint16_t* to = &m_points[4 * ((std::size_t(r) * n + g) * n + b)];
                    for (int i = 0; i < 3; ++i) to[i] = Stored(255.0 * sample.colour[2 - i]);
                    to[3] = Stored(GrainScale * std::clamp(sample.grain, 0.0, MostGrain));
                }
    });
    // Steps of 255 levels in whole numbers; the last factor makes up for what the others leave, so that points fall
    // exactly on the levels that hit them.
    const int steps = n - 1, placeFactor = steps * 32768 / 255, left = steps * 32768 - 255 * placeFactor;
    m_view = {m_points.data(), n, n * n, steps * 65536 / 255 + 1, placeFactor, left * 65536 / 255 + 1, margin};
}
