// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "GuidedLayer.h"
#include "ReducedCopy.h"

// How likely each cell is skin of the person in the picture, 0 to 1: the colour of skin, even within a short way (hair
// has that colour too, but not the evenness), and near the mean colour of all that is so. `face` is the face's width in
// cells. Not smoothed.
Plane SkinMap(const ReducedCopy& copy, double face);
