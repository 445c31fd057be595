// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "Bitmap.h"

// The plain use of libjpeg-turbo that decoding is compared with: a JPEG in memory to 32-bit pixels, on one thread.
// `into` has the picture's size.
void DecodeByLibrary(const std::vector<unsigned char>& bytes, Bitmap& into);
