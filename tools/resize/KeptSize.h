// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QSize>

// The size that keeps the picture's proportions (`aspect`: width divided by height, above 0) with the given width or
// height, 1 to 10000. The other side is truncated; where it would be 0 or above 10000 it is held there and the given
// side follows from it.
QSize KeptByWidth(int width, double aspect);
QSize KeptByHeight(int height, double aspect);
