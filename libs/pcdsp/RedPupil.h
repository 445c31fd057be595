// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "PcDspTypes.h"

// The repair of PC_Dsp::RedEyeRemove on a picture; `rect` lies within it and is not empty. Changes no pixel outside.
void DarkenRedPupil(std::uint8_t* pixels, int width, int height, const PixelRect& rect);
