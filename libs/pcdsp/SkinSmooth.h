// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "ProgressSpan.h"

// The skin smoothing of PC_Dsp::CannyDericheBlur on checked arguments, sigma above 0. False when it was cancelled;
// every row is then either done or as it was.
bool SmoothSkin(std::uint8_t* pixels, int width, int height, float sigma, const std::uint8_t* mask,
                const ProgressSpan& span);
