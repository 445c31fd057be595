// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>
#include <vector>

#include "Bitmap.h"
#include "PenTool.h"
#include "ViewGeometry.h"

// The repairs written out, as a twin of what the tools do: masks by a test of every pixel of the picture, and the
// library's forms that read all of it.
namespace PlainRepair {

// What a pen at a place of the client covers, in picture pixels.
QRect Place(QPoint client, int pen, const ViewGeometry& geometry);
// The discs of those rectangles in that colour on transparent.
Bitmap Mask(QSize size, const std::vector<QRect>& discs, std::uint32_t argb);

Bitmap WithoutSpot(Bitmap picture, const QRect& place);
Bitmap WithoutRedEye(Bitmap picture, const QRect& place);
// `side` is that of the discs.
Bitmap WithoutCircles(Bitmap picture, const std::vector<QRect>& discs, int side, int strength);

// Skin with two red eyes, a spot between them and a shadow under the first.
Bitmap Face(int width, int height);

}  // namespace PlainRepair
