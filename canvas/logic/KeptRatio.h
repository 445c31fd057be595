// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QSize>

// The arithmetic of sizes that keep a proportion. A ratio is height divided by width, above 0; sides are whole pixels,
// truncated, at least 1.

// The side that goes with the other one.
int HeightFor(int width, double ratio);
int WidthFor(int height, double ratio);

// The size whose width (height) was typed as `value`, 1 to that of `most`, at this ratio; where the other side would be
// 0 or larger than that of `most` it is held there, and the typed one follows from it.
QSize SizeByWidth(int value, double ratio, QSize most);
QSize SizeByHeight(int value, double ratio, QSize most);
