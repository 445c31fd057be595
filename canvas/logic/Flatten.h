// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"

// Lays the picture over white. Nothing for an opaque one, which keeps sharing its pixels.
void FlattenOnWhite(Bitmap& picture);
