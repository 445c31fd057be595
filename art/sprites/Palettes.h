// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// Background/: the ground behind each group of swatches (bg_mouthcolor1 to 3 and bk_sepan1 and 2, 200 × 80: a soft wash
// of the group's own tones) and the colours to choose freely from (bk_colorsepan, 200 × 110: hue from left to right,
// from white through the full colour to black from top to bottom, and a column of greys). False when a file can not be
// written. The same bytes on every run.
bool DrawPalettes(const QString& folder);
