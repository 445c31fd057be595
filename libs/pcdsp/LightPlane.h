// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PatchMix.h"

// The light that a mix of patches lacks or has too much, as a plane over the hole, from a ring of skin that keeps away
// from the hole's border, where a spot may still show. A robust fit: weights of Geman and McClure's kind, so that a
// line that crosses the ring does not tilt it. 0 where there is too little to look at.
struct LightPlane {
    float middle[SpotPlace::Colours] = {};  // in levels, at the middle of the hole
    float across[SpotPlace::Colours] = {};  // in levels a pixel
    float down[SpotPlace::Colours] = {};

    LightPlane(const SpotPlace& place, const PatchMix& mix);
    // Adds it to planes that show the part `box` of the place.
    void AddTo(const SpotPlace& place, const PixelRect& box, Planes& planes) const;
};
