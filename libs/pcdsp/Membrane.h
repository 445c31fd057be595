// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HoleMap.h"
#include "Pace.h"
#include "Planes.h"

// Fills the holes of all planes with a membrane that is fixed to the pixels around and drawn to 0 with a spring: the
// solution of laplace(c) = c / reach^2, in pixels. Without a bound of reach (0) it is the harmonic function that blends
// a clone into its place (Perez, Gangnet, Blake 2003); with one, what the border says fades on the way inwards. At the
// planes' own border the membrane is free. Solved from coarse to fine. Holes without a border become 0.
// Stopped, holes hold anything.
void FillWithMembrane(Planes& planes, int count, const HoleMap& hole, float reach, const Pace& pace = {});
