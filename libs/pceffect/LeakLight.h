// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Nodes.h"
#include "Recipe.h"

// The light of a leak at each node, 0 to 1. The shape is drawn in fractions of the picture, so that it is the same at
// every size.
NodeLayer LeakLight(const Leak& leak, const NodeGrid& grid);
