// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "ProgressSpan.h"

// The whitening of PC_Dsp::MeiBaiYaChi on checked arguments. False when it was cancelled; every row is then either done
// or as it was.
bool WhitenTeeth(std::uint8_t* pixels, int width, int height, const ProgressSpan& span);
