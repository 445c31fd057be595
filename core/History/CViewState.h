// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>

#include "Bitmap.h"

// The view that a leaving tool hands to the next, so that the picture stays where it was.
struct CViewState {
    // The visible part of the picture at destRect's size; a receiver whose own destination differs draws from the
    // current bitmap instead.
    Bitmap bitmap;
    double zoom = 1.0;
    // Pan in client pixels.
    int x = 0;
    int y = 0;
    // Where the bitmap stood, in client pixels.
    QRect destRect;
};
