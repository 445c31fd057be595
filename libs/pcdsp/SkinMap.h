// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "GuidedLayer.h"
#include "ReducedCopy.h"

// Where the skin of the person in the picture is, cell by cell, 0 to 1, not smoothed. `face` is the face's width in
// cells.
struct SkinMaps {
    // How like the person's skin a cell's colour is, in light and shadow.
    Plane colour;
    // The same, and even within a short way: hair has the colour of skin too, but not the evenness.
    Plane even;
    // The mean skin: p and q of kernels/SkinTone.h, luma in levels; usual numbers where there is no skin.
    bool any = false;
    float meanP = 0.24f, meanQ = 0.12f, meanLuma = 150.0f;

    SkinMaps(const ReducedCopy& copy, double face);
};

// The share of the retouch of skin that each cell gets, 0 to 1, with soft borders: pores and spots are skin as well;
// hair, eyes and lips are not.
Plane SkinShares(const SkinMaps& maps, double face);

// The same for looks of the whole face, which must not leave patches of it behind, be it old or bearded: evenness of
// wide surroundings counts, and colour and light are judged by those of this person's evenest skin, of which brown hair
// and beige cloth fall short in one or the other.
Plane FaceShares(const ReducedCopy& copy, const SkinMaps& maps, double face);
