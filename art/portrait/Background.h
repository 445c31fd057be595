// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortraitScene.h"

// What lies far behind: a garden at evening, out of focus.
void PaintBackground(Brush& brush);
