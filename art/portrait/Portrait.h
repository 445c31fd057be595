// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "PortraitLook.h"

// The sample portrait, painted by rule alone: nobody's face, and the same on every run and for any number of threads.

struct PortraitPixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb;  // three bytes a pixel, red first, sRGB
};

inline constexpr int PortraitWidth = 2400;

// Paints the portrait `width` pixels wide and five fourths as high. All cores; throws std::bad_alloc only.
PortraitPixels PaintPortrait(int width, const PortraitLook& look = {});

// Where everything is in that picture, as JSON text in pixels of the same width.
std::string PortraitTruth(int width, const PortraitLook& look = {});
