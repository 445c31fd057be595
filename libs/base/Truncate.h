// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <limits>

// The one place where a floating value becomes an integer: towards zero, never rounded. A value outside the range of
// int is held at its end and NaN gives 0, where the plain cast would be undefined.
constexpr int Truncate(double value) {
    if (value != value) return 0;
    if (value >= static_cast<double>(std::numeric_limits<int>::max())) return std::numeric_limits<int>::max();
    if (value <= static_cast<double>(std::numeric_limits<int>::min())) return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

// Truncate for the result of a product or a quotient of values from 0: what binary arithmetic misses by a hair is not
// lost, so that 3 x 1.4 x 5 is 21 and not 20.
constexpr int TruncateNear(double value) {
    return Truncate(value + 1e-6);
}

// Truncate for the side of a picture, a view or a thumbnail, which is never below one pixel.
constexpr int TruncateSide(double value) {
    const int side = Truncate(value);
    return side < 1 ? 1 : side;
}
