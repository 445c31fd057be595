// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "ColourRamp.h"
#include "ProgressSpan.h"

// The skin tint of PC_Dsp::CompositeColor on checked arguments. False when it was cancelled; every row is then either
// done or as it was.
bool TintSkin(std::uint8_t* pixels, int width, int height, const ColourRamp& ramp, const ProgressSpan& span);
