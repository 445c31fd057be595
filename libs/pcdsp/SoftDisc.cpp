// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoftDisc.h"

#include <algorithm>
#include <cmath>

namespace {

// From 1 at 0 to 0 at 1; slope and bend are 0 at both ends, so that neither one stamp nor many on one place show a ring
// (the quintic step of Perlin 2002).
double Fall(double t) {
    t = std::clamp(t, 0.0, 1.0);
    return 1.0 - t * t * t * (t * (t * 6.0 - 15.0) + 10.0);
}

}  // namespace

void FillSoftDisc(unsigned char** table, int radius, double full) {
    // The middle of the table lies between four pixels; their distance counts as none.
    const double inner = std::sqrt(0.5), span = std::max(radius - inner, 1e-6);
    for (int y = 0; y < 2 * radius; ++y)
        for (int x = 0; x < 2 * radius; ++x) {
            const double away = std::hypot(x + 0.5 - radius, y + 0.5 - radius);
            const double t = ((away - inner) / span - full) / (1.0 - full);
            table[y][x] = static_cast<unsigned char>(std::lround(255.0 * Fall(t)));
        }
}
