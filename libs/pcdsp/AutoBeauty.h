// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "Look.h"
#include "ProgressSpan.h"

// A look of PC_Dsp::AutoBeauty on checked arguments: what its recipe says of the face, then the rest of the recipe, in
// one pass. False when it was cancelled; every row is then either done or as it was.
bool Beautify(std::uint8_t* pixels, int width, int height, const Look& look, const ProgressSpan& span);
