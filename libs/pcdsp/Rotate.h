// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"
#include "PcDspTypes.h"

// A turned or mirrored copy; see PC_Dsp::SingleRotate. `type` is in range.
Bitmap Rotated(const Bitmap& source, RotateFlipType type);
