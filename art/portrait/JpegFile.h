// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include "Portrait.h"

// Writes an sRGB JPEG of the given quality (1 to 100), whole or not at all. False when it can not be written.
bool WriteJpeg(const std::filesystem::path& path, const PortraitPixels& picture, int quality);
