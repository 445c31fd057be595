// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortraitScene.h"

// A knitted pullover with a ribbed round collar.
void PaintClothing(const Scene& scene, Brush& brush);
