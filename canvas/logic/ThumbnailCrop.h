// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>
#include <QtCore/QSize>

#include "Bitmap.h"

// The small pictures of the lists that show what a look does to the user's own picture.

// The part of a picture of size `image` that a thumbnail of size `shape` shows: the middle, in the thumbnail's
// proportion, as large as steps of 1.1 from `shape` allow while both sides lie below the picture's. One step is taken
// back always, so a picture not larger than `shape` gives a part that is smaller than `shape` and may reach beyond it.
QRect ThumbnailPart(QSize image, QSize shape);

// That part at `scale` times `shape` (1 on a plain screen, so that the thumbnail is crisp on every one), on white where
// it reaches beyond the picture and where the picture is translucent. Null for a null picture.
Bitmap MakeThumbnail(const Bitmap& picture, QSize shape, double scale);
