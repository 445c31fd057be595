// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "Bitmap.h"

// What a look does to skin: the sample portrait with skins of six tones, measured on patches of the forehead, the
// cheeks, the nose and the chin with the shading, pores and spots that they have there.
namespace SkinPatches {

// From pale to very dark.
inline constexpr std::array<std::uint32_t, 6> Tones{0xF6DCCB, 0xE8BFA3, 0xD9A184, 0xB77C5C, 0x8A5A3F, 0x553526};

using Apply = std::function<void(Bitmap& portrait)>;

// One patch of one tone before and after.
struct Patch {
    int tone;             // place in Tones
    int place;            // of the patch in the face
    double newlyClipped;  // percent of its pixels of which a channel is at 0 or 255 that was not
    double contrast;      // luma's standard deviation that follows the source's, as a share of the source's: no grain
    double lumaBefore, lumaAfter;
    double chromaBefore, chromaAfter;  // CIE L*a*b*, of the mean colour

    std::string Name() const { return "tone " + std::to_string(tone) + " patch " + std::to_string(place); }
};

// Every patch of every tone; by tone, then by place.
std::vector<Patch> Measure(const Apply& apply);

}  // namespace SkinPatches
