// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

// What a colour looks like on surfaces of every lightness: for each light of a pixel the colour that takes its place.
// Light is the level of the grey of equal luminance, taken in quarters of a level.
struct ColourRamp {
    static constexpr int Steps = 4 * 255 + 1;
    // Share (0 to 255) << 24 | red << 16 | green << 8 | blue.
    std::uint32_t colours[Steps + 3];
};

// Hue and colourfulness of the colour, the light of the picture: CIE L* of the pixel, lifted where it is too dark to
// show a colour, and drawn a little towards that of the colour; hue of the colour in CIE L*a*b*, everywhere; its
// chroma, less towards black and white, and less where the screen can't show it. The share is 255 everywhere.
ColourRamp RecolouringRamp(int red, int green, int blue);

// Skin of the tone (red, green, blue): on darker skin as a darker person has that tone, not as powder, and less of it.
// L* moves by at most 8 towards the tone's. The share says how far a pixel goes there.
ColourRamp SkinToneRamp(int red, int green, int blue);
