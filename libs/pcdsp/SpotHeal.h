// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "HoleMap.h"
#include "ProgressSpan.h"

// The repair of PC_Dsp::ImageProcessWithInpaint on checked arguments; `marks` lies within the picture. False when it
// was cancelled; every patch of marked pixels is then either repaired or as it was.
bool HealSpots(std::uint8_t* pixels, int width, int height, const std::uint8_t* mask, std::uint32_t colour,
               const PixelRect& marks, const ProgressSpan& span);
