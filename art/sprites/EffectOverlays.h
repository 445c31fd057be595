// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// What lies over the thumbnails in the lists of effects: one drawing for each effect, in the spirit of its category,
// 70 × 96 logical pixels, numbered by its place in the list: <category>/1.png, 2.png, ... and the same @2x. Mostly
// transparent: an edge that tells the families apart and leaves the picture alone. False when a file can not be
// written.
bool DrawEffectOverlays(const QString& folder);
