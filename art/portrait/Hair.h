// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortraitScene.h"
#include "Strands.h"

// Hair behind the neck, painted before it.
void AddBackHair(const Scene& scene, StrandSet& strands);
// Distance in canvas units from a point of the face to the edge of the hair that hangs beside it; negative under it.
double HairClearance(Vec2 canvas);
// Hair from the parting over both sides of the face to the shoulders, painted last.
void AddFrontHair(const Scene& scene, StrandSet& strands);
