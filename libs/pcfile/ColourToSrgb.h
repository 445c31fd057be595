// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "Bitmap.h"
#include "PictureTarget.h"

// Colour management: whatever a file's colours are, the program works in sRGB.

// What is known of a picture's colours.
struct SourceColours {
    PictureTarget::Model model = PictureTarget::Model::Rgb;
    std::vector<std::uint8_t> profile;  // ICC; empty for none
};

// Converts the picture in place to sRGB, alpha kept (ink becomes opaque). Without a usable profile RGB and grey stay as
// they are and ink is converted by the plain rule channel = (255 - ink) × (255 - black) / 255. A profile whose result
// would differ by no more than one level anywhere is passed over, so that sRGB pictures stay exact.
void ConvertToSrgb(Bitmap& picture, const SourceColours& colours);

// The same from 16 bits a channel (red, green, blue, alpha); gives the 8-bit picture.
Bitmap DeepToSrgb(const std::uint16_t* pixels, int width, int height, const SourceColours& colours);

// An ICC profile for white, red, green and blue at these chromaticities (x, y each) and the exponent `gamma` (0: the
// sRGB curve). Empty when they make no colour space.
std::vector<std::uint8_t> MakeProfile(const double (&xy)[8], double gamma);

// The ICC profile that saved files carry, a small version 2.1 one; made once.
const std::vector<std::uint8_t>& SrgbProfile();
