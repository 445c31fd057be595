// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGui/QImage>

#include "Bitmap.h"

// A QImage over the pixels of a bitmap, without a copy: it holds on to them until the last QImage of it is gone. Read
// only; a QImage that is written copies itself. The null bitmap gives the null image. Any thread.
enum class AlphaUse {
    Straight,  // the alpha channel counts
    Ignore     // every pixel is taken as opaque, which paints several times faster
};
QImage ViewOf(const Bitmap& bitmap, AlphaUse alpha = AlphaUse::Straight);

// The pixels of any image as a bitmap: a copy in straight ARGB. Throws std::bad_alloc.
Bitmap BitmapOf(const QImage& image);
