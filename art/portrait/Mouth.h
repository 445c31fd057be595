// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortraitScene.h"

// Lips, teeth and the dark between, and the nostrils above, over the painted skin.
void PaintMouth(const Scene& scene, Brush& brush, Vec2 face);
void PaintNostrils(Brush& brush, Vec2 face);
