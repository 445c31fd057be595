// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "ProgressSpan.h"

// The unsharp mask of PC_Dsp::UsmSharp on checked arguments. False when it was cancelled; every row is then either done
// or as it was.
bool UsmSharpen(std::uint8_t* pixels, int width, int height, double radius, double amount, const ProgressSpan& span);
