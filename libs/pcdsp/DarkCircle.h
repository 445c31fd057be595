// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "PcDspTypes.h"
#include "ProgressSpan.h"

// The repair of PC_Dsp::BlackEye on checked arguments, strength above 0; `marks` lies within the picture. False when it
// was cancelled; every patch of marked pixels is then either repaired or as it was.
bool LightenCircles(std::uint8_t* pixels, int width, int height, const std::uint8_t* mask, int radius, int strength,
                    const PixelRect& marks, const ProgressSpan& span);
