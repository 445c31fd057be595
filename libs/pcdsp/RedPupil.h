// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"
#include "PcDspTypes.h"

// The repair of PC_Dsp::RedEyeRemove; `rect` lies within the picture and is not empty. Changes no pixel outside. Pixels
// that another bitmap shares are copied only when there is a pupil.
void DarkenRedPupil(Bitmap& picture, const PixelRect& rect);
