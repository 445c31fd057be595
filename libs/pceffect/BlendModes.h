// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// How ChannelBlend_X mixes a layer with the picture below it. The numbers are fixed: files name them.
// With b the picture's channel and l the layer's, both 0 to 1 (Compositing and Blending Level 1 of the W3C, 2015):
enum eBlendMode {
    BlendNormal = 0,       // l
    BlendMultiply = 1,     // b l
    BlendScreen = 2,       // b + l - b l
    BlendOverlay = 3,      // hard light with b and l exchanged
    BlendDarken = 4,       // the lower
    BlendLighten = 5,      // the higher
    BlendColorDodge = 6,   // b / (1 - l)
    BlendColorBurn = 7,    // 1 - (1 - b) / l
    BlendHardLight = 8,    // multiply with 2 l up to a half, from there screen with 2 l - 1
    BlendSoftLight = 9,    // b bent by l, none at a half
    BlendDifference = 10,  // |b - l|
    BlendExclusion = 11,   // b + l - 2 b l
    BlendAdd = 12,         // b + l
    BlendSubtract = 13,    // b - l
    BlendHue = 14,         // hue of l, saturation and luminosity of b
    BlendSaturation = 15,  // saturation of l, hue and luminosity of b
    BlendColor = 16,       // hue and saturation of l, luminosity of b
    BlendLuminosity = 17,  // luminosity of l, hue and saturation of b
    BlendModeCount
};
