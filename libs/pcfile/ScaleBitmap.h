// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"
#include "Truncate.h"

// The picture at another size, smooth; the same pixels when the size is its own. Null for a null bitmap or a side
// below 1.
Bitmap ScaleBitmap(const Bitmap& source, int width, int height);
