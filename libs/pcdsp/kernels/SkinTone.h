// SPDX-License-Identifier: GPL-3.0-or-later
// How much a colour looks like skin: the one rule of the library, used by saturation, scenes and statistics.
//
// Skin of every tone is blood and melanin over one scattering layer, so its colours lie in a narrow band: red is the
// largest channel, blue the smallest, and with p = (R - G) / R and q = (G - B) / R (gamma-coded values) pale to dark
// skin in ordinary light runs along p from 0.08 to 0.42 at q from 0.03 to 0.26. The ranges were measured on own
// computed tones of the Fitzpatrick scale under daylight and lamp light. The rule is a product of four soft edges: 1
// inside, 0 outside, continuous everywhere, without regard to brightness other than a fade near black, where hue is
// noise.
#pragma once

#include "Lanes.h"

namespace {

QUINCE_INLINE Floats SoftEdge(Floats v, float zeroAt, float oneAt) {
    return Clamp((v - zeroAt) * (1.0f / (oneAt - zeroAt)), 0.0f, 1.0f);
}

// 1 between two soft edges that do not overlap.
QUINCE_INLINE Floats SoftBand(Floats v, float zeroBelow, float oneFrom, float oneTo, float zeroAbove) {
    const Floats rise = (v - zeroBelow) * (1.0f / (oneFrom - zeroBelow));
    const Floats fall = (zeroAbove - v) * (1.0f / (zeroAbove - oneTo));
    return Clamp(Min(rise, fall), 0.0f, 1.0f);
}

QUINCE_INLINE Floats SkinLikelihood(const Colours& c) {
    const Floats scale = Inverse(Max(c.r, Spread(1.0f)));
    const Floats p = (c.r - c.g) * scale;
    const Floats q = (c.g - c.b) * scale;
    return SoftBand(p, 0.02f, 0.09f, 0.42f, 0.52f) * SoftBand(q, -0.04f, 0.03f, 0.26f, 0.38f) *
           SoftEdge(c.r, 20.0f, 50.0f);
}

}  // namespace
