// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>

#include "Bitmap.h"
#include "ViewGeometry.h"

// How carefully a view is drawn: Moving is quick, for the time while it changes under the hand.
enum class ViewQuality { Settled, Moving };

// Draws the visible part of `picture`, which may be smaller than `geometry` says that it is, into `view`, which is made
// anew when it has not the size of the destination or is shared. Both must be there. A whole picture of the view's size
// is copied.
void DrawVisiblePart(const Bitmap& picture, const ViewGeometry& geometry, ViewQuality quality, Bitmap& view);
// The same for the rectangle `part` of the view alone, which must lie in it.
void DrawVisiblePart(const Bitmap& picture, const ViewGeometry& geometry, const QRect& part, Bitmap& view);
// `picture` reduced, never enlarged, to lie within `bounds`; null without one.
Bitmap ReducedWithin(const Bitmap& picture, QSize bounds);
// Gives `target` the size of `source` in memory that nobody shares, its own where that is so already; its pixels are
// then anything.
void MakeRoom(Bitmap& target, const Bitmap& source);
// Gives `target` the pixels of `source` in memory that nobody shares, its own where that is so already.
void CopyPixels(Bitmap& target, const Bitmap& source);
