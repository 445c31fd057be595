// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Bitmap.h"

// The same picture at another size by OpenCV (area, cubic, Lanczos) and Qt (smooth), each with its name.
std::vector<std::pair<std::string, Bitmap>> ResampledElsewhere(const Bitmap& source, int width, int height);
