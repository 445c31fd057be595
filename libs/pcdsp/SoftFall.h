// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

// 1 up to `from`, 0 from `to` on, and smoothly down between.
inline float Fall(float v, float from, float to) {
    const float t = std::clamp((v - from) / (to - from), 0.0f, 1.0f);
    return 1.0f - t * t * (3.0f - 2.0f * t);
}
// The same upwards: 0 up to `from`, 1 from `to` on.
inline float Rise(float v, float from, float to) {
    return 1.0f - Fall(v, from, to);
}
