// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

#include "ProgressSpan.h"

// The unsharp mask of PC_Dsp::UsmSharp on checked arguments. False when it was cancelled; every row is then either done
// or as it was.
bool UsmSharpen(std::uint8_t* pixels, int width, int height, double radius, double amount, const ProgressSpan& span);
// The same from `source` into `target`, which do not overlap. Each row of the target is handed to `finish`, on any
// thread, while it is still in the cache.
bool UsmSharpenInto(const std::uint8_t* source, std::uint8_t* target, int width, int height, double radius,
                    double amount, const std::function<void(std::uint8_t* row)>& finish, const ProgressSpan& span);
