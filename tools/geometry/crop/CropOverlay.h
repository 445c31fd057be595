// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QSize>

class CropSelection;
class QPainter;

// Draws a selection over the picture, in physical client pixels: a veil over what will go, the lines of thirds, the
// frame, and the corner squares while they can be taken hold of. `offset` is the place of the scaled picture's top left
// corner in the client; `ratio` physical pixels per logical one. Nothing for an empty selection.
void PaintCropOverlay(QPainter& painter, const CropSelection& selection, QPoint offset, QSize client, double ratio);
