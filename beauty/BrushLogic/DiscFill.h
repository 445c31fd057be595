// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtCore/QRect>

#include "Bitmap.h"

// Marks in a bitmap: colours that are compared afterwards, so that a pixel has one wholly or not at all.

// Sets the pixels whose middles lie within the ellipse that fills `rect` to `argb` (0xAARRGGBB). What of it lies
// outside is left out.
void FillEllipse(const QRect& rect, std::uint32_t argb, Bitmap& bitmap);
// Sets the pixels of `part` that lie in the bitmap to transparent black.
void ClearPart(const QRect& part, Bitmap& bitmap);
