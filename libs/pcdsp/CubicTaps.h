// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cmath>
#include <cstdint>

// The cubic of Catmull and Rom (1974): B = 0, C = 0.5 of Mitchell and Netravali 1988. `x` in pixels from the centre.
inline double CatmullRom(double x) {
    x = std::abs(x);
    if (x < 1.0) return (1.5 * x - 2.5) * x * x + 1.0;
    return x < 2.0 ? ((-0.5 * x + 2.5) * x - 4.0) * x + 2.0 : 0.0;
}

// Its weights for the four pixels about a place that lies `fraction` (0 to 1) beyond the second of them, in 1/16384;
// their sum is exactly 16384, so that flat areas stay flat.
inline std::array<std::int16_t, 4> CubicTaps(double fraction) {
    std::array<std::int16_t, 4> taps;
    int left = 16384;
    for (int n = 0; n < 4; ++n) {
        taps[n] = static_cast<std::int16_t>(std::lround(CatmullRom(n - 1 - fraction) * 16384));
        left -= taps[n];
    }
    taps[fraction < 0.5 ? 1 : 2] = static_cast<std::int16_t>(taps[fraction < 0.5 ? 1 : 2] + left);
    return taps;
}
